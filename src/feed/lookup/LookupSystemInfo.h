// SPDX-License-Identifier: MIT
#pragma once

#include "feed/socket/NativeSocket.h"
#include "feed/socket/Ports.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <span>
#include <string>
#include <string_view>

namespace vx {

/// Collects the reply to a request on a blocking lookup connection, one receive after the other.
///
/// Each receive is searched for the end of the reply by itself: an end marker that arrives split over two receives is
/// not recognised. A receive counts up to its first NUL. Line ends at the begin of the receive with the end marker are
/// dropped, wherever the receive before was cut.
///
/// Owns    the text
/// Thread  one thread at a time
class CTableReply {
public:
    /// A reply beyond so many bytes is no table: a table of 256 entries has some 20 KiB.
    static constexpr size_t kMostBytes = 4 * 1024 * 1024;

    /// Takes what one receive brought. False when the reply has ended: at its end marker, at a syntax error, which
    /// empties the text, or beyond kMostBytes.
    bool Take(std::string_view received);

    const std::string& Text() const { return m_text; }
    bool TooLong() const { return m_text.size() > kMostBytes; }
    /// Whether the text itself holds an end of a reply, which arrived in two pieces.
    bool HoldsSplitEnd() const;

private:
    std::string m_text;
};

/// Reads the lines of a code table: the id of an entry and its texts, separated by commas.
///
/// Shape   "7,ALPHA,Alpha Stock Exchange,1,EQ" -> 7 and up to four texts, fewer where the line has fewer; a text after
///         the last comma counts only when it is not empty. One CR at the end of a line is dropped.
/// Errors  lines without an id, or with one outside 0 to 255, are skipped; an id that is no number reads as 0
/// Owns    nothing: the texts are views of the reply
/// Thread  any
/// Source  docs/feed-protocol.md, "Code tables"
void ReadTableReply(std::string_view reply,
                    const std::function<void(int id, std::span<const std::string_view> texts)>& entry);

inline constexpr int kTableEntries = 256;
inline constexpr size_t kMostTableTexts = 4;

/// How long an exchange with the lookup port may hold its caller. The feed client runs on the same machine and answers
/// in a few milliseconds; a longer hold of the window would be felt as a fault of its own.
struct SLookupTimes {
    int totalMs = 2000; ///< In all, connecting included; with 0 none is even tried.
    int quietMs = 250;  ///< Without a byte from the feed client.
};

/// One request to the lookup port and its whole reply, over a connection of its own that the caller waits for.
///
/// Errors  none is shown; a failure that is not the same as the one before it is in the log under "LookupError"
/// Owns    the connection, which lives for one exchange, and the last reply
/// Thread  one thread at a time; an exchange blocks it as long as its times say at most
class CLookupSystemInfo {
public:
    explicit CLookupSystemInfo(CRegistry& registry = CRegistry::CurrentUser(), SLookupTimes times = {});
    virtual ~CLookupSystemInfo() = default;

    void SetTimes(SLookupTimes times) { m_times = times; }

    /// Connects and sends a request in one piece; true when all of it went out.
    virtual bool SendRequest(std::string_view request, uint16_t port);
    /// Receives until the reply's end, the peer's end, an error or the end of its time, and closes the connection.
    virtual void ReadReply();
    /// Loads what the derived class is about, unless it is loaded already; nothing here. Every call while it is missing
    /// tries again.
    virtual void Load() {}

    /// Whether the last exchange reached the port and got no usable reply: none in time, or a flood.
    bool WasUnanswered() const { return m_unanswered; }

protected:
    /// Sends a request to the lookup port and reads the reply. False when the port cannot be reached and when the
    /// reply did not come to an end, by its marker or by the peer's, in time.
    bool Exchange(std::string_view request);
    std::string_view Reply() const { return m_reply.Text(); }

    mutable std::mutex m_lock; ///< Guards what a derived class has loaded.

private:
    bool GiveUp(std::string_view what);
    bool Wait(CNativeSocket::EWait what) const;
    int Connect(uint16_t port);

    CNativeSocket m_socket;
    CTableReply m_reply;
    CNorvPorts m_ports;
    SLookupTimes m_times;
    CNativeSocket::Deadline m_deadline;
    bool m_unanswered = false;
    std::string m_lastFailure; ///< As logged; a port that stays shut is not logged again and again.
};

} // namespace vx
