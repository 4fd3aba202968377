#include "vxconnect/data/DataClock.h"

#include "base/Number.h"
#include "base/Text.h"
#include "vxconnect/common/SessionClock.h"

#include <algorithm>
#include <array>
#include <ctime>

#include <fmt/chrono.h>
#include <fmt/format.h>

namespace vx::sim {

namespace {

std::tm LocalNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return local;
}

int64_t Today() {
    const std::tm now = LocalNow();
    return (now.tm_year + 1900) * 10000 + (now.tm_mon + 1) * 100 + now.tm_mday;
}

// "09:30:05", with or without a letter behind, as seconds; -1 for anything else.
int SecondOf(std::string_view text) {
    const auto parts = SplitCountingTail(text, ':');
    if (parts.size() != 3) return -1;
    const int hour = ReadInt32(parts[0]), minute = ReadInt32(parts[1]), second = ReadInt32(parts[2]);
    const bool good = std::min({hour, minute, second}) >= 0 && hour < 24 && minute < 60 && second < 60;
    return good ? (hour * 60 + minute) * 60 + second : -1;
}

constexpr std::array<EField, 3> kDays = {EField::LastDate, EField::RecentDate, EField::ExtendedDate};
constexpr std::array<EField, 5> kTimes = {EField::LastTime, EField::RecentTime, EField::ExtendedTime, EField::BidTime,
                                          EField::AskTime};

} // namespace

int64_t DayOf(std::string_view text) {
    const auto parts = SplitCountingTail(text, '/');
    if (parts.size() != 3) return 0;
    const int64_t day = ReadInt32(parts[2]) * int64_t{10000} + ReadInt32(parts[0]) * 100 + ReadInt32(parts[1]);
    return day <= INT32_MAX && IsPackedDate(static_cast<PackedDate>(day)) ? day : 0;
}

void CDataClock::Hear(const CDataRecord& record, const CFieldMask& changed) {
    for (const EField field : kDays) {
        const int64_t day = changed.Has(field) ? DayOf(record.Get(field)) : 0;
        if (day <= m_day) continue;
        m_day = day;
        m_second = -1;
    }
    for (const EField field : kTimes)
        if (changed.Has(field)) m_second = std::max(m_second, SecondOf(record.Get(field)));
}

void CDataClock::Set(std::string_view text) {
    const auto parts = SplitCountingTail(text, ' ');
    if (parts.size() != 2 || SecondOf(parts[1]) < 0 || !IsPackedDate(ReadInt32(parts[0]))) return;
    m_day = ReadInt32(parts[0]);
    m_second = SecondOf(parts[1]);
}

std::string CDataClock::Text() const {
    if (m_second < 0 && m_day == 0) return fmt::format("{:%Y%m%d %H:%M:%S}", LocalNow());
    const int second = std::max(0, m_second);
    return fmt::format("{:08} {:02}:{:02}:{:02}", m_day != 0 ? m_day : Today(), second / 3600, second / 60 % 60,
                       second % 60);
}

} // namespace vx::sim
