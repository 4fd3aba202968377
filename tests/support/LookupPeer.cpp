// SPDX-License-Identifier: MIT
#include "support/LookupPeer.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>

namespace vx::test {

CLookupPeer::CLookupPeer(std::vector<SLookupAnswer> answers) : m_listener(socket(AF_INET, SOCK_STREAM, 0)) {
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

CLookupPeer::~CLookupPeer() {
    shutdown(m_listener, SHUT_RDWR); // Ends an accept that waits; connections end with the other side's time-out.
    m_thread.join();
    close(m_listener);
}

std::vector<std::string> CLookupPeer::Heard() const {
    const std::lock_guard guard(m_lock);
    return m_heard;
}

void CLookupPeer::Serve(const SLookupAnswer& answer) {
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

} // namespace vx::test
