// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/InputFields.h"

#include <optional>
#include <string>
#include <string_view>

namespace vx::sim {

/// A value as the wire has it, or why the wire cannot have it.
struct SInputValue {
    std::string text;
    std::string error;   ///< "\"abc\" is not a number", empty when all is well.
    std::string date;    ///< The day that was given with a time; else empty.
    bool capped = false; ///< The text is the largest number that the wire has, smaller than the one given.
};

/// Reads one value of a user's own data.
///
/// Shape   text: Windows-1252, not empty, blanks around it aside; commas in texts are dropped
SInputValue ReadInputValue(EInputKind kind, std::string_view text);

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
