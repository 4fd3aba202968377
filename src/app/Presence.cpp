#include "app/Presence.h"

#include <QDateTime>
#include <QEvent>
#include <QGuiApplication>

namespace vx {

CPresence::CPresence(QObject* parent) : QObject(parent) {
    SetHere(QGuiApplication::applicationState() == Qt::ApplicationActive);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &CPresence::OnState);
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

void CPresence::SetHere(bool here) {
    if (here == IsHere()) return;
    m_awaySinceMs = here ? 0 : QDateTime::currentMSecsSinceEpoch();
    if (here) Q_EMIT Returned();
}

} // namespace vx
