#include "app/frame/StrayKeyGuard.h"

#include "base/Clock.h"

#include <QApplication>
#include <QEvent>
#include <QMessageBox>

namespace vx {

CStrayKeyGuard::CStrayKeyGuard() { qApp->installEventFilter(this); }

bool CStrayKeyGuard::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    const bool opens = type == QEvent::Show && qobject_cast<QMessageBox*>(watched);
    const bool isKey = type == QEvent::KeyPress || type == QEvent::ShortcutOverride || type == QEvent::Shortcut;
    if (!opens && !(isKey && m_holds)) return false;
    const int64_t nowMs = CClock::Instance().MonotonicMs();
    m_holds = opens || nowMs - m_lastMs < kQuietMs;
    if (type != QEvent::Shortcut) m_lastMs = nowMs;
    return isKey && m_holds && qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

} // namespace vx
