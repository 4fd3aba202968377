#include "vxconnect/server/Port.h"

#include <QTimer>

#include <algorithm>

namespace vx::sim {

namespace {

constexpr int kAcceptAgainMs = 500;
constexpr int kMostWaiting = 1024; // Clients that come at once; one too many would try again a second later.

} // namespace

CPort::CPort(Maker maker) : m_maker(std::move(maker)) {
    setListenBacklogSize(kMostWaiting);
    // Out of file handles, for example: the server has stopped accepting by itself, else it would spin.
    connect(this, &QTcpServer::acceptError, this,
            [this] { QTimer::singleShot(kAcceptAgainMs, this, [this] { resumeAccepting(); }); });
}

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
