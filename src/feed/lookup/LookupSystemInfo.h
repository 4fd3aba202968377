#pragma once

#include "feed/lookup/TableReply.h"
#include "feed/socket/NativeSocket.h"
#include "feed/socket/Ports.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

namespace vx {

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
