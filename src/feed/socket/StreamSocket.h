// SPDX-License-Identifier: MIT
#pragma once

#include "base/DateTime.h"
#include "feed/socket/AsyncSocket.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vx {

/// A counter with the name it is shown by. It wraps at 32 bits and is never reset.
struct SNamedCounter {
    const char* name;
    uint32_t value = 0;
};

/// What happened on one feed connection so far.
struct SocketStats {
    SDateTime connectTime; ///< Local time of the connect; invalid before it.
    SDateTime
        lastMessageTime; ///< Local time of the read that brought the last line; invalid before it and after Close.
    SNamedCounter bytesSent{"BytesSent"};
    /// Grows by twice the bytes read: the receive counts them and so does the line cutting. Users compare this figure
    /// between versions of the program, so it stays.
    SNamedCounter bytesReceived{"BytesReceived"};
    SNamedCounter messagesSent{"MessagesSent"};
    SNamedCounter messagesReceived{"MessagesReceived"};
    const char* statusName = "Status";
    std::string status = "Not Connected"; ///< Or "Connected".
};

/// A client socket that cuts what it receives into lines and keeps statistics.
///
/// Shape   any run of CR and LF ends a line; empty lines are dropped; a line without its end waits for the next read.
///         A line that reaches 65,535 bytes without an end stops the connection silently: nothing more is received.
/// Owns    one receive buffer of 64 KiB, in which the lines are cut in place, and the statistics
/// Thread  as CAsyncSocket
class CZTLStreamSocket : public CAsyncSocket {
public:
    static constexpr int kCapacity = 65536; ///< Bytes; one is kept for the NUL after the last byte.

    CZTLStreamSocket();

    const SocketStats& Stats() const { return m_stats; }
    /// Adds 1 to "MessagesSent": the sender of a command counts it, Send does not.
    void CountMessageSent(uint32_t count = 1) { m_stats.messagesSent.value += count; }
    /// The last error (NativeSocket.h), 0 after any success.
    int LastError() const { return m_lastError; }

    /// A line without an end has filled the buffer: nothing more is received, and not even the peer's end is seen.
    bool IsStuck() const { return m_fill == kCapacity - 1; }

    /// What the last receive returned: bytes, 0 when the peer had closed or the buffer was full, -1 on an error.
    int LastReceiveCount() const { return m_lastReceived; }

    /// Closes the connection and then calls OnClose(0).
    void Close() override;
    int Receive(void* buffer, int length, int flags = 0) override;
    int Send(const void* buffer, int length, int flags = 0) override;
    /// Sends a text, with one Send. When the one before was sent in part only, a line end goes in front, so that its
    /// part never becomes the beginning of this one.
    ///
    /// Returns the bytes of the text that were sent, -1 on an error
    int SendText(std::string_view text);

    /// Begins to connect, see CAsyncSocket::Connect.
    virtual bool Connect(const char* host, unsigned port);

protected:
    void OnReceive(int error) override;
    void OnConnect(int error) override;
    void OnClose(int error) override;

    /// Takes one complete line; does nothing here.
    ///
    /// Shape   never empty; ends before the first NUL that the line holds, and a NUL follows it
    /// Owns    nothing: the line lives in the receive buffer and is gone when the call returns. No line is copied.
    virtual void OnMessage(std::string_view line);
    /// Two of the lines that OnMessage will get next are these, `soon` within a few, unless a handler closes the
    /// connection; does nothing here. Not every line is announced.
    virtual void OnMessagesAhead(std::string_view later, std::string_view soon);

    /// Cuts count bytes, just received after the waiting ones, into lines and hands them over one after the other.
    virtual void ProcessReceivedData(int count);

    /// Marks the connection as made now.
    void MarkConnected();

private:
    int m_fill = 0;          ///< Bytes at the front of the buffer that wait for their line end.
    bool m_nulsWait = false; ///< Whether NULs are among them: the text of a line ends at its first one.
    bool m_halfSent = false; ///< The last text went out in part only.
    int m_lastReceived = 0;
    std::unique_ptr<char[]> m_buffer;
    int m_lastError = 0;
    SocketStats m_stats;
};

} // namespace vx
