// SPDX-License-Identifier: MIT
#pragma once

#include "base/Clock.h"

#include <string_view>

namespace vx {

/// Whether a day exists in the Gregorian calendar.
bool IsCalendarDay(int year, int month, int day);

/// Days from 30 December 1899 (day 0) to a calendar day; the day must exist.
int DaysSince1899(int year, int month, int day);

/// A date-time as a double that counts days since 30 December 1899, with the time of day as its fraction.
struct SDateTime {
    double days = 0;
    bool valid = false;
};

/// A broken-down time at whole seconds as a date-time; an impossible time gives an invalid one.
SDateTime DateTimeFromLocal(const SLocalTime& time);

/// Reads a date-time from text: "20240131 09:30:05", "1/31/2024 9:30:05 AM", "2024-01-31 09:30:05", or a time of day
/// alone. Text in no such form gives an invalid value.
SDateTime ReadDateTime(std::string_view text);

} // namespace vx
