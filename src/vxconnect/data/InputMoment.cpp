#include "vxconnect/data/InputMoment.h"

#include "base/DateTime.h"
#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <vector>

#include <fmt/format.h>

namespace vx::sim {

namespace {

constexpr std::string_view kDigits = "0123456789";

struct SDay {
    int year = 0, month = 0, day = 0;
};

bool AllOf(std::string_view text, std::string_view allowed) {
    return !text.empty() && text.find_first_not_of(allowed) == std::string_view::npos;
}

// Numbers between separators, each of digits only and of at most four.
std::optional<std::vector<int>> Parts(std::string_view text, char separator) {
    std::vector<int> out;
    if (text.ends_with(separator)) return std::nullopt;
    for (const std::string_view piece : SplitCountingTail(text, separator)) {
        if (!AllOf(piece, kDigits) || piece.size() > 4) return std::nullopt;
        out.push_back(ReadInt32(piece));
    }
    return out;
}

std::optional<SDay> DayOf(std::string_view text) {
    const auto slashes = Parts(text, '/'), dashes = Parts(text, '-');
    SDay out;
    if (slashes && slashes->size() == 3) {
        out = {(*slashes)[2], (*slashes)[0], (*slashes)[1]};
    } else if (dashes && dashes->size() == 3) {
        out = {(*dashes)[0], (*dashes)[1], (*dashes)[2]};
    } else if (text.size() == 8 && AllOf(text, kDigits)) {
        const int packed = ReadInt32(text);
        out = {packed / 10000, packed / 100 % 100, packed % 100};
    }
    if (out.year < 1900 || out.year > 2199 || !IsCalendarDay(out.year, out.month, out.day)) return std::nullopt;
    return out;
}

// "9:30", "09:30:05.25" or "093005" as seconds of the day.
std::optional<int> SecondsOf(std::string_view text) {
    text = text.substr(0, text.find('.'));
    std::vector<int> parts = Parts(text, ':').value_or(std::vector<int>{});
    if (text.size() == 6 && AllOf(text, kDigits))
        parts = {ReadInt32(text.substr(0, 2)), ReadInt32(text.substr(2, 2)), ReadInt32(text.substr(4))};
    if (parts.size() == 2) parts.push_back(0);
    if (parts.size() != 3 || parts[0] > 23 || parts[1] > 59 || parts[2] > 59) return std::nullopt;
    return (parts[0] * 60 + parts[1]) * 60 + parts[2];
}

// "Z", "+01:00", "-0500" or "+1" as seconds ahead of universal time.
std::optional<int> ZoneOf(std::string_view text) {
    if (text == "Z" || text == "z") return 0;
    if (text.size() < 2 || (text[0] != '+' && text[0] != '-')) return std::nullopt;
    std::string digits(text.substr(1));
    std::erase(digits, ':');
    if (digits.size() > 4 || !AllOf(digits, kDigits)) return std::nullopt;
    const int number = ReadInt32(digits), hours = digits.size() > 2 ? number / 100 : number;
    const int seconds = (hours * 60 + (digits.size() > 2 ? number % 100 : 0)) * 60;
    return text[0] == '-' ? -seconds : seconds;
}

std::string DateText(const SDay& day) { return fmt::format("{}/{}/{}", day.month, day.day, day.year); }

std::string TimeText(int seconds) {
    return fmt::format("{:02}:{:02}:{:02}", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

SMoment MomentSince1970(int64_t seconds) {
    const std::time_t time = seconds;
    std::tm local{};
    localtime_r(&time, &local);
    return {DateText({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday}),
            TimeText((local.tm_hour * 60 + local.tm_min) * 60 + std::min(local.tm_sec, 59))};
}

// The size shows the unit: present times in each unit have a number of digits of their own.
std::optional<SMoment> SinceEpoch(std::string_view text) {
    constexpr std::array<double, 4> kUnits = {1, 1e3, 1e6, 1e9};
    constexpr double kLeast = 1e9, kMost = 1e10; // Seconds: the years 2001 to 2286.
    const auto value = AllOf(text, "0123456789.eE+") ? ReadWholeDouble(text) : std::nullopt;
    for (const double unit : kUnits)
        if (value && *value >= kLeast * unit && *value < kMost * unit)
            return MomentSince1970(static_cast<int64_t>(std::floor(*value / unit)));
    return std::nullopt;
}

// A day followed by a time, with or without a zone.
std::optional<SMoment> DayAndTime(const SDay& day, std::string_view text) {
    const size_t zoneAt = std::min(text.find_first_of("Zz+-"), text.size());
    const auto seconds = SecondsOf(TrimBlanks(text.substr(0, zoneAt)));
    if (!seconds) return std::nullopt;
    if (zoneAt == text.size()) return SMoment{DateText(day), TimeText(*seconds)};
    const auto zone = ZoneOf(text.substr(zoneAt));
    if (!zone) return std::nullopt;
    constexpr int64_t kSecondsADay = 86400;
    static const int kFirstDay = DaysSince1899(1970, 1, 1);
    return MomentSince1970((DaysSince1899(day.year, day.month, day.day) - kFirstDay) * kSecondsADay + *seconds - *zone);
}

} // namespace

std::optional<SMoment> ReadMoment(std::string_view text) {
    const size_t between = text.find_first_of("Tt ");
    const auto day = DayOf(text.substr(0, between));
    if (day && between != std::string_view::npos) return DayAndTime(*day, TrimBlanks(text.substr(between + 1)));
    if (day) return SMoment{DateText(*day), {}};
    if (const auto moment = SinceEpoch(text)) return moment;
    const auto seconds = text.find(':') == std::string_view::npos ? std::nullopt : SecondsOf(text);
    return seconds ? std::optional(SMoment{{}, TimeText(*seconds)}) : std::nullopt;
}

std::string MonthDayOf(std::string_view text) {
    constexpr int kLeapYear = 2024;
    const auto parts = Parts(text, '/');
    if (parts && parts->size() == 2 && IsCalendarDay(kLeapYear, (*parts)[0], (*parts)[1]))
        return fmt::format("{}/{}", (*parts)[0], (*parts)[1]);
    const auto day = DayOf(text);
    return day ? fmt::format("{}/{}", day->month, day->day) : std::string();
}

} // namespace vx::sim
