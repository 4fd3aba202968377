// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/server/Server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vx::sim {

/// Runs the event loop until the condition holds; false when that takes absurdly long.
bool WaitUntil(const std::function<bool()>& condition);

/// A client of the tests. It reads only when told to.
class CPeer {
public:
    explicit CPeer(uint16_t port);
    /// Takes over a socket that is connected already.
    explicit CPeer(int socket, bool) : m_socket(socket) {}
    ~CPeer();
    CPeer(const CPeer&) = delete;

    /// Sends as much as is taken; returns the bytes taken.
    size_t Send(std::string_view bytes);
    /// Reads whatever is there.
    void Read();
    void EndSending();
    /// Closes so that the other side gets a reset.
    void Reset();
    bool IsClosedByServer() const { return m_closed; }

    /// What has been read and not been taken yet.
    const std::string& Text() const { return m_text; }
    /// Waits for a line that begins so and takes everything up to it; without its line end, "(none)" when none comes.
    std::string TakeLine(std::string_view beginning);
    /// The lines read so far, without their line ends, and takes them.
    std::vector<std::string> TakeLines();

private:
    int m_socket = -1;
    std::string m_text;
    bool m_closed = false;
};

/// Waits for the end of the stream.
bool IsClosed(CPeer& peer);

/// The pieces between single blanks.
std::vector<std::string> Words(std::string_view text);

/// The fields of a data line behind its letter.
std::vector<std::string> Fields(std::string_view line);

/// The fields of a standard line as a client keeps them: an empty field leaves the old value.
class CMergedRecord {
public:
    void Merge(std::string_view line);
    std::string Get(EField field) const { return m_fields[static_cast<size_t>(field)]; }
    /// Fields that differ from those of a line, apart from what only that line is about.
    std::vector<std::string> DifferencesTo(std::string_view line) const;

private:
    std::array<std::string, kUpdateFieldCount> m_fields;
};

/// A server on free ports with an event loop to run it.
class ServerTest : public testing::Test {
protected:
    ServerTest();
    ~ServerTest() override;

    /// Starts the server; change m_options before.
    CServer& Start();
    /// Starts the server with something else than the simulated market.
    CServer& Start(std::unique_ptr<CSource> source);
    CServer& Server() { return *m_server; }
    /// A level-1 client past its greeting.
    std::unique_ptr<CPeer> Level1Peer(std::string_view watches = {});

    SOptions m_options;
    std::unique_ptr<CServer> m_server;
};

/// The event loop's application object, made on first use.
void NeedEventLoop();

} // namespace vx::sim
