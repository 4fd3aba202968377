#pragma once

#include "vxconnect/common/Options.h"

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
    std::string m_line; ///< Without its end.
};

} // namespace vx::sim
