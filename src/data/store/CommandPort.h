#pragma once

#include <string_view>

namespace vx {

/// The connection on which the level-1 store sends its watch commands.
///
/// Thread  GUI thread only
class CL1CommandPort {
public:
    virtual ~CL1CommandPort() = default;

    /// Sends one command as it stands, line end included, and returns without waiting.
    ///
    /// Returns the bytes that went out, fewer than the command's length when the connection took only a part of it, or
    ///         -1 when nothing could be sent
    virtual int Send(std::string_view command) = 0;

    /// False while the connection is known to be closed or not yet there: the store then does not try to send its
    /// watches again.
    virtual bool IsOpen() const = 0;
};

} // namespace vx
