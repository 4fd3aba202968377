#include "vxconnect/SessionClock.h"

#include "base/DateTime.h"

#include <fmt/format.h>

namespace vx::sim {

bool IsPackedDate(PackedDate date) {
    const int year = date / 10000;
    return year >= 1900 && year <= 2199 && IsCalendarDay(year, date / 100 % 100, date % 100);
}

PackedDate AddDays(PackedDate date, int days) {
    int year = date / 10000, month = date / 100 % 100, day = date % 100;
    for (; days > 0; --days) {
        if (IsCalendarDay(year, month, day + 1)) {
            ++day;
        } else {
            day = 1;
            month = month % 12 + 1;
            if (month == 1) ++year;
        }
    }
    for (; days < 0; ++days) {
        if (--day == 0) {
            if (--month == 0) month = 12, --year;
            day = 31;
            while (!IsCalendarDay(year, month, day)) --day;
        }
    }
    return year * 10000 + month * 100 + day;
}

PackedDate NextSessionDate(PackedDate date) {
    constexpr int kSaturday = 0, kSunday = 1; // Day 0 of the count, 30 December 1899, was a Saturday.
    PackedDate next = AddDays(date, 1);
    for (;; next = AddDays(next, 1)) {
        const int weekday = DaysSince1899(next / 10000, next / 100 % 100, next % 100) % 7;
        if (weekday != kSaturday && weekday != kSunday) return next;
    }
}

void CSessionClock::AdvanceSeconds(int seconds) {
    m_second += seconds;
    while (m_second >= kSessionClose) {
        m_second = m_second - kSessionClose + kSessionOpen;
        m_date = NextSessionDate(m_date);
    }
}

std::string CSessionClock::Text() const {
    return fmt::format("{:08} {:02}:{:02}:{:02}", m_date, m_second / 3600, m_second / 60 % 60, m_second % 60);
}

} // namespace vx::sim
