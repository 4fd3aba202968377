// SPDX-License-Identifier: MIT
#include "app/alerts/MissedAlerts.h"

#include "alerts/rules/AlertTexts.h"
#include "alerts/ui/DesktopNotifier.h"
#include "base/qt/QtText.h"

#include <QDateTime>
#include <QEvent>
#include <QGuiApplication>
#include <QStatusBar>
#include <QToolButton>
#include <QWindow>

#include <utility>

namespace vx {

CPresence::CPresence(QObject* parent) : QObject(parent) {
    SetHere(QGuiApplication::applicationState() == Qt::ApplicationActive);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &CPresence::OnState);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow* window) {
        if (window) OnState(Qt::ApplicationActive);
    });
}

void CPresence::OnState(Qt::ApplicationState state) {
    const bool active = state == Qt::ApplicationActive;
    qGuiApp->removeEventFilter(this);
    if (active && !IsHere() && m_ownWindow.isValid() && !m_ownWindow.hasExpired(kOwnWindowMs))
        qGuiApp->installEventFilter(this);
    else
        SetHere(active);
}

bool CPresence::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::Wheel:
        qGuiApp->removeEventFilter(this);
        SetHere(true);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

// With the user here, no move is needed when the keyboard comes back from that window.
void CPresence::NoteOwnWindow() {
    if (IsHere())
        m_ownWindow.invalidate();
    else
        m_ownWindow.start();
}

// The keyboard goes from one window to the next through none.
void CPresence::Poll() {
    const bool hasFocus = QGuiApplication::focusWindow() != nullptr;
    if (!std::exchange(m_hadFocus, hasFocus) && !hasFocus) SetHere(false);
}

void CPresence::SetHere(bool here) {
    if (here == IsHere()) return;
    m_awaySinceMs = here ? 0 : QDateTime::currentMSecsSinceEpoch();
    if (here) Q_EMIT Returned();
}

CMissedAlerts::CMissedAlerts(QStatusBar& bar, QObject* parent) : QObject(parent), m_button(new QToolButton(&bar)) {
    m_button->setObjectName(QStringLiteral("missedAlerts"));
    m_button->setAutoRaise(true);
    m_button->setToolTip(QStringLiteral("Show what fired while you were away"));
    bar.addPermanentWidget(m_button);
    m_button->hide(); // Adding it has shown it.
    connect(m_button, &QToolButton::clicked, this, &CMissedAlerts::Asked);
    m_gather.setSingleShot(true);
    connect(&m_gather, &QTimer::timeout, this, [this] { Notify(); });
}

CMissedAlerts::~CMissedAlerts() = default;

void CMissedAlerts::Add(const SAlertRecord& notice, const SLocalTime& firedAt) {
    m_titles.push_front(NoticeTitle(notice));
    if (m_titles.size() > kMostNamed) m_titles.pop_back();
    m_body = NoticeBody(notice, firedAt);
    ++m_firedAway;
    ++m_count;
    ShowCount();
    if (!m_gather.isActive()) m_gather.start(kGatherMs);
}

void CMissedAlerts::UseNotifier(std::unique_ptr<CDesktopNotifier> notifier) {
    m_notifier = std::move(notifier);
    connect(m_notifier.get(), &CDesktopNotifier::Chosen, this, &CMissedAlerts::Called);
}

void CMissedAlerts::Notify() {
    if (m_firedAway == 1) return Notify(QtText(m_titles.front()), QtText(m_body).remove(QLatin1Char('\r')));
    QStringList lines;
    for (const std::string& title : m_titles) lines.append(QtText(title));
    if (const int more = m_firedAway - static_cast<int>(m_titles.size()); more > 0)
        lines.append(QStringLiteral("and %1 more").arg(more));
    Notify(QStringLiteral("%1: %2 alerts fired").arg(QtText(kProductWords)).arg(m_firedAway),
           lines.join(QLatin1Char('\n')));
}

// The notifier is made when first needed: the bus is nothing that a start should wait for.
void CMissedAlerts::Notify(const QString& title, const QString& text) {
    if (!m_notifier) UseNotifier(std::make_unique<CDesktopNotifier>());
    m_notifier->Show(title, text, m_urgent && m_urgent());
}

void CMissedAlerts::OnReturn() {
    m_gather.stop();
    m_titles.clear();
    m_firedAway = 0;
    if (m_notifier) m_notifier->Withdraw();
}

void CMissedAlerts::Clear() {
    m_count = 0;
    ShowCount();
}

void CMissedAlerts::ShowCount() {
    m_button->setText(m_count == 1 ? QStringLiteral("1 missed alert")
                                   : QStringLiteral("%1 missed alerts").arg(m_count));
    m_button->setVisible(m_count > 0);
}

} // namespace vx
