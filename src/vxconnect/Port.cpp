#include "vxconnect/Port.h"

#include <algorithm>

namespace vx::sim {

CPort::EListening CPort::Listen(uint16_t port) {
    if (listen(QHostAddress::LocalHost, port)) return EListening::Yes;
    return serverError() == QAbstractSocket::AddressInUseError ? EListening::Taken : EListening::Failed;
}

size_t CPort::LongestQueue() const {
    size_t longest = 0;
    for (const auto& connection : m_connections) longest = std::max(longest, connection->QueuedBytes());
    return longest;
}

uint64_t CPort::SentBytes() const {
    uint64_t sent = m_sentToGone;
    for (const auto& connection : m_connections) sent += connection->SentBytes();
    return sent;
}

void CPort::incomingConnection(qintptr socket) {
    m_connections.push_back(m_maker(socket));
    m_connections.back()->OnGone = [this](CConnection& connection) { Drop(connection); };
    if (OnCountChanged) OnCountChanged();
}

void CPort::Drop(CConnection& connection) {
    if (OnLeaving) OnLeaving(connection);
    m_sentToGone += connection.SentBytes();
    const auto found =
        std::find_if(m_connections.begin(), m_connections.end(), [&](const auto& c) { return c.get() == &connection; });
    found->release()->deleteLater(); // It is the one that called us.
    m_connections.erase(found);
    if (OnCountChanged) OnCountChanged();
}

} // namespace vx::sim
