// SPDX-License-Identifier: MIT
#pragma once

#include "base/Log.h"

#include <string_view>

namespace vx {

/// How one port of the feed client is logged: its lines and commands by category, and what happens to its
/// connection under "Connectivity".
///
/// Thread  any
struct SFeedLog {
    const char* port; ///< The port's name in the events.
    ELogCategory data;
    ELogCategory request;
    ELogCategory system; ///< Lines that begin with 'S'.
    ELogCategory error;  ///< Lines that begin with 'E', and commands that did not go out whole.

    /// A line from the feed client. Costs a look at the line's first byte while its category is off.
    void Received(std::string_view line) const {
        const ELogCategory category = line.front() == 'S' ? system : line.front() == 'E' ? error : data;
        if (IsOn(category)) Log(category, ELogDirection::FromServer, line);
    }
    /// A command, and what its send returned: the bytes that went out, or -1 and the error.
    void Sent(std::string_view command, int count, int lastError) const;
    void Connected(std::string_view host, unsigned port) const;
    void ConnectFailed(std::string_view host, unsigned port, int error, uint32_t retriesLeft) const;
    void Closed(int error) const;
    /// Something else that went wrong with the port's traffic, under its category of errors.
    void Failed(std::string_view what) const;
};

/// The log of one of the sockets of EFeedSocket.
const SFeedLog& FeedLogOf(int which);

} // namespace vx
