// SPDX-License-Identifier: MIT
#pragma once

#include "data/merge/MergeKernel.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vx {

/// More digits than these may not fit a double exactly.
inline constexpr int kMostPlainDigits = 15;

/// A decimal number as it was written.
struct SPlainNumber {
    uint64_t digits; ///< Without the point, below 10^15.
    double divisor;  ///< 10 to the number of digits after the point, below 0 for a negative number; exact.
    bool whole;      ///< It had no digits after a point.
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

namespace vx::slowpath {

// What is rare in a stream or not worth a vector, shared by all kernels. The text is trimmed and not empty. Blocks are
// passed by value, so that a kernel can keep its own in registers.

/// Handles the slots of kind Rare.
void MergeRareField(std::string_view text, const SSlot& slot, SFieldSlots block);

/// Adds a tick to the trend. A code without a mark leaves the trend and takes the direction away.
void MergeTick(int64_t code, const SSlot& slot, SFieldSlots block);

/// A price that is no plain decimal number: "Not Found", or whatever the lenient reader makes of it. Says which.
EPriceWord ClassifyPrice(std::string_view text);

} // namespace vx::slowpath
