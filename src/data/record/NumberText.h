// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace vx {

// Numbers into text, free of any locale, without allocation. The bytes are those of the C library's printf in the C
// locale. Each returns the bytes written, never more than the buffer holds: what does not fit is cut at the end.

/// A number with a fixed number of decimals, as "%.*f" or, with plus, "%+.*f" writes it.
///
/// Units   decimals 0..15, values outside are brought inside
size_t WriteFixed(double value, int decimals, bool plus, std::span<char> out);

/// The number that the text of WriteFixed reads as; nothing for one that only the text can tell: no number, infinite or
/// of more than 15 digits.
std::optional<double> RoundedAsWritten(double value, int decimals);

/// As "%d".
size_t WriteInteger(int32_t value, std::span<char> out);
/// As "%u".
size_t WriteUnsigned(uint32_t value, std::span<char> out);

} // namespace vx
