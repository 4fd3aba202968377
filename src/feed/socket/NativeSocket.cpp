// SPDX-License-Identifier: MIT
#include "feed/socket/NativeSocket.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstdint>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vx {

int SocketErrorFromSystem(int systemError) {
    switch (systemError) {
    case 0:
        return 0;
    case EAGAIN:
    case EINPROGRESS:
        return kSocketWouldBlock;
    case EALREADY:
        return kSocketAlready;
    case EBADF:
    case ENOTSOCK:
        return kSocketNotASocket;
    case EMFILE:
    case ENFILE:
        return kSocketTooManyFiles;
    case EADDRINUSE:
        return kSocketAddressInUse;
    case EADDRNOTAVAIL:
        return kSocketAddressNotAvailable;
    case ENETDOWN:
        return kSocketNetworkDown;
    case ENETUNREACH:
        return kSocketNetworkUnreachable;
    case EPIPE:
    case ECONNABORTED:
        return kSocketAborted;
    case ECONNRESET:
        return kSocketReset;
    case ENOMEM:
    case ENOBUFS:
        return kSocketNoBuffers;
    case EISCONN:
        return kSocketIsConnected;
    case ENOTCONN:
        return kSocketNotConnected;
    case ETIMEDOUT:
        return kSocketTimedOut;
    case ECONNREFUSED:
        return kSocketRefused;
    case EHOSTUNREACH:
        return kSocketHostUnreachable;
    default:
        return kSocketInvalidArgument;
    }
}

namespace {

int LastError() { return SocketErrorFromSystem(errno); }

bool MetItself(int descriptor) {
    sockaddr_in local{};
    sockaddr_in peer{};
    socklen_t localSize = sizeof local;
    socklen_t peerSize = sizeof peer;
    return getsockname(descriptor, reinterpret_cast<sockaddr*>(&local), &localSize) == 0 &&
           getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &peerSize) == 0 &&
           local.sin_port == peer.sin_port && local.sin_addr.s_addr == peer.sin_addr.s_addr;
}

} // namespace

int CNativeSocket::Open() {
    Close();
    m_descriptor = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, IPPROTO_TCP);
    if (m_descriptor < 0) return LastError();
    const int on = 1; // Commands are short; without this the second one waits for the first one's acknowledgement.
    setsockopt(m_descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return 0;
}

void CNativeSocket::Close() {
    if (m_descriptor >= 0) ::close(m_descriptor);
    m_descriptor = -1;
}

int CNativeSocket::Connect(const char* host, unsigned port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    if (port > 65535) return kSocketAddressNotAvailable;
    if (inet_pton(AF_INET, host, &address.sin_addr) != 1) return kSocketHostNotFound;
    return ::connect(m_descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 ? 0 : LastError();
}

int CNativeSocket::ConnectOutcome() {
    int error = 0;
    socklen_t size = sizeof error;
    if (getsockopt(m_descriptor, SOL_SOCKET, SO_ERROR, &error, &size) != 0) return LastError();
    if (error != 0) return SocketErrorFromSystem(error);
    return MetItself(m_descriptor) ? kSocketRefused : 0;
}

CNativeSocket::SResult CNativeSocket::Receive(char* buffer, int length) {
    for (;;) {
        const auto count = ::recv(m_descriptor, buffer, static_cast<size_t>(length), 0);
        if (count >= 0) return {static_cast<int>(count), 0};
        if (errno != EINTR) return {-1, LastError()};
    }
}

CNativeSocket::SResult CNativeSocket::Send(const char* buffer, int length) {
    for (;;) {
        const auto count = ::send(m_descriptor, buffer, static_cast<size_t>(length), MSG_NOSIGNAL);
        if (count >= 0) return {static_cast<int>(count), 0};
        if (errno != EINTR) return {-1, LastError()};
    }
}

bool CNativeSocket::Wait(EWait what, Deadline deadline) const {
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) return false;
        pollfd waiting{m_descriptor, static_cast<short>(what == EWait::Readable ? POLLIN : POLLOUT), 0};
        const int ready = ::poll(&waiting, 1, static_cast<int>(left.count()));
        if (ready > 0) return true;
        if (ready < 0 && errno != EINTR) return false;
    }
}

void CNativeSocket::Shutdown() {
    if (m_descriptor >= 0) ::shutdown(m_descriptor, SHUT_RDWR);
}

} // namespace vx
