// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace vx::sim {

/// A day as year * 10000 + month * 100 + day.
using PackedDate = int32_t;

constexpr PackedDate kFirstSessionDate = 20240131; ///< The day on which every simulation starts, unless told.
constexpr int kSessionOpen = 9 * 3600 + 30 * 60;   ///< Seconds of the day.
constexpr int kSessionClose = 16 * 3600;           ///< Seconds of the day.
constexpr int kFeedStart = 10 * 3600;              ///< Seconds of the first day at which lines start to flow.

/// Whether a packed date exists in the calendar, years 1900 to 2199.
bool IsPackedDate(PackedDate date);

/// The day that lies a number of days later, or earlier when negative.
PackedDate AddDays(PackedDate date, int days);

/// The next Monday to Friday.
PackedDate NextSessionDate(PackedDate date);

/// The Monday to Friday before.
PackedDate PreviousSessionDate(PackedDate date);

/// The day itself when it is a Monday to Friday, else the Friday before.
PackedDate SessionDateUpTo(PackedDate date);

/// Calendar days from one day to another, negative when the second lies before the first.
int DaysBetween(PackedDate from, PackedDate to);

/// The third Friday of a month, on which contracts expire.
PackedDate ThirdFriday(int year, int month);

/// Milliseconds of trading time since lines began to flow, at kFeedStart of the first day; nights do not count.
using MarketMs = int64_t;

constexpr MarketMs kSessionMs = int64_t{kSessionClose - kSessionOpen} * 1000;
constexpr MarketMs kFirstSessionBegin = -int64_t{kFeedStart - kSessionOpen} * 1000;

/// The market's clock: it jumps over nights and weekends.
class CSessionClock {
public:
    explicit CSessionClock(PackedDate date) : m_date(date) {}

    /// Moves on; an earlier time than the present one changes nothing.
    void MoveTo(MarketMs now);
    MarketMs Now() const { return m_now; }
    PackedDate Date() const { return m_date; }
    int SecondOfDay() const { return kSessionOpen + static_cast<int>((m_now - m_sessionBegin) / 1000); }
    /// "20240131 09:30:05"
    std::string Text() const;

private:
    PackedDate m_date;
    MarketMs m_now = 0;
    MarketMs m_sessionBegin = kFirstSessionBegin;
};

} // namespace vx::sim
