#include "vxconnect/data/InputValue.h"

#include "base/Number.h"
#include "base/Text.h"
#include "vxconnect/common/WireText.h"
#include "vxconnect/data/InputMoment.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include <fmt/format.h>

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

} // namespace vx::sim
