#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace vx {

/// More digits than these may not fit a double exactly.
inline constexpr int kMostPlainDigits = 15;

/// A decimal number as it was written.
struct SPlainNumber {
    uint64_t digits; ///< Without the point, below 10^15.
    double divisor;  ///< 10 to the number of digits behind the point; exact.
    bool whole;      ///< Nothing stood behind a point.
    bool negative;
};

/// What a kernel sees in 64 bytes of a line.
struct SBlock {
    uint64_t commas; ///< One bit for each byte, the first byte lowest.
    bool hasBlanks;  ///< At least one is a blank.
};

/// 10^0 to 10^15.
inline constexpr std::array<double, kMostPlainDigits + 1> kPowersOfTen = [] {
    std::array<double, kMostPlainDigits + 1> powers{1};
    for (size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();

} // namespace vx
