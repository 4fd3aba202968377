// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace vx {

// Finds where the lines of a block of received bytes end, for all of them at once. The fastest way that the processor
// knows is chosen at start-up; the others are here for the tests and for processors without it.

inline constexpr size_t kLineBlock = 16384; ///< The most bytes of one call.
inline constexpr size_t kLineSlack = 64;    ///< Bytes that must be readable, with any content, after the block.

struct SLineEnds {
    size_t count;
    bool hasNul; ///< Whether the block holds a NUL.
};

/// Writes the offset of every CR or LF that does not follow another CR or LF of the block.
///
/// Shape   1 <= size <= kLineBlock; ends has room for kLineBlock / 2 + 2 offsets, of which all may be overwritten
using LineIndexer = SLineEnds (*)(const char* block, size_t size, uint16_t* ends);

extern const LineIndexer IndexLineEnds;

SLineEnds IndexLineEndsScalar(const char* block, size_t size, uint16_t* ends);
#if defined(__x86_64__)
SLineEnds IndexLineEndsSse2(const char* block, size_t size, uint16_t* ends);
/// Only where HasAvx2.
SLineEnds IndexLineEndsAvx2(const char* block, size_t size, uint16_t* ends);
bool HasAvx2();
#endif

} // namespace vx
