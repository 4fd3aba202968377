#pragma once

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

} // namespace vx
