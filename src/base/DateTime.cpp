// SPDX-License-Identifier: MIT
#include "base/DateTime.h"

#include "base/Text.h"

#include <array>
#include <optional>

namespace vx {

namespace {

constexpr std::array<int, 12> kMonthDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

// Days before 1 March of the given year, counted from 1 March of year 0: the leap day comes last.
int64_t DaysBeforeMarch(int64_t year) { return 365 * year + year / 4 - year / 100 + year / 400; }

struct SNumbers {
    std::array<int, 3> values{};
    int count = 0;
    std::array<size_t, 3> digits{};
};

// One to three unsigned numbers with one separator between them and nothing else.
std::optional<SNumbers> ReadNumbers(std::string_view text, char separator) {
    SNumbers out;
    for (size_t i = 0; i < text.size();) {
        size_t end = i;
        int value = 0;
        while (end < text.size() && text[end] >= '0' && text[end] <= '9' && end - i < 8)
            value = value * 10 + (text[end++] - '0');
        if (end == i || out.count == 3) return std::nullopt;
        out.digits[static_cast<size_t>(out.count)] = end - i;
        out.values[static_cast<size_t>(out.count++)] = value;
        if (end == text.size()) return out;
        if (text[end] != separator || end + 1 == text.size()) return std::nullopt;
        i = end + 1;
    }
    return std::nullopt;
}

bool ReadDay(std::string_view text, SLocalTime& out) {
    if (const auto packed = ReadNumbers(text, ' '); packed && packed->count == 1 && packed->digits[0] == 8) {
        const int value = packed->values[0];
        out.year = value / 10000, out.month = value / 100 % 100, out.day = value % 100;
    } else if (const auto us = ReadNumbers(text, '/'); us && us->count == 3) {
        out.month = us->values[0], out.day = us->values[1], out.year = us->values[2];
        if (us->digits[2] <= 2) out.year += out.year < 30 ? 2000 : 1900;
    } else if (const auto iso = ReadNumbers(text, '-'); iso && iso->count == 3) {
        out.year = iso->values[0], out.month = iso->values[1], out.day = iso->values[2];
    } else {
        return false;
    }
    return IsCalendarDay(out.year, out.month, out.day);
}

bool ReadTimeOfDay(std::string_view text, std::string_view half, SLocalTime& out) {
    const auto numbers = ReadNumbers(text, ':');
    if (!numbers || numbers->count < 2) return false;
    out.hour = numbers->values[0], out.minute = numbers->values[1], out.second = numbers->values[2];
    if (!half.empty()) {
        const bool pm = CompareNoCase(half, "PM") == 0;
        if ((!pm && CompareNoCase(half, "AM") != 0) || out.hour < 1 || out.hour > 12) return false;
        out.hour = out.hour % 12 + (pm ? 12 : 0);
    }
    return out.hour < 24 && out.minute < 60 && out.second < 60;
}

} // namespace

bool IsCalendarDay(int year, int month, int day) {
    if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1) return false;
    return day <= (month == 2 && IsLeapYear(year) ? 29 : kMonthDays[static_cast<size_t>(month - 1)]);
}

int DaysSince1899(int year, int month, int day) {
    constexpr int kDaysTo1899 = 693899; // Days from 1 March of year 0 to 30 December 1899.
    const int shifted = (month + 9) % 12;
    const int64_t marchYear = year - (month <= 2 ? 1 : 0);
    return static_cast<int>(DaysBeforeMarch(marchYear) + (shifted * 306 + 5) / 10 + day - 1 - kDaysTo1899);
}

SDateTime DateTimeFromLocal(const SLocalTime& time) {
    if (!IsCalendarDay(time.year, time.month, time.day) || time.hour < 0 || time.hour > 23 || time.minute < 0 ||
        time.minute > 59 || time.second < 0 || time.second > 60)
        return {};
    const int second = time.second == 60 ? 59 : time.second;
    const double fraction = (time.hour * 3600 + time.minute * 60 + second) / 86400.0;
    return {DaysSince1899(time.year, time.month, time.day) + fraction, true};
}

SDateTime ReadDateTime(std::string_view text) {
    std::array<std::string_view, 3> words{};
    size_t count = 0;
    for (const std::string_view word : SplitCountingTail(TrimBlanks(text), ' ')) {
        if (word.empty()) continue;
        if (count == words.size()) return {};
        words[count++] = word;
    }
    if (count == 0) return {};
    SLocalTime time;
    time.year = 1899, time.month = 12, time.day = 30;
    const bool dated = ReadDay(words[0], time);
    if (dated && count == 1) return DateTimeFromLocal(time);
    const size_t clock = dated ? 1 : 0;
    if (!dated && count == 3) return {};
    if (!ReadTimeOfDay(words[clock], clock + 1 < count ? words[clock + 1] : std::string_view{}, time)) return {};
    return DateTimeFromLocal(time);
}

} // namespace vx
