#pragma once

#include "vxconnect/common/Connection.h"

#include <QTcpServer>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace vx::sim {

/// One listening port on 127.0.0.1 and the clients that are connected to it.
///
/// Owns    its connections: made by the maker, dropped when they are gone
/// Thread  the one of its event loop
class CPort : public QTcpServer {
public:
    using Maker = std::function<std::unique_ptr<CConnection>(qintptr socket)>;

    explicit CPort(Maker maker);

    enum class EListening { Yes, Taken, Failed };
    /// Port 0 chooses a free one; serverPort() tells which. errorString() explains a failure.
    EListening Listen(uint16_t port);

    const std::vector<std::unique_ptr<CConnection>>& Connections() const { return m_connections; }
    /// The most bytes that wait for one client.
    size_t LongestQueue() const;
    /// Bytes sent so far to all clients, the gone ones included.
    uint64_t SentBytes() const;

    /// A client came or went.
    std::function<void()> OnCountChanged;
    /// Called before a connection that is gone is dropped.
    std::function<void(CConnection&)> OnLeaving;

protected:
    void incomingConnection(qintptr socket) override;

private:
    void Drop(CConnection& connection);

    Maker m_maker;
    std::vector<std::unique_ptr<CConnection>> m_connections;
    uint64_t m_sentToGone = 0;
};

} // namespace vx::sim
