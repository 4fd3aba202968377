#pragma once

#include "base/DateTime.h"

#include <cstdint>
#include <string>

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

} // namespace vx
