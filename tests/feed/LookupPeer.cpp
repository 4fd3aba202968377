#include "feed/LookupPeer.h"

#include <linux/sockios.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>

namespace vx::test {

namespace {

// A loop that asks the system again and again leaves the processor to others for this long.
constexpr int kBreathMs = 1;

bool SendAll(int peer, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = send(peer, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count < 0) return false;
        bytes.remove_prefix(static_cast<size_t>(count));
    }
    return true;
}

int Waiting(int descriptor, unsigned long request) {
    int bytes = 0;
    return ioctl(descriptor, request, &bytes) == 0 ? bytes : 0;
}

} // namespace

CLookupPeer::CLookupPeer(std::vector<SLookupAnswer> answers) : m_answers(std::move(answers)) {
    m_listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (pipe(m_stop) != 0 || bind(m_listener, generic, size) != 0 || listen(m_listener, 8) != 0 ||
        getsockname(m_listener, generic, &size) != 0)
        std::abort();
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { Run(); });
}

CLookupPeer::~CLookupPeer() {
    close(m_stop[1]);
    m_thread.join();
    close(m_stop[0]);
    close(m_listener);
}

std::vector<std::string> CLookupPeer::Heard() const {
    const std::lock_guard guard(m_lock);
    return m_heard;
}

/// Whether there is something to read, or the end; never once the test is over.
bool CLookupPeer::Readable(int descriptor, int milliseconds) const {
    pollfd waiting[] = {{descriptor, POLLIN, 0}, {m_stop[0], POLLIN, 0}};
    return poll(waiting, 2, milliseconds) > 0 && waiting[1].revents == 0;
}

void CLookupPeer::Run() {
    for (const SLookupAnswer& answer : m_answers) {
        if (!Readable(m_listener, -1)) return;
        const int peer = accept(m_listener, nullptr, nullptr);
        if (Hear(peer)) Serve(peer, answer);
        close(peer);
    }
}

bool CLookupPeer::Hear(int peer) {
    std::string line;
    for (char c = 0; c != '\n'; line += c)
        if (!Readable(peer, -1) || recv(peer, &c, 1, 0) != 1) return false;
    const std::lock_guard guard(m_lock);
    m_heard.push_back(line);
    return true;
}

void CLookupPeer::Serve(int peer, const SLookupAnswer& answer) {
    for (size_t i = 0; i < answer.pieces.size(); ++i) {
        if (i > 0) AwaitReceived(peer);
        if (!SendAll(peer, answer.pieces[i])) return;
    }
    using enum SLookupAnswer::EThen;
    if (answer.then == Stays) {
        AwaitEnd(peer);
    } else if (answer.then == Drips) {
        while (!Readable(peer, kBreathMs) && SendAll(peer, "7")) {
        }
    } else if (answer.then == Floods) {
        std::string lines;
        while (lines.size() < 60000) lines += "7,ALPHA,Alpha Stock Exchange,1,EQ\r\n";
        while (SendAll(peer, lines)) {
        }
    } else if (answer.then == Resets) {
        const linger atOnce{1, 0};
        setsockopt(peer, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    }
}

void CLookupPeer::AwaitReceived(int peer) {
    while (Waiting(peer, SIOCOUTQ) > 0 || m_reader < 0 || Waiting(m_reader, FIONREAD) > 0) std::this_thread::yield();
}

void CLookupPeer::AwaitEnd(int peer) {
    char rest;
    while (Readable(peer, -1) && recv(peer, &rest, 1, 0) > 0) {
    }
}

} // namespace vx::test
