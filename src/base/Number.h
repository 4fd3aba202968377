// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vx {

// Numbers from text, free of any locale. The lenient readers never fail: leading white space is skipped, an optional
// sign and as many digits as there are are read, the rest is ignored, and text without a number gives 0.

/// Reads a decimal integer leniently; values outside 32 bits saturate.
int32_t ReadInt32(std::string_view text);

/// Reads a decimal integer leniently; a negative number gives 0, values above 32 bits saturate.
uint32_t ReadUInt32(std::string_view text);

/// Reads a hexadecimal integer leniently, with or without "0x"; values above 32 bits saturate.
uint32_t ReadHex32(std::string_view text);

/// Reads a decimal number leniently ("1e5", "inf" and "nan" are understood as the C library does in the C locale);
/// overflow gives an infinity with the sign of the text, underflow 0.
double ReadDouble(std::string_view text);

/// Reads a decimal number that must be the whole text; nothing else than a number gives nothing.
/// Leading white space is allowed, trailing is not, as strtod with an end check has it.
std::optional<double> ReadWholeDouble(std::string_view text);

/// Appends a whole number as "%d" writes it.
void AppendInteger(std::string& out, int64_t value);

} // namespace vx
