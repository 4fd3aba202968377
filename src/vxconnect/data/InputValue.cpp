// SPDX-License-Identifier: MIT
#include "vxconnect/data/InputValue.h"

#include "base/DateTime.h"
#include "base/Number.h"
#include "base/Text.h"
#include "vxconnect/common/UpdateFields.h"
#include "vxconnect/common/WireText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <vector>

namespace vx::sim {

namespace {

constexpr size_t kMostText = 255;

SInputValue Good(std::string text) { return {std::move(text), {}, {}, false}; }
SInputValue Bad(std::string_view text, std::string_view wanted) {
    return {{}, fmt::format("\"{}\" is not {}", Shown(text), wanted), {}, false};
}

bool AllOf(std::string_view text, std::string_view allowed) {
    return !text.empty() && text.find_first_not_of(allowed) == std::string_view::npos;
}

SInputValue ReadSymbol(std::string_view text) {
    if (!IsSymbolText(text)) return Bad(text, "a symbol: 1 to 255 printable characters without comma");
    if (text.find("--") != std::string_view::npos) return Bad(text, "a symbol: \"--\" stands before a region");
    return Good(std::string(text));
}

// The wire has no place for commas and line ends: they are dropped from a name.
SInputValue ReadText(std::string_view text) {
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
    const auto breaks = [](char c) { return c == '\r' || c == '\n' || c == '\t'; };
    std::string out(text);
    std::replace_if(out.begin(), out.end(), breaks, ' ');
    if (std::any_of(out.begin(), out.end(), isControl)) return Bad(text, "a text without control characters");
    if (text.size() > kMostText) return Bad(text, "a text of at most 255 characters");
    std::erase(out, ',');
    return Good(std::string(TrimBlanks(out)));
}

bool IsNumber(std::string_view text) { return AllOf(text, "0123456789+-.eE") && ReadWholeDouble(text).has_value(); }

// A price or ratio beyond is a mistake, and would be cut in a cell.
bool IsInRange(double value) {
    constexpr double kLeast = 1e-15, kMost = 1e15;
    return value == 0 || (std::abs(value) >= kLeast && std::abs(value) <= kMost);
}

SInputValue OutOfRange(std::string_view text) {
    return {{}, fmt::format("\"{}\" is out of range: 0, or 1e-15 to 1e15 with either sign", Shown(text)), {}, false};
}

// All digits that count, without an exponent.
std::string Plain(double value) {
    std::array<char, 64> out;
    const auto [end, status] = std::to_chars(out.data(), out.data() + out.size(), value, std::chars_format::fixed);
    return status == std::errc() ? std::string(out.data(), end) : "0";
}

// Spreadsheets and scripts write whole numbers as 100.0 and 1e2 too.
SInputValue ReadInteger(std::string_view text) {
    constexpr double kLeast = INT32_MIN, kMost = INT32_MAX;
    const double value = IsNumber(text) ? ReadDouble(text) : NAN;
    if (!(value >= kLeast && value <= kMost) || value != std::floor(value))
        return Bad(text, "a whole number from -2147483648 to 2147483647");
    return Good(std::to_string(static_cast<int64_t>(value)));
}

SInputValue ReadCount(std::string_view text, double most) {
    const double value = IsNumber(text) ? std::round(ReadDouble(text)) : NAN;
    if (!(value >= 0)) return Bad(text, "a size: a number of 0 or more");
    SInputValue out = Good(std::to_string(static_cast<int64_t>(std::min(value, most))));
    out.capped = value > most;
    return out;
}

SInputValue ReadSize(std::string_view text) { return ReadCount(text, INT32_MAX); }

SInputValue ReadVolume(std::string_view text) { return ReadCount(text, UINT32_MAX); }

SInputValue ReadNumber(std::string_view text) {
    if (!IsNumber(text)) return Bad(text, "a number");
    const double value = ReadDouble(text);
    if (!IsInRange(value)) return OutOfRange(text);
    // The digits that were given count, a trailing zero too; other spellings are written out.
    const bool plain = AllOf(text, "0123456789-.") && text.size() < 24;
    return Good(plain ? std::string(text) : Plain(value));
}

SInputValue ReadPercent(std::string_view text) {
    const std::string_view digits = text.ends_with('%') ? TrimBlanks(text.substr(0, text.size() - 1)) : text;
    if (!IsNumber(digits)) return Bad(text, "a percentage");
    const double value = ReadDouble(digits);
    return IsInRange(value) ? Good(Plain(value / 100)) : OutOfRange(text);
}

SInputValue ReadHex(std::string_view text) {
    if (!AllOf(text, "0123456789abcdefABCDEF") || text.size() > 8) return Bad(text, "a hexadecimal number");
    return Good(std::string(text));
}

SInputValue ReadTime(std::string_view text) {
    auto moment = ReadMoment(text);
    if (!moment || moment->time.empty()) return Bad(text, "a time such as 09:30:00 or 2024-01-31T09:30:00Z");
    return {std::move(moment->time), {}, std::move(moment->date), false};
}

SInputValue ReadDate(std::string_view text) {
    auto moment = ReadMoment(text);
    if (!moment || moment->date.empty()) return Bad(text, "a date such as 1/31/2024, 2024-01-31 or 20240131");
    return Good(std::move(moment->date));
}

SInputValue ReadMonthDay(std::string_view text) {
    const std::string day = MonthDayOf(text);
    return day.empty() ? Bad(text, "a month and day such as 3/15") : Good(day);
}

SInputValue ReadSplit(std::string_view text) {
    const size_t blank = text.find(' ');
    const std::string_view ratio = text.substr(0, blank);
    const SInputValue date =
        blank == std::string_view::npos ? Bad(text, "a date") : ReadDate(TrimBlanks(text.substr(blank)));
    if (!IsNumber(ratio) || !IsInRange(ReadDouble(ratio)) || !date.error.empty())
        return Bad(text, "a ratio and a date such as 0.50 6/7/2021");
    return Good(fmt::format("{} {}", ratio, date.text));
}

SInputValue ReadContents(std::string_view text) {
    if (!AllOf(text, kContentsLetters) || text.size() > kContentsLetters.size())
        return Bad(text, fmt::format("made of the letters {}", kContentsLetters));
    return Good(std::string(text));
}

SInputValue ReadTick(std::string_view text) {
    if (text == "173" || text == "+") return Good("173");
    if (text == "175" || text == "-") return Good("175");
    if (text == "183" || text == ".") return Good("183");
    return Bad(text, "a tick: 173 or + for up, 175 or - for down, 183 or . for unchanged");
}

} // namespace

SInputValue ReadInputValue(EInputKind kind, std::string_view text) {
    text = TrimBlanks(text);
    constexpr std::array kReaders = {ReadSymbol,   ReadText,    ReadInteger,  ReadSize, ReadVolume,
                                     ReadNumber,   ReadPercent, ReadHex,      ReadTime, ReadDate,
                                     ReadMonthDay, ReadSplit,   ReadContents, ReadTick};
    static_assert(kReaders.size() == static_cast<size_t>(EInputKind::Tick) + 1);
    return kReaders[static_cast<size_t>(kind)](text);
}

namespace {

constexpr std::string_view kDigits = "0123456789";

struct SDay {
    int year = 0, month = 0, day = 0;
};

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
