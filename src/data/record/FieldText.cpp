// SPDX-License-Identifier: MIT
#include "data/record/FieldText.h"

#include "base/DateTime.h"
#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>
#include <array>
#include <limits>

namespace vx {

namespace {

constexpr auto kMonths =
    std::to_array<std::string_view>({"January", "February", "March", "April", "May", "June", "July", "August",
                                     "September", "October", "November", "December"});

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

size_t SkipSpaceAndSign(std::string_view text) {
    size_t i = 0;
    while (i < text.size() && IsSpace(text[i])) ++i;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
    return i;
}

// Up to three integers with "/" between them, as far as the text goes; the rest stay 0.
std::array<int32_t, 3> ReadSlashed(std::string_view text, size_t wanted) {
    constexpr int64_t kMost = std::numeric_limits<int32_t>::max();
    std::array<int32_t, 3> parts{};
    size_t at = 0;
    for (size_t i = 0; i < wanted; ++i) {
        at += SkipSpaceAndSign(text.substr(at));
        const bool minus = at > 0 && text[at - 1] == '-';
        const size_t first = at;
        int64_t value = 0;
        for (; at < text.size() && IsDigit(text[at]); ++at) value = std::min(value * 10 + (text[at] - '0'), kMost + 1);
        if (at == first) break;
        parts[i] = static_cast<int32_t>(minus ? -value : std::min(value, kMost));
        if (at == text.size() || text[at] != '/') break;
        ++at;
    }
    return parts;
}

SDate MakeDate(int32_t year, int32_t month, int32_t day, int32_t calendarYear) {
    if (day == 0) return {};
    if (!IsCalendarDay(calendarYear, month, day)) return {0, 0, 0, EDateState::Invalid};
    return {static_cast<int16_t>(year), static_cast<uint8_t>(month), static_cast<uint8_t>(day), EDateState::Valid};
}

} // namespace

SDate ReadDate(std::string_view text) {
    const auto [month, day, given] = ReadSlashed(text, 3);
    const int32_t year = given < 50 ? 2000 + given : given < 100 ? 1900 + given : given;
    return MakeDate(year, month, day, year);
}

SDate ReadMonthDay(std::string_view text) {
    constexpr int32_t kLeapYear = 2000; // 29 February is a day of some year.
    const auto parts = ReadSlashed(text, 2);
    return MakeDate(0, parts[0], parts[1], kLeapYear);
}

SSplit ReadSplit(std::string_view text) {
    const size_t blank = text.find(' ');
    const std::string_view date = blank == std::string_view::npos ? std::string_view{} : text.substr(blank + 1);
    return {ReadDouble(text.substr(0, blank)), ReadDate(date)};
}

SLetteredTime ReadTime(std::string_view text) {
    SLetteredTime out;
    const size_t letter = text.find_first_of("tTbao");
    if (letter != std::string_view::npos) out.time.letter = text[letter];
    for (size_t i = 0; i < text.size() && out.size < out.text.size(); ++i)
        if (i != letter) out.text[out.size++] = text[i];

    std::string_view rest = out.View();
    for (uint8_t* part : {&out.time.hour, &out.time.minute, &out.time.second}) {
        const size_t colon = rest.find(':');
        *part = static_cast<uint8_t>(std::min(ReadUInt32(rest.substr(0, colon)), 255u));
        if (colon == std::string_view::npos) break;
        rest.remove_prefix(colon + 1);
    }
    return out;
}

int32_t ReadMonth(std::string_view text) {
    const auto found = std::ranges::find_if(kMonths, [&](std::string_view m) { return CompareNoCase(m, text) == 0; });
    return found == kMonths.end() ? 0 : static_cast<int32_t>(found - kMonths.begin()) + 1;
}

std::string_view MonthName(int32_t month) {
    return month >= 1 && month <= 12 ? kMonths[static_cast<size_t>(month - 1)] : std::string_view{"Invalid"};
}

bool IsNotFound(std::string_view text) { return CompareNoCase(text, kNotFoundText) == 0; }

bool StartsWithNumber(std::string_view text) {
    const size_t i = SkipSpaceAndSign(text);
    if (i == text.size()) return false;
    return IsDigit(text[i]) || (text[i] == '.' && i + 1 < text.size() && IsDigit(text[i + 1]));
}

} // namespace vx
