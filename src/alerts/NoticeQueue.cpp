#include "alerts/NoticeQueue.h"

#include "alerts/AlertSoundPlayer.h"
#include "alerts/AlertsNotice.h"

#include <QApplication>

#include <utility>

namespace vx {

namespace {

constexpr int kBusyRetryMs = 50;

SAlertSound SoundOf(const SAlertNotice& notice) {
    return {static_cast<uint32_t>(notice.soundType), notice.soundFile, notice.loopSound != 0};
}

bool IsHandBusy() { return QApplication::activePopupWidget() || QApplication::mouseButtons() != Qt::NoButton; }

} // namespace

CNoticeQueue::CNoticeQueue(CAlertSoundPlayer& player, QObject& owner, QWidget* window, QObject* parent)
    : QObject(parent), m_player(player), m_owner(owner), m_window(window) {
    m_next.setSingleShot(true);
    connect(&m_next, &QTimer::timeout, this, &CNoticeQueue::ShowNext);
}

CNoticeQueue::~CNoticeQueue() {
    m_player.Stop();
    if (!m_shown) return;
    m_shown->disconnect(this);
    delete m_shown;
}

void CNoticeQueue::Add(SFiredNotice notice) {
    m_waiting.push_back(std::move(notice));
    if (m_shown) m_shown->SetWaiting(Waiting());
    ShowNextSoon();
}

void CNoticeQueue::ShowNextSoon(int milliseconds) {
    if (!m_shown && !m_sounding && !m_next.isActive()) m_next.start(milliseconds);
}

void CNoticeQueue::ShowNext() {
    if (m_shown || m_sounding || (!m_heard && m_waiting.empty())) return;
    if (IsHandBusy()) return ShowNextSoon(kBusyRetryMs);
    if (!m_heard) Sound();
    if (!m_sounding) Announce();
}

// Takes the next one as m_current and begins its sound.
void CNoticeQueue::Sound() {
    m_current = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_heard = true;
    const SAlertSound sound = SoundOf(m_current.notice);
    if (m_muted || sound.type == static_cast<uint32_t>(EAlertSound::None)) return;
    m_sounding = !sound.loop;
    m_player.Play(sound, [this] {
        if (std::exchange(m_sounding, false)) ShowNext();
    });
}

// Opens the notice of m_current.
void CNoticeQueue::Announce() {
    m_heard = false;
    m_shown = new CAlertsNotice(m_current.notice, m_current.firedAt, m_owner, m_window);
    m_shown->SetWaiting(Waiting());
    m_shown->SetResettable(!m_canReset || m_canReset(m_current));
    connect(m_shown, &QDialog::finished, this, &CNoticeQueue::OnFinished);
    connect(m_shown, &CAlertsNotice::DismissAll, this, &CNoticeQueue::DismissAll);
    const bool inUse = !m_inUse || m_inUse();
    m_shown->setAttribute(Qt::WA_ShowWithoutActivating, !inUse);
    Q_EMIT Opening();
    m_shown->show();
    if (!inUse) QApplication::alert(m_shown);
}

void CNoticeQueue::OnFinished(int result) {
    CAlertsNotice* notice = std::exchange(m_shown, nullptr);
    m_player.Stop();
    const bool reset = result == QDialog::Accepted;
    const double newThreshold = notice->NewThreshold();
    notice->deleteLater();
    if (reset) ActivateWindowBelow();
    if (m_ended) m_ended(m_current, reset ? EFiringEnd::Reset : EFiringEnd::Dismissed, reset ? newThreshold : 0);
    ShowNextSoon();
}

// With the reset dialog two windows close at once, and a window manager may leave the keyboard with neither.
void CNoticeQueue::ActivateWindowBelow() {
    QWidget* below = QApplication::activeModalWidget();
    if (!below && m_window) below = m_window->window();
    if (below) below->activateWindow();
}

void CNoticeQueue::DismissAll() {
    const std::deque<SFiredNotice> dismissed = std::exchange(m_waiting, {});
    if (m_shown) m_shown->reject();
    if (!m_ended) return;
    for (const SFiredNotice& notice : dismissed) m_ended(notice, EFiringEnd::Dismissed, 0);
}

void CNoticeQueue::SetMuted(bool muted) {
    m_muted = muted;
    if (!muted) return;
    m_player.Stop();
    if (std::exchange(m_sounding, false)) ShowNext();
}

} // namespace vx
