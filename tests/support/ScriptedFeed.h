// SPDX-License-Identifier: MIT
#pragma once

#include "support/EventLoop.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <cstdint>
#include <string>
#include <string_view>
#include <sys/socket.h>

namespace vx::test {

/// One port of a feed client that says what the test tells it to. It listens on a free port of loopback from the
/// start, in the test's own thread: every verb that waits runs the event loop.
class CScriptedPort {
public:
    CScriptedPort() {
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { Accept(); });
        EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
    }

    uint16_t Number() const { return m_server.serverPort(); }
    int Connections() const { return m_connections; }

    /// Waits for a connection and says bytes on the newest one.
    void Says(std::string_view bytes) {
        ASSERT_TRUE(WaitForConnection());
        m_socket->write(bytes.data(), static_cast<qint64>(bytes.size()));
        m_socket->flush();
    }
    /// Whether exactly these bytes have come in all, on all connections; waits for as many.
    ::testing::AssertionResult Heard(std::string_view bytes) {
        WaitUntil([&] { return m_heard.size() >= bytes.size(); });
        TurnEventLoop(5);
        if (m_heard == bytes) return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << "heard " << ::testing::PrintToString(m_heard) << " instead of "
                                             << ::testing::PrintToString(std::string(bytes));
    }
    const std::string& HeardSoFar() const { return m_heard; }

    bool WaitForConnection() {
        return WaitUntil([this] { return m_socket != nullptr; });
    }
    /// Ends the connection after what was said.
    void HangsUp() {
        ASSERT_TRUE(WaitForConnection());
        m_socket->disconnectFromHost();
    }
    /// Ends the connection at once, so that the other side sees a reset.
    void Resets() {
        ASSERT_TRUE(WaitForConnection());
        const linger now{1, 0};
        setsockopt(static_cast<int>(m_socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &now, sizeof now);
        m_socket->abort();
    }
    /// Lets what the other side sends pile up from its first byte; call it before the connection.
    void NeverReads() { m_reads = false; }

private:
    void Accept() {
        while (QTcpSocket* const socket = m_server.nextPendingConnection()) {
            socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
            m_socket = socket;
            ++m_connections;
            if (!m_reads) {
                socket->setReadBufferSize(1);
                continue;
            }
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                const QByteArray bytes = socket->readAll();
                m_heard.append(bytes.constData(), static_cast<size_t>(bytes.size()));
            });
        }
    }

    QTcpServer m_server;
    QTcpSocket* m_socket = nullptr;
    std::string m_heard;
    int m_connections = 0;
    bool m_reads = true;
};

/// A feed client's three ports.
struct CScriptedFeed {
    CScriptedPort admin;
    CScriptedPort lookup;
    CScriptedPort level1;
};

/// An "S,STATS" line with the fields that matter.
inline std::string StatusLine(std::string_view status, uint32_t symbolLimit = 500, uint32_t symbolsWatched = 0) {
    return "S,STATS,127.0.0.1,60002," + std::to_string(symbolLimit) + "," + std::to_string(symbolsWatched) +
           ",1,2,3,4,20240131 09:30:05,1/31/2024 9:30:05 AM," + std::string(status) +
           ",1.8.3.0,ABCD,0.5,1.5,2.5,3.5,4.5,5.5,\r\n";
}

/// A port of loopback on which nobody listens.
inline uint16_t FreePort() {
    QTcpServer server;
    EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
    return server.serverPort();
}

} // namespace vx::test
