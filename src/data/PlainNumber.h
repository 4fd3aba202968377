#pragma once

#include <cstdint>

namespace vx {

/// More digits than these may not fit a double exactly.
inline constexpr int kMostPlainDigits = 15;

/// A decimal number as it was written: digits without the point, and how many of them stood behind it.
struct SPlainNumber {
    uint64_t digits;
    int places;
    bool negative;
};

} // namespace vx
