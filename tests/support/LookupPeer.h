// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <netinet/in.h>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace vx::test {

/// What a lookup port does with one connection once it has heard a request's line.
struct SLookupAnswer {
    enum class EThen {
        Closes,
        Stays,  ///< Says nothing more and keeps the connection until the other side ends it.
        Drips,  ///< A byte now and then, until the other side ends it.
        Floods, ///< Whole lines as fast as they are taken, until the other side ends it.
        Resets
    };
    std::string says;
    EThen then = EThen::Closes;
};

/// A lookup port on a free port of loopback, served by a thread of its own: whoever waits for a blocking exchange
/// cannot answer it. Connections get the answers one after the other; those beyond the last are never accepted.
class CLookupPeer {
public:
    explicit CLookupPeer(std::vector<SLookupAnswer> answers) : m_listener(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const generic = reinterpret_cast<sockaddr*>(&address);
        if (bind(m_listener, generic, size) != 0 || listen(m_listener, 8) != 0 ||
            getsockname(m_listener, generic, &size) != 0)
            std::abort();
        m_port = ntohs(address.sin_port);
        m_thread = std::thread([this, list = std::move(answers)] {
            for (const SLookupAnswer& answer : list) Serve(answer);
        });
    }
    ~CLookupPeer() {
        shutdown(m_listener, SHUT_RDWR); // Ends an accept that waits; connections end with the other side's time-out.
        m_thread.join();
        close(m_listener);
    }
    CLookupPeer(const CLookupPeer&) = delete;
    CLookupPeer& operator=(const CLookupPeer&) = delete;

    uint16_t Port() const { return m_port; }
    /// The requests so far, one for each connection.
    std::vector<std::string> Heard() const {
        const std::lock_guard guard(m_lock);
        return m_heard;
    }

private:
    void Serve(const SLookupAnswer& answer) {
        const int peer = accept(m_listener, nullptr, nullptr);
        if (peer < 0) return;
        const auto says = [peer](const std::string& text) {
            for (size_t sent = 0; sent < text.size();) {
                const auto count = send(peer, text.data() + sent, text.size() - sent, MSG_NOSIGNAL);
                if (count < 0) return false;
                sent += static_cast<size_t>(count);
            }
            return true;
        };
        std::string line;
        char c = 0;
        while (c != '\n' && recv(peer, &c, 1, 0) == 1) line += c;
        if (c == '\n') {
            const std::lock_guard guard(m_lock);
            m_heard.push_back(line);
        }
        using enum SLookupAnswer::EThen;
        const bool said = says(answer.says);
        pollfd ended{peer, POLLIN, 0};
        while (said && answer.then == Drips && poll(&ended, 1, 1) == 0 && says("7")) {
        }
        std::string lines;
        while (lines.size() < 60000) lines += "7,ALPHA,Alpha Stock Exchange,1,EQ\r\n";
        while (answer.then == Floods && says(lines)) {
        }
        while (answer.then == Stays && recv(peer, &c, 1, 0) > 0) {
        }
        const linger atOnce{1, 0};
        if (answer.then == Resets) setsockopt(peer, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
        close(peer);
    }

    int m_listener;
    uint16_t m_port = 0;
    mutable std::mutex m_lock;
    std::vector<std::string> m_heard;
    std::thread m_thread;
};

} // namespace vx::test
