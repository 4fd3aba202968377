#include "app/Presence.h"

#include <QDateTime>
#include <QGuiApplication>

namespace vx {

CPresence::CPresence(QObject* parent) : QObject(parent) {
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            [this](Qt::ApplicationState state) { SetHere(state == Qt::ApplicationActive); });
}

void CPresence::SetHere(bool here) {
    if (here == IsHere()) return;
    m_awaySinceMs = here ? 0 : QDateTime::currentMSecsSinceEpoch();
    if (here) Q_EMIT Returned();
}

} // namespace vx
