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

/// The market's own clock: it starts at kFeedStart, runs as fast as real time and jumps over nights and weekends.
class CSessionClock {
public:
    explicit CSessionClock(PackedDate date) : m_date(date) {}

    /// Moves on; time after the close is carried into the next session.
    void AdvanceSeconds(int seconds);
    PackedDate Date() const { return m_date; }
    int SecondOfDay() const { return m_second; }
    /// "20240131 09:30:05"
    std::string Text() const;

private:
    PackedDate m_date;
    int m_second = kFeedStart;
};

} // namespace vx::sim
