#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vx::sim {

/// One line of level-1 traffic, read from a recording.
struct STrafficLine {
    std::optional<int64_t> timeMs; ///< When it came, in milliseconds from some day on; nothing: not told.
    std::string text;              ///< Windows-1252, without line end and control characters.
};

// Recordings have the form of the program's log: "2024-01-31 09:30:00.123 [L1Data] [FROM SERVER] text", the text as
// UTF-8, bytes that do not print and, here, the backslash as \xNN.

/// Reads a line of a recording, or a bare data line without time ("Q,IBM,...").
///
/// Errors  nothing for a line that is none from the level-1 feed
std::optional<STrafficLine> ReadTrafficLine(std::string_view line);

/// A data line for a recording, with line end.
///
/// Shape   time: "2024-01-31 09:30:00.123"; the text is Windows-1252, its line end is dropped
std::string TrafficText(std::string_view time, std::string_view text);

} // namespace vx::sim
