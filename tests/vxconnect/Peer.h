// SPDX-License-Identifier: MIT
#pragma once

#include "base/Text.h"
#include "support/EventLoop.h"
#include "vxconnect/server/Server.h"

#include <gmock/gmock.h>

#include <arpa/inet.h>
#include <array>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace vx::sim {

/// Runs the event loop until the condition holds; false when that takes absurdly long.
template <class Condition> bool WaitUntil(Condition condition) {
    constexpr int kAbsurdMs = 20000;
    const auto look = [&] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return condition();
    };
    return test::WaitUntil(look, kAbsurdMs);
}

/// A client of the tests. It reads only when told to.
class CPeer {
public:
    explicit CPeer(uint16_t port) : m_socket(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) m_closed = true;
        fcntl(m_socket, F_SETFL, O_NONBLOCK);
    }
    /// Takes over a socket that is connected already.
    explicit CPeer(int socket, bool) : m_socket(socket) {}
    ~CPeer() { close(m_socket); }
    CPeer(const CPeer&) = delete;

    /// Sends as much as is taken; returns the bytes taken.
    size_t Send(std::string_view bytes) {
        const ssize_t count = send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        return count > 0 ? static_cast<size_t>(count) : 0;
    }
    /// Reads whatever is there.
    void Read() {
        std::array<char, 65536> block;
        for (;;) {
            const ssize_t count = recv(m_socket, block.data(), block.size(), 0);
            if (count == 0) m_closed = true;
            if (count <= 0) return;
            m_text.append(block.data(), static_cast<size_t>(count));
        }
    }
    void EndSending() { shutdown(m_socket, SHUT_WR); }
    /// Closes so that the other side gets a reset.
    void Reset() {
        const linger hard{1, 0};
        setsockopt(m_socket, SOL_SOCKET, SO_LINGER, &hard, sizeof hard);
        close(m_socket);
        m_socket = -1;
    }
    bool IsClosedByServer() const { return m_closed; }

    /// What has been read and not been taken yet.
    const std::string& Text() const { return m_text; }
    /// Waits for a line that begins so and takes everything up to it; without its line end, "(none)" when none comes.
    std::string TakeLine(std::string_view beginning) {
        std::string found = "(none)";
        WaitUntil([&] {
            Read();
            for (size_t begin = 0, end; (end = m_text.find("\r\n", begin)) != std::string::npos; begin = end + 2) {
                if (m_text.compare(begin, beginning.size(), beginning) != 0) continue;
                found = m_text.substr(begin, end - begin);
                m_text.erase(0, end + 2);
                return true;
            }
            return false;
        });
        return found;
    }
    /// The lines read so far, without their line ends, and takes them.
    std::vector<std::string> TakeLines() {
        std::vector<std::string> lines;
        size_t begin = 0;
        for (size_t end; (end = m_text.find("\r\n", begin)) != std::string::npos; begin = end + 2)
            lines.push_back(m_text.substr(begin, end - begin));
        m_text.erase(0, begin);
        return lines;
    }

private:
    int m_socket = -1;
    std::string m_text;
    bool m_closed = false;
};

/// Waits for the end of the stream.
inline bool IsClosed(CPeer& peer) {
    return WaitUntil([&] {
        peer.Read();
        return peer.IsClosedByServer();
    });
}

/// The pieces between single blanks.
inline std::vector<std::string> Words(std::string_view text) {
    std::vector<std::string> out;
    for (const std::string_view word : SplitCountingTail(text, ' ')) out.emplace_back(word);
    return out;
}

/// The fields of a data line behind its letter.
inline std::vector<std::string> Fields(std::string_view line) {
    std::vector<std::string> out;
    for (const std::string_view field : SplitTerminated(line.substr(2), ',')) out.emplace_back(field);
    return out;
}

/// The fields of a standard line as a client keeps them: an empty field leaves the old value.
class CMergedRecord {
public:
    void Merge(std::string_view line) {
        const std::vector<std::string> fields = Fields(line);
        ASSERT_EQ(fields.size(), kUpdateFieldCount) << line;
        for (size_t i = 0; i < fields.size(); ++i)
            if (!fields[i].empty()) m_fields[i] = fields[i];
    }
    std::string Get(EField field) const { return m_fields[static_cast<size_t>(field)]; }
    /// Fields that differ from those of a line, apart from what only that line is about.
    std::vector<std::string> DifferencesTo(std::string_view line) const {
        std::vector<std::string> out;
        const std::vector<std::string> fields = Fields(line);
        for (size_t i = 0; i < kUpdateFieldCount; ++i)
            if (static_cast<EField>(i) != EField::MessageContents && (i >= fields.size() || fields[i] != m_fields[i]))
                out.push_back(std::string(kUpdateFields[i].name) + ": \"" + m_fields[i] + "\"");
        return out;
    }

private:
    std::array<std::string, kUpdateFieldCount> m_fields;
};

/// A server on free ports with an event loop to run it.
class ServerTest : public testing::Test {
protected:
    ServerTest() { m_options.level1Port = m_options.lookupPort = m_options.adminPort = uint16_t{0}; }

    /// Starts the server, with the simulated market or with something else; change m_options before.
    CServer& Start(std::unique_ptr<CSource> source = nullptr) {
        m_server = std::make_unique<CServer>(m_options, std::move(source));
        EXPECT_EQ(m_server->Start(), CServer::EStart::Serving) << m_server->Message();
        return *m_server;
    }
    CServer& Server() { return *m_server; }
    /// A level-1 client past its greeting.
    std::unique_ptr<CPeer> Level1Peer(std::string_view watches = {}) {
        auto peer = std::make_unique<CPeer>(m_server->Level1Port());
        std::string names;
        for (const SUpdateField& field : kUpdateFields)
            names += std::string(names.empty() ? "" : ",") + std::string(field.name);
        peer->Send("S,SET PROTOCOL,6.2\nS,SET CLIENT NAME,Tests\nS,SELECT UPDATE FIELDS," + names + "\n\n");
        EXPECT_EQ(peer->TakeLine("S,IP,"), "S,IP,127.0.0.1," + std::to_string(m_server->Level1Port()));
        peer->Send("S,NEWSON\r\n");
        peer->Send(watches);
        return peer;
    }

    SOptions m_options;
    std::unique_ptr<CServer> m_server;
};

} // namespace vx::sim
