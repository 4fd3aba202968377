#include "feed/socket/SocketError.h"

#include <cerrno>

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

} // namespace vx
