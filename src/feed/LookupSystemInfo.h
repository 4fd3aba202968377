#pragma once

#include "feed/NativeSocket.h"
#include "feed/Ports.h"
#include "feed/TableReply.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

namespace vx {

/// One request to the lookup port and its whole reply, over a connection of its own that the caller waits for.
///
/// Errors  none is shown; a failure that is not the same as the one before it is in the log under "LookupError"
/// Owns    the connection, which lives for one exchange, and the last reply
/// Thread  one thread at a time; an exchange blocks it, connecting included, for the time-out at most
class CLookupSystemInfo {
public:
    /// How long an exchange may take in all. The feed client runs on the same machine and answers in a few
    /// milliseconds; a longer hold of the window would be felt as a fault of its own.
    static constexpr int kTimeoutMs = 2000;

    /// timeoutMs: as for SetTimeoutMs
    explicit CLookupSystemInfo(CRegistry& registry = CRegistry::CurrentUser(), int timeoutMs = kTimeoutMs);
    virtual ~CLookupSystemInfo() = default;

    /// The time that an exchange has from its begin on; with 0 none is even tried.
    void SetTimeoutMs(int milliseconds) { m_timeoutMs = milliseconds; }

    /// Connects and sends a request in one piece; true when all of it went out.
    virtual bool SendRequest(std::string_view request, uint16_t port);
    /// Receives until the reply's end, the peer's end, an error or the time-out, and closes the connection.
    virtual void ReadReply();
    /// Loads what the derived class is about, unless it is loaded already; nothing here. Every call while it is missing
    /// tries again.
    virtual void Load() {}

    /// Whether the last exchange reached the port and got no usable reply: none within the time-out, or a flood.
    bool WasUnanswered() const { return m_unanswered; }

protected:
    /// Sends a request to the lookup port and reads the reply. False when the port cannot be reached and when the
    /// reply did not come to an end, by its marker or by the peer's, within the time-out.
    bool Exchange(std::string_view request);
    std::string_view Reply() const { return m_reply.Text(); }

    mutable std::mutex m_lock; ///< Guards what a derived class has loaded.

private:
    bool GiveUp(std::string_view what);

    CNativeSocket m_socket;
    CTableReply m_reply;
    CNorvPorts m_ports;
    int m_timeoutMs;
    CNativeSocket::Deadline m_deadline;
    bool m_unanswered = false;
    std::string m_lastFailure; ///< As logged; a port that stays shut is not logged again and again.
};

} // namespace vx
