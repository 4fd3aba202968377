// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vx::bench {

/// Writes the position of every comma and line feed, and returns how many there are: with vectors where the machine
/// has them. No reader of such lines can do less. `out` has room for one position a byte and a block of 64 more.
size_t ScanSeparators(std::string_view bytes, uint32_t* out);

} // namespace vx::bench
