// SPDX-License-Identifier: MIT
#pragma once

#include <QTcpServer>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace vx::test {

/// One port of a feed client that says what the test tells it to. It listens on a free port of loopback from the
/// start, in the test's own thread: every verb that waits runs the event loop.
class CScriptedPort {
public:
    CScriptedPort();

    uint16_t Number() const { return m_server.serverPort(); }
    int Connections() const { return m_connections; }

    /// Waits for a connection and says bytes on the newest one.
    void Says(std::string_view bytes);
    /// Whether exactly these bytes have come in all, on all connections; waits for as many.
    ::testing::AssertionResult Heard(std::string_view bytes);
    const std::string& HeardSoFar() const { return m_heard; }

    bool WaitForConnection();
    /// Ends the connection after what was said.
    void HangsUp();
    /// Ends the connection at once, so that the other side sees a reset.
    void Resets();
    /// Lets what the other side sends pile up from its first byte; call it before the connection.
    void NeverReads() { m_reads = false; }

private:
    void Accept();

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
std::string StatusLine(std::string_view status, uint32_t symbolLimit = 500, uint32_t symbolsWatched = 0);

/// A port of loopback on which nobody listens.
uint16_t FreePort();

} // namespace vx::test
