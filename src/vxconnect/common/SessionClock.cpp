// SPDX-License-Identifier: MIT
#include "vxconnect/common/SessionClock.h"

#include <algorithm>
#include <chrono>

#include <fmt/format.h>

namespace vx::sim {

namespace {

std::chrono::year_month_day Unpacked(PackedDate date) {
    return {std::chrono::year(date / 10000), std::chrono::month(static_cast<unsigned>(date / 100 % 100)),
            std::chrono::day(static_cast<unsigned>(date % 100))};
}

PackedDate Packed(std::chrono::sys_days day) {
    const std::chrono::year_month_day parts = day;
    return static_cast<int>(parts.year()) * 10000 + static_cast<int>(static_cast<unsigned>(parts.month())) * 100 +
           static_cast<int>(static_cast<unsigned>(parts.day()));
}

} // namespace

bool IsPackedDate(PackedDate date) {
    const int year = date / 10000;
    return year >= 1900 && year <= 2199 && Unpacked(date).ok();
}

PackedDate AddDays(PackedDate date, int days) {
    return Packed(std::chrono::sys_days(Unpacked(date)) + std::chrono::days(days));
}

PackedDate NextSessionDate(PackedDate date) {
    std::chrono::sys_days next = std::chrono::sys_days(Unpacked(date)) + std::chrono::days(1);
    while (std::chrono::weekday(next).iso_encoding() > 5) next += std::chrono::days(1);
    return Packed(next);
}

PackedDate PreviousSessionDate(PackedDate date) {
    std::chrono::sys_days day = std::chrono::sys_days(Unpacked(date)) - std::chrono::days(1);
    while (std::chrono::weekday(day).iso_encoding() > 5) day -= std::chrono::days(1);
    return Packed(day);
}

PackedDate SessionDateUpTo(PackedDate date) { return PreviousSessionDate(AddDays(date, 1)); }

int DaysBetween(PackedDate from, PackedDate to) {
    return static_cast<int>((std::chrono::sys_days(Unpacked(to)) - std::chrono::sys_days(Unpacked(from))).count());
}

PackedDate ThirdFriday(int year, int month) {
    return Packed(std::chrono::sys_days(std::chrono::year(year) / month / std::chrono::Friday[3]));
}

void CSessionClock::MoveTo(MarketMs now) {
    m_now = std::max(m_now, now);
    for (; m_now >= m_sessionBegin + kSessionMs; m_sessionBegin += kSessionMs) m_date = NextSessionDate(m_date);
}

std::string CSessionClock::Text() const {
    const int second = SecondOfDay();
    return fmt::format("{:08} {:02}:{:02}:{:02}", m_date, second / 3600, second / 60 % 60, second % 60);
}

} // namespace vx::sim
