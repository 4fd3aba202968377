// SPDX-License-Identifier: MIT
#include "support/ScriptedFeed.h"

#include "support/EventLoop.h"

#include <sys/socket.h>

namespace vx::test {

CScriptedPort::CScriptedPort() {
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { Accept(); });
    EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
}

void CScriptedPort::Accept() {
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

bool CScriptedPort::WaitForConnection() {
    return WaitUntil([this] { return m_socket != nullptr; });
}

void CScriptedPort::Says(std::string_view bytes) {
    ASSERT_TRUE(WaitForConnection());
    m_socket->write(bytes.data(), static_cast<qint64>(bytes.size()));
    m_socket->flush();
}

::testing::AssertionResult CScriptedPort::Heard(std::string_view bytes) {
    WaitUntil([&] { return m_heard.size() >= bytes.size(); });
    TurnEventLoop(5);
    if (m_heard == bytes) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "heard " << ::testing::PrintToString(m_heard) << " instead of "
                                         << ::testing::PrintToString(std::string(bytes));
}

void CScriptedPort::HangsUp() {
    ASSERT_TRUE(WaitForConnection());
    m_socket->disconnectFromHost();
}

void CScriptedPort::Resets() {
    ASSERT_TRUE(WaitForConnection());
    const linger now{1, 0};
    setsockopt(static_cast<int>(m_socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &now, sizeof now);
    m_socket->abort();
}

std::string StatusLine(std::string_view status, uint32_t symbolLimit, uint32_t symbolsWatched) {
    return "S,STATS,127.0.0.1,60002," + std::to_string(symbolLimit) + "," + std::to_string(symbolsWatched) +
           ",1,2,3,4,20240131 09:30:05,1/31/2024 9:30:05 AM," + std::string(status) +
           ",1.8.3.0,ABCD,0.5,1.5,2.5,3.5,4.5,5.5,\r\n";
}

uint16_t FreePort() {
    QTcpServer server;
    EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
    return server.serverPort();
}

} // namespace vx::test
