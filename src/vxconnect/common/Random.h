// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstdint>
#include <string_view>

namespace vx::sim {

/// A small fast generator of random bits, equal on every machine for an equal seed. Two draws in one expression would
/// come in the order that the compiler likes: give each its own statement.
///
/// Source  SplitMix64 (Steele, Lea, Flood: Fast splittable pseudorandom number generators, 2014)
class CRandom {
public:
    explicit CRandom(uint64_t seed) : m_state(seed) {}

    uint64_t Bits() {
        m_state += 0x9E3779B97F4A7C15u;
        uint64_t z = m_state;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }
    /// An integer from 0 to bound - 1; the bound is above 0.
    uint32_t Below(uint32_t bound) { return static_cast<uint32_t>(((Bits() >> 32) * bound) >> 32); }
    /// A number from 0 up to, but not including, 1.
    double Unit() { return static_cast<double>(Bits() >> 11) * 0x1.0p-53; }
    double Between(double low, double high) { return low + (high - low) * Unit(); }
    /// Close to a normal number with mean 0 and deviation 1: the count of 64 fair coins, smoothed.
    double Normal() {
        const int heads = std::popcount(Bits()) - 32;
        return (heads + Unit() - 0.5) * 0.2493;
    }

private:
    uint64_t m_state;
};

/// A seed for one symbol out of the market's seed.
///
/// Source  FNV-1a over the symbol, mixed with the seed by one SplitMix64 step
inline uint64_t SymbolSeed(uint64_t seed, std::string_view symbol) {
    uint64_t hash = 0xCBF29CE484222325u;
    for (const char c : symbol) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
    return CRandom(seed ^ hash).Bits();
}

} // namespace vx::sim
