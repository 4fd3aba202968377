#include "vxconnect/InputValue.h"

#include "base/DateTime.h"
#include "base/Number.h"
#include "base/Text.h"
#include "vxconnect/WireText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <vector>

#include <fmt/format.h>

namespace vx::sim {

namespace {

constexpr size_t kMostText = 255;

SInputValue Good(std::string text) { return {std::move(text), {}}; }
SInputValue Bad(std::string_view text, std::string_view wanted) {
    return {{}, fmt::format("\"{}\" is not {}", Shown(text), wanted)};
}

bool AllOf(std::string_view text, std::string_view allowed) {
    return !text.empty() && text.find_first_not_of(allowed) == std::string_view::npos;
}

// Numbers between separators, each of digits only and of at most four.
std::optional<std::vector<int>> Parts(std::string_view text, char separator) {
    std::vector<int> out;
    if (text.ends_with(separator)) return std::nullopt;
    for (const std::string_view piece : SplitCountingTail(text, separator)) {
        if (!AllOf(piece, "0123456789") || piece.size() > 4) return std::nullopt;
        out.push_back(ReadInt32(piece));
    }
    return out;
}

SInputValue ReadSymbol(std::string_view text) {
    if (!IsSymbolText(text)) return Bad(text, "a symbol: 1 to 255 printable characters without comma");
    if (text.find("--") != std::string_view::npos) return Bad(text, "a symbol: \"--\" stands before a region");
    return Good(std::string(text));
}

// The wire has no place for commas: a name does without.
SInputValue ReadText(std::string_view text) {
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
    if (std::any_of(text.begin(), text.end(), isControl)) return Bad(text, "a text without control characters");
    if (text.size() > kMostText) return Bad(text, "a text of at most 255 characters");
    std::string out(text);
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
    return {{}, fmt::format("\"{}\" is out of range: 0, or 1e-15 to 1e15 with either sign", Shown(text))};
}

// All digits that count, without an exponent.
std::string Plain(double value) {
    std::array<char, 64> out;
    const auto [end, status] = std::to_chars(out.data(), out.data() + out.size(), value, std::chars_format::fixed);
    return status == std::errc() ? std::string(out.data(), end) : "0";
}

// Spreadsheets and scripts write whole numbers as 100.0 and 1e2 too.
SInputValue ReadInteger(std::string_view text) {
    constexpr double kLeast = INT32_MIN, kMost = UINT32_MAX;
    const double value = IsNumber(text) ? ReadDouble(text) : NAN;
    if (!(value >= kLeast && value <= kMost) || value != std::floor(value))
        return Bad(text, "a whole number from -2147483648 to 4294967295");
    return Good(std::to_string(static_cast<int64_t>(value)));
}

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
    const auto parts = Parts(text.substr(0, text.find('.')), ':');
    const bool two = parts && parts->size() == 2, three = parts && parts->size() == 3;
    const int second = three ? (*parts)[2] : 0;
    if ((!two && !three) || (*parts)[0] > 23 || (*parts)[1] > 59 || second > 59)
        return Bad(text, "a time such as 09:30:00");
    return Good(fmt::format("{:02}:{:02}:{:02}", (*parts)[0], (*parts)[1], second));
}

SInputValue ReadDate(std::string_view text) {
    const auto slashes = Parts(text, '/'), dashes = Parts(text, '-');
    int year = 0, month = 0, day = 0;
    if (slashes && slashes->size() == 3) {
        month = (*slashes)[0], day = (*slashes)[1], year = (*slashes)[2];
    } else if (dashes && dashes->size() == 3) {
        year = (*dashes)[0], month = (*dashes)[1], day = (*dashes)[2];
    } else if (text.size() == 8 && AllOf(text, "0123456789")) {
        const int packed = ReadInt32(text);
        year = packed / 10000, month = packed / 100 % 100, day = packed % 100;
    }
    if (year < 1900 || year > 2199 || !IsCalendarDay(year, month, day))
        return Bad(text, "a date such as 1/31/2024, 2024-01-31 or 20240131");
    return Good(fmt::format("{}/{}/{}", month, day, year));
}

SInputValue ReadMonthDay(std::string_view text) {
    constexpr int kLeapYear = 2024;
    const auto parts = Parts(text, '/');
    if (!parts || parts->size() != 2 || !IsCalendarDay(kLeapYear, (*parts)[0], (*parts)[1]))
        return Bad(text, "a month and day such as 3/15");
    return Good(fmt::format("{}/{}", (*parts)[0], (*parts)[1]));
}

SInputValue ReadSplit(std::string_view text) {
    const size_t blank = text.find(' ');
    const std::string_view ratio = text.substr(0, blank);
    const SInputValue date =
        blank == std::string_view::npos ? SInputValue{{}, "none"} : ReadDate(TrimBlanks(text.substr(blank)));
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
    constexpr std::array kReaders = {ReadSymbol, ReadText, ReadInteger,  ReadNumber, ReadPercent,  ReadHex,
                                     ReadTime,   ReadDate, ReadMonthDay, ReadSplit,  ReadContents, ReadTick};
    static_assert(kReaders.size() == static_cast<size_t>(EInputKind::Tick) + 1);
    return kReaders[static_cast<size_t>(kind)](text);
}

} // namespace vx::sim
