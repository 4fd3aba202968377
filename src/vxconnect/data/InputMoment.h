#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vx::sim {

/// A day, a time of day, or both, as the wire has them.
struct SMoment {
    std::string date; ///< "1/31/2024", empty for none.
    std::string time; ///< "09:30:05", empty for none.
};

/// Reads a date ("1/31/2024", "2024-01-31", "20240131"), a time ("9:30", "09:30:05.25"), a date and a time with "T" or
/// a blank between them and perhaps a zone ("Z", "+01:00"), or the seconds, milli-, micro- or nanoseconds since 1970.
/// Values with a zone and values since 1970 are converted to this computer's zone; fractions of a second are dropped.
///
/// Errors  nothing for any other text
std::optional<SMoment> ReadMoment(std::string_view text);

/// Reads a month and a day ("3/15"), or any date, as the wire has a date without a year; empty for any other text.
std::string MonthDayOf(std::string_view text);

} // namespace vx::sim
