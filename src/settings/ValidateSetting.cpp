// SPDX-License-Identifier: MIT
#include "settings/ValidateSetting.h"

#include "base/Log.h"
#include "base/Number.h"
#include "settings/SettingsTable.h"

#include <fmt/format.h>

#include <charconv>
#include <limits>

namespace vx {

void CConfigLogger::Report(std::string_view text) { LogInformation(text); }

namespace {

constexpr uint32_t kColorEnd = 0x1000000;

constexpr char kRepaired[] =
    "Settings: The value \"{}\" for \"{}\" was stored in an older format and has been updated automatically.";
constexpr char kNotANumber[] =
    "Settings: The value \"{}\" for \"{}\" is not a valid number and has been reset to the default.";
constexpr char kNotValid[] = "Settings: The value \"{}\" for \"{}\" is not valid and has been reset to the default.";
constexpr char kNotAColor[] =
    "Settings: The color value \"{}\" for \"{}\" is not valid and has been reset to the default.";

bool IsInteger(std::string_view text) {
    if (!text.empty() && text.front() == '-') text.remove_prefix(1);
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool IsColor(std::string_view text) {
    const std::optional<uint32_t> color = ReadWholeUnsigned(text);
    return color && *color < kColorEnd;
}

/// What the step does with a value: takes it (no report), or returns another one with a report.
struct SVerdict {
    fmt::string_view report;
    std::string_view result;
};

SVerdict Judge(std::string_view value, ESettingKind kind, std::string_view defaultValue) {
    switch (kind) {
    case ESettingKind::Integer:
        if (value == "true") return {kRepaired, "1"};
        if (value == "false") return {kRepaired, "0"};
        if (!IsInteger(value)) return {kNotANumber, defaultValue};
        break;
    case ESettingKind::Boolean:
        if (value == "1") return {kRepaired, "true"};
        if (value == "0") return {kRepaired, "false"};
        if (value != "true" && value != "false") return {kNotValid, defaultValue};
        break;
    case ESettingKind::Number:
        if (!ReadWholeDouble(value)) return {kNotANumber, defaultValue};
        break;
    case ESettingKind::Color:
        if (!IsColor(value)) return {kNotAColor, defaultValue};
        break;
    case ESettingKind::Text:
    case ESettingKind::FilePath:
    case ESettingKind::List:
        break;
    }
    return {"", value};
}

} // namespace

std::string ValidateSetting(std::string_view name, std::string_view value, int kind, std::string_view defaultValue,
                            CConfigLogger* logger) {
    if (value.empty() || value == kConfigError || kind < 0 || kind > static_cast<int>(ESettingKind::List))
        return std::string(value);
    const SVerdict verdict = Judge(value, static_cast<ESettingKind>(kind), defaultValue);
    if (verdict.report.size() > 0 && logger) logger->Report(fmt::format(fmt::runtime(verdict.report), value, name));
    return std::string(verdict.result);
}

std::optional<uint32_t> ReadWholeUnsigned(std::string_view text) {
    const size_t start = text.find_first_not_of(" \t\n\v\f\r");
    if (start == std::string_view::npos) return std::nullopt;
    text.remove_prefix(start);
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+') text.remove_prefix(1);
    int base = 10;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        base = 16;
        text.remove_prefix(2);
    } else if (text.size() > 1 && text[0] == '0') {
        base = 8;
    }
    uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (error == std::errc::invalid_argument || end != text.data() + text.size()) return std::nullopt;
    if (error == std::errc::result_out_of_range) return std::numeric_limits<uint32_t>::max();
    return negative ? 0u - value : value;
}

} // namespace vx
