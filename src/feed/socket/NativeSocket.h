// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace vx {

// The numbers by which users and support know socket errors. Every text and every last-error value of the program
// uses them, whatever numbers the operating system has.
inline constexpr int kSocketInvalidArgument = 10022;
inline constexpr int kSocketTooManyFiles = 10024;
inline constexpr int kSocketWouldBlock = 10035;
inline constexpr int kSocketAlready = 10037;
inline constexpr int kSocketNotASocket = 10038;
inline constexpr int kSocketAddressInUse = 10048;
inline constexpr int kSocketAddressNotAvailable = 10049;
inline constexpr int kSocketNetworkDown = 10050;
inline constexpr int kSocketNetworkUnreachable = 10051;
inline constexpr int kSocketAborted = 10053;
inline constexpr int kSocketReset = 10054;
inline constexpr int kSocketNoBuffers = 10055;
inline constexpr int kSocketIsConnected = 10056;
inline constexpr int kSocketNotConnected = 10057;
inline constexpr int kSocketTimedOut = 10060;
inline constexpr int kSocketRefused = 10061;
inline constexpr int kSocketHostUnreachable = 10065;
inline constexpr int kSocketHostNotFound = 11001;

/// Turns the operating system's error number into the program's; one that has no counterpart becomes
/// kSocketInvalidArgument, 0 stays 0.
///
/// Source  the Windows Sockets error codes, which these numbers are
int SocketErrorFromSystem(int systemError);

/// One non-blocking TCP socket (IPv4) of the operating system; the only place of the feed link that calls it.
///
/// Errors  every operation reports its error as one of the numbers above, 0 when it went well
/// Owns    the descriptor, closed by the destructor; no child process inherits it
/// Thread  one thread at a time; only Wait blocks
class CNativeSocket {
public:
    CNativeSocket() = default;
    ~CNativeSocket() { Close(); }
    CNativeSocket(const CNativeSocket&) = delete;
    CNativeSocket& operator=(const CNativeSocket&) = delete;

    struct SResult {
        int count; ///< Bytes moved, 0 when the peer has closed (receive only), -1 on an error.
        int error;
    };

    /// Makes the socket, any local port and address; a socket that was open before is closed.
    int Open();
    void Close();
    int Descriptor() const { return m_descriptor; }

    /// Begins to connect; kSocketWouldBlock means that the outcome shows when the socket becomes writable.
    ///
    /// Shape   host: four decimal numbers with dots, nothing is looked up
    int Connect(const char* host, unsigned port);
    /// The outcome of a connect, asked once the socket is writable. A socket that met itself, which loopback allows
    /// when nobody listens on the port, counts as refused.
    int ConnectOutcome();

    SResult Receive(char* buffer, int length);
    SResult Send(const char* buffer, int length);

    enum class EWait { Readable, Writable };
    using Deadline = std::chrono::steady_clock::time_point;
    /// Waits until the socket can be read (the peer's end and errors included) or written; false once the deadline has
    /// come, even when the socket is ready then.
    bool Wait(EWait what, Deadline deadline) const;
    /// Ends the connection in both directions.
    void Shutdown();

private:
    int m_descriptor = -1;
};

} // namespace vx
