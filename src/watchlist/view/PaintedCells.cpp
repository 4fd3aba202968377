// SPDX-License-Identifier: MIT
#include "watchlist/view/PaintedCells.h"

#include <cstring>

namespace vx {

namespace {

constexpr uint64_t kMix = 0x9E3779B97F4A7C15ull; // 2^64 divided by the golden ratio, odd.

uint64_t Mixed(uint64_t hash, uint64_t word) {
    hash = (hash ^ word) * kMix;
    return hash ^ (hash >> 32);
}

} // namespace

uint32_t CPaintedCells::Fingerprint(const SCell& cell) {
    uint64_t hash = Mixed(cell.length, static_cast<uint64_t>(cell.role) | uint64_t{cell.font} << 8 |
                                           uint64_t{cell.tickTrend} << 16 | uint64_t{cell.marks} << 17 |
                                           static_cast<uint64_t>(cell.align) << 24 |
                                           uint64_t{static_cast<uint32_t>(cell.textColor)} << 32);
    hash = Mixed(hash, uint64_t{static_cast<uint32_t>(cell.background)} | static_cast<uint64_t>(cell.direction) << 32 |
                           static_cast<uint64_t>(cell.directionMark) << 40 | uint64_t{cell.borders} << 48);
    if (const SCellShape& shape = cell.shape; shape.kind != ECellShape::None) {
        hash = Mixed(hash, static_cast<uint64_t>(shape.kind) | static_cast<uint64_t>(shape.role) << 8 |
                               uint64_t{static_cast<uint32_t>(shape.color)} << 16);
        hash = Mixed(hash, uint64_t{shape.from} | uint64_t{shape.to} << 16 | uint64_t{shape.fineMark} << 32 |
                               uint64_t{shape.strongMark} << 48);
    }
    size_t i = 0;
    for (; i + 8 <= cell.length; i += 8) {
        uint64_t word;
        std::memcpy(&word, cell.text + i, 8);
        hash = Mixed(hash, word);
    }
    uint64_t tail = 0;
    std::memcpy(&tail, cell.text + i, cell.length - i);
    return static_cast<uint32_t>(Mixed(hash, tail));
}

} // namespace vx
