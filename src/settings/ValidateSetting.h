// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vx {

/// Takes the reports of the validation step, each a finished text, and writes them to the program's log. The main
/// frame makes one when it starts; reports from before or after its life are dropped.
class CConfigLogger {
public:
    virtual ~CConfigLogger() = default;

    virtual void Report(std::string_view text);
};

/// The text that the store returns for a value it cannot read.
inline constexpr std::string_view kConfigError = "Config Error";

/// Checks one stored value against its setting's kind: good values pass as they are, values that older versions wrote
/// are repaired, unusable ones give the default. It is the one place where a stored value can be found bad.
///
/// Shape   kind: a number of ESettingKind; above 6, and for the empty text and kConfigError, nothing is checked
/// Errors  none: every input gives a value. Each repair or reset is one report, dropped without a logger; nothing is
///         written back
/// Source  docs/settings.md, "Values that are not accepted"
std::string ValidateSetting(std::string_view name, std::string_view value, int kind, std::string_view defaultValue,
                            CConfigLogger* logger);

/// Reads a text that must be one number as a whole: decimal, with "0x" hexadecimal, with "0" octal. White space before
/// it and a sign are allowed, and a negative number wraps around at 32 bits, as in C.
///
/// Errors  nothing for any other text; what does not fit 32 bits gives the highest number
std::optional<uint32_t> ReadWholeUnsigned(std::string_view text);

} // namespace vx
