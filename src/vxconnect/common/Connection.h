// SPDX-License-Identifier: MIT
#pragma once

#include "base/Text.h"
#include "vxconnect/common/Options.h"
#include "vxconnect/common/SendQueue.h"

#include <QObject>
#include <QSocketNotifier>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vx::sim {

/// What one client says and hears, as lines of the log by the port's categories.
class CClientLog {
public:
    explicit CClientLog(EPorts port) : m_port(port) {}

    /// One command line.
    void Said(std::string_view line) const;
    /// Bytes that went out; a line that has not come to its end waits for the rest.
    void Told(std::string_view bytes);

private:
    EPorts m_port;
    CLineCutter m_told;
};

/// How a connection treats its client; a plain number is the queue's limit.
struct SLink {
    SLink(size_t queueBytes) : queueLimit(queueBytes) {}

    size_t queueLimit;             ///< Bytes that wait before commands wait and updates fold.
    size_t pieceBytes = 0;         ///< At most so many bytes go out at a time; 0: as many as the system takes.
    uint64_t dropAfter = 0;        ///< Closed after so many bytes, wherever that is; 0: never.
    bool mute = false;             ///< Nothing is ever sent.
    std::optional<CClientLog> log; ///< Where its traffic is written; nothing: nowhere.
};

/// One client on one port: cuts what it sends into lines and keeps what it does not read in a bounded queue.
///
/// Commands are carried out one line at a time and only while the queue has room; a client that does not read is not
/// read from either, so whatever it asks for, the queue stays bounded. Empty lines are dropped, a line of more than
/// kMaxLine bytes is passed over.
///
/// A client that has closed its sending half is still served; it is gone when sending fails.
///
/// Owns    the socket, closed by the destructor
/// Errors  every failure of the socket ends the connection: OnGone is called once, from the event loop
/// Thread  the one of its event loop
class CConnection : public QObject {
public:
    static constexpr size_t kMaxLine = 65535;

    /// Takes over a connected socket.
    CConnection(qintptr socket, const SLink& link);
    ~CConnection() override;

    /// Called once when the connection is gone; the object is still there.
    std::function<void(CConnection&)> OnGone;

    bool IsOpen() const { return m_open; }
    bool HasRoom() const { return m_queue.Size() < m_link.queueLimit; }
    size_t QueuedBytes() const { return m_queue.Size(); }
    /// Bytes handed to the operating system so far.
    uint64_t SentBytes() const { return m_sent; }

    /// Queues a line that ends in CR LF, whatever the queue holds. Flush sends.
    void Send(std::string_view line);
    /// The queue itself, for lines that are written in place.
    CSendQueue& Queue() { return m_queue; }
    /// Hands as much as possible to the operating system.
    void Flush();
    /// Flushes when enough has gathered to be worth a call.
    void FlushWhenFull() {
        if (m_queue.Size() >= std::min(kFlushBytes, m_link.queueLimit)) Flush();
    }
    /// Closes as soon as the queue is empty.
    void CloseWhenSent();

protected:
    virtual void OnLine(std::string_view line) = 0;
    /// A command line was too long and is passed over.
    virtual void OnOverlongLine() {}
    /// Whether lines are held back until there is room.
    virtual bool HoldsBack() const { return false; }
    /// The queue has become less than half full: what was held back may be added.
    virtual void OnRoom() {}
    /// The client will send nothing more.
    virtual void OnEndOfInput() = 0;

private:
    static constexpr size_t kFlushBytes = 64 * 1024;

    void OnReadable();
    void OnWritable();
    void HandleLines();
    void ContinueLines();
    size_t NextPiece() const;
    void Drop();
    void Fail();

    int m_socket;
    SLink m_link;
    CSendQueue m_queue;
    uint64_t m_sent = 0;
    CLineCutter m_lines{kMaxLine};
    bool m_open = true;
    bool m_waiting = false; // For the client to read: its commands wait as well.
    bool m_inputEnded = false;
    bool m_closing = false;
    QSocketNotifier m_readable;
    QSocketNotifier m_writable;
};

} // namespace vx::sim
