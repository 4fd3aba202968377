#include "app/alerts/Presence.h"

#include <QDateTime>
#include <QEvent>
#include <QGuiApplication>
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

} // namespace vx
