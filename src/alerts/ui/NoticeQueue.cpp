// SPDX-License-Identifier: MIT
#include "alerts/ui/NoticeQueue.h"

#include "alerts/ui/AlertSoundPlayer.h"
#include "alerts/ui/AlertsNotice.h"
#include "settings/Settings.h"

#include <QApplication>
#include <QScreen>
#include <QWindow>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace vx {

namespace {

constexpr int kGap = 8; // Between the notice and the main window.

bool TakeNumber(std::string_view& text, int& out) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), out);
    if (error != std::errc{}) return false;
    text.remove_prefix(static_cast<size_t>(end - text.data()));
    return true;
}

} // namespace

QPoint BroughtInside(const QPoint& wanted, const QSize& notice, const QRect& screen) {
    const auto inside = [](int place, int size, int from, int room) {
        return std::max(from, std::min(place, from + room - size));
    };
    return {inside(wanted.x(), notice.width(), screen.left(), screen.width()),
            inside(wanted.y(), notice.height(), screen.top(), screen.height())};
}

QPoint FirstNoticePlace(const QSize& notice, const QRect& window, const QRect& screen) {
    const int right = screen.left() + screen.width() - notice.width();
    const int bottom = screen.top() + screen.height() - notice.height();
    const std::array places = {QPoint(window.left() + window.width() + kGap, window.top()),
                               QPoint(window.left() - kGap - notice.width(), window.top()),
                               QPoint(window.left(), window.top() + window.height() + kGap),
                               QPoint(window.left(), window.top() - kGap - notice.height()),
                               QPoint(right, bottom),
                               QPoint(right, screen.top()),
                               QPoint(screen.left(), bottom),
                               screen.topLeft()};
    constexpr size_t kBeside = 4;
    for (size_t i = 0; i < places.size(); ++i) {
        const QPoint place = BroughtInside(places[i], notice, screen);
        const QRect covered(place, notice);
        if (i < kBeside ? !window.isEmpty() && screen.contains(covered) && !covered.intersects(window)
                        : !covered.contains(window.center()))
            return place;
    }
    return BroughtInside({right, bottom}, notice, screen);
}

std::optional<QPoint> ReadNoticePlace(std::string_view text) {
    int left = 0;
    int top = 0;
    if (!TakeNumber(text, left) || !text.starts_with(',')) return std::nullopt;
    text.remove_prefix(1);
    if (!TakeNumber(text, top) || !text.empty()) return std::nullopt;
    return QPoint(left, top);
}

std::string NoticePlaceText(const QPoint& place) { return fmt::format("{},{}", place.x(), place.y()); }

namespace {

constexpr int kBusyRetryMs = 50;

SAlertSound SoundOf(const SAlertRecord& notice) {
    return {static_cast<uint32_t>(notice.soundType), notice.soundFile, notice.loopSound != 0};
}

bool IsOnScreen(const QWidget* window) { return window && window->isVisible() && !window->isMinimized(); }

QSize FrameOf(const QWidget& window) { return window.frameGeometry().size() - window.size(); }

const QScreen* ScreenOf(const QPoint& middle, const QWidget& window) {
    const QScreen* screen = QGuiApplication::screenAt(middle);
    return screen ? screen : window.screen();
}

} // namespace

CNoticeQueue::CNoticeQueue(CAlertSoundPlayer& player, QObject& owner, QWidget* window, CSettings& settings,
                           QObject* parent)
    : QObject(parent), m_player(player), m_owner(owner), m_window(window), m_settings(settings) {
    m_next.setSingleShot(true);
    connect(&m_next, &QTimer::timeout, this, &CNoticeQueue::ShowNext);
    // Not from inside: the windows are only just about to change.
    connect(&m_gate, &CInputGate::Refused, this, &CNoticeQueue::ComeBack, Qt::QueuedConnection);
    connect(&m_gate, &CInputGate::ModalChanged, this, &CNoticeQueue::BelongToTopmost, Qt::QueuedConnection);
}

CNoticeQueue::~CNoticeQueue() {
    m_player.Stop();
    if (!m_shown) return;
    m_shown->disconnect(this);
    delete m_shown;
}

void CNoticeQueue::Add(SFiredAlert notice) {
    m_waiting.push_back(std::move(notice));
    if (m_shown) m_shown->SetWaiting(Waiting());
    ShowNextSoon();
}

void CNoticeQueue::ShowNextSoon(int milliseconds) {
    if (!m_shown && !m_sounding && !m_next.isActive()) m_next.start(milliseconds);
}

bool CNoticeQueue::IsUserBusy() const {
    return QApplication::activePopupWidget() || QApplication::mouseButtons() != Qt::NoButton ||
           m_gate.QuietMs() < (CInputGate::IsEditing() ? kEditQuietMs : kQuietMs);
}

void CNoticeQueue::ShowNext() {
    if (m_shown || m_sounding || (!m_taken && m_waiting.empty())) return;
    if (!m_taken) TakeNext();
    if (m_sounding) return;
    if (IsUserBusy())
        ShowNextSoon(kBusyRetryMs);
    else
        Announce();
}

bool CNoticeQueue::MayPlay(bool looping) const {
    const SAlertSound sound = SoundOf(m_current.record);
    return !m_muted && sound.type != static_cast<uint32_t>(EAlertSound::None) && sound.loop == looping;
}

void CNoticeQueue::TakeNext() {
    m_current = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_taken = true;
    if (!MayPlay(false)) return;
    m_sounding = true;
    m_player.Play(SoundOf(m_current.record), [this] {
        if (std::exchange(m_sounding, false)) ShowNext();
    });
}

// Opens the notice of m_current.
void CNoticeQueue::Announce() {
    m_taken = false;
    const bool inUse = !m_inUse || m_inUse();
    if (QWidget* active = QApplication::activeWindow(); active || !inUse) m_below = active;
    m_shown = new CAlertsNotice(m_current, m_owner, m_window);
    // A window that is always on top covers what does not belong to it, such as what came up while it was minimised.
    if (m_window)
        m_shown->setWindowFlag(Qt::WindowStaysOnTopHint, m_window->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    m_shown->SetWaiting(Waiting());
    if (m_target) m_shown->SetTarget(m_target(m_current));
    connect(m_shown, &QDialog::finished, this, &CNoticeQueue::OnFinished);
    connect(m_shown, &CAlertsNotice::DismissAll, this, &CNoticeQueue::DismissAll);
    Q_EMIT Opening();
    m_gate.Shut(*m_shown);
    Place();
    BelongToTopmost();
    m_shown->show();
    if (inUse)
        m_shown->activateWindow();
    else
        QApplication::alert(m_shown);
    if (MayPlay(true)) m_player.Play(SoundOf(m_current.record), [] {});
}

void CNoticeQueue::Place() {
    const QWidget* window = IsOnScreen(m_window) ? m_window->window() : nullptr;
    m_shown->adjustSize();
    const QSize size = m_shown->size() + (window ? FrameOf(*window) : QSize(0, 0));
    if (const auto kept = ReadNoticePlace(m_settings.ReadTextOrDefault(kNoticePlace))) {
        const QScreen* screen = ScreenOf(QRect(*kept, size).center(), *m_shown);
        return m_shown->move(BroughtInside(*kept, size, screen->availableGeometry()));
    }
    const QRect covered = window ? window->frameGeometry() : QRect();
    const QScreen* screen = window ? window->screen() : m_shown->screen();
    m_shown->move(FirstNoticePlace(size, covered, screen->availableGeometry()));
}

// The toolkit keeps input from a window that does not belong to the topmost modal one, and desktops stack a window over
// the one that it belongs to; with that one minimised they hide it.
void CNoticeQueue::BelongToTopmost() {
    if (!m_shown) return;
    const QWidget* below = QApplication::activeModalWidget();
    for (const QObject* above = below; above; above = above->parent())
        if (above == m_shown) return;
    if (!below && IsOnScreen(m_window)) below = m_window->window();
    m_shown->winId(); // From here on there is a window handle.
    QWindow* wanted = below ? below->windowHandle() : nullptr;
    if (m_shown->windowHandle()->transientParent() == wanted) return;
    m_shown->windowHandle()->setTransientParent(wanted);
    if (m_shown->isVisible()) m_shown->raise();
}

// The user turned to a window that is shut.
void CNoticeQueue::ComeBack() {
    if (!m_shown || !QApplication::activeWindow()) return;
    if (m_shown->isMinimized()) m_shown->setWindowState(m_shown->windowState() & ~Qt::WindowMinimized);
    m_shown->raise();
    m_shown->activateWindow();
}

void CNoticeQueue::OnFinished(int result) {
    CAlertsNotice* notice = std::exchange(m_shown, nullptr);
    m_gate.Open();
    m_player.Stop();
    if (const auto place = notice->MovedTo()) m_settings.WriteText(kNoticePlace, NoticePlaceText(*place));
    notice->deleteLater();
    if (notice->HadKeyboard()) ActivateBelow();
    const EFiringEnd end = result == CAlertsNotice::WasReset ? EFiringEnd::Reset
                           : result == CAlertsNotice::Armed  ? EFiringEnd::Armed
                                                             : EFiringEnd::Dismissed;
    if (m_ended) m_ended(m_current, end);
    ShowNextSoon(QApplication::doubleClickInterval()); // The second click is not for the next one.
}

// A window manager may leave the keyboard with none of the windows.
void CNoticeQueue::ActivateBelow() {
    if (m_below && m_below->isVisible()) m_below->activateWindow();
}

void CNoticeQueue::DismissAll() {
    const std::deque<SFiredAlert> dismissed = std::exchange(m_waiting, {});
    if (m_shown) m_shown->reject();
    if (!m_ended) return;
    for (const SFiredAlert& notice : dismissed) m_ended(notice, EFiringEnd::Together);
}

void CNoticeQueue::SetMuted(bool muted) {
    m_muted = muted;
    if (!muted) return;
    m_player.Stop();
    if (std::exchange(m_sounding, false)) ShowNext();
}

} // namespace vx
