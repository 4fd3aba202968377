// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vx::test {

/// A small random source that gives the same numbers everywhere for one seed.
class CRandom {
public:
    explicit CRandom(uint64_t seed) : m_state(seed) {}

    uint64_t Next() {
        m_state += 0x9E3779B97F4A7C15;
        uint64_t x = m_state;
        x = (x ^ x >> 30) * 0xBF58476D1CE4E5B9;
        x = (x ^ x >> 27) * 0x94D049BB133111EB;
        return x ^ x >> 31;
    }
    /// 0..count-1
    uint32_t Below(uint32_t count) { return static_cast<uint32_t>((Next() >> 32) * count >> 32); }
    /// True with a chance of one in `count`.
    bool OneIn(uint32_t count) { return Below(count) == 0; }
    /// 0..1
    double Unit() { return static_cast<double>(Next() >> 11) * 0x1p-53; }

private:
    uint64_t m_state;
};

} // namespace vx::test
