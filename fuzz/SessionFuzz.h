// SPDX-License-Identifier: MIT
#pragma once

#include "feed/session/FeedSession.h"
#include "feed/socket/ClientAppSocket.h"
#include "support/ReadsSocket.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace vx::fuzz {

/// Gives the input, as lines of one port, to a session that checks itself; the session is made of a registry that does
/// not exist. What is to be checked when all lines are through stands in the function.
template <class TSession, class TDone> int ReadBySession(const uint8_t* data, size_t size, TDone&& done) {
    constexpr size_t kMostBytes = 60'000; // A socket reads no more at once.
    if (size > kMostBytes) return 0;
    static CRegistry registry("/nonexistent");
    TSession session(registry);
    test::CReadsSocket<CZantrelClientAppSocket> socket(0u);
    socket.SetOwner(&session);
    socket.Read(std::string(reinterpret_cast<const char*>(data), size) + "\n");
    done(session);
    return 0;
}

} // namespace vx::fuzz
