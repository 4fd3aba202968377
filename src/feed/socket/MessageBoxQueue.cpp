#include "feed/socket/MessageBoxQueue.h"

#include <QMetaObject>
#include <QPointer>

#include <utility>

namespace vx {

void CMessageBoxQueue::Post(SMessageBox box) {
    m_waiting.push_back(std::move(box));
    if (!m_busy) Schedule();
}

void CMessageBoxQueue::Schedule() {
    m_busy = true;
    QMetaObject::invokeMethod(
        &m_context, [this] { ShowNext(); }, Qt::QueuedConnection);
}

void CMessageBoxQueue::ShowNext() {
    const SMessageBox box = std::move(m_waiting.front());
    m_waiting.pop_front();
    const QPointer<QObject> alive(&m_context);
    ShowMessageBox(box);
    if (!alive) return;
    m_busy = false;
    if (!m_waiting.empty()) Schedule();
}

} // namespace vx
