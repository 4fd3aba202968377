// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace vx {

/// A number that tells one content from another, the same on every machine and in every run: 64-bit FNV-1a.
constexpr uint64_t ContentHash(std::string_view bytes) {
    uint64_t hash = 0xCBF29CE484222325u;
    for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
    return hash;
}

/// The hash for tables whose keys come from files or from the network. Its seed is another one in every run, so that
/// nobody can prepare keys that collide in a table and make looking up slow.
///
/// Shape   64 bits, all of them good; what is made of it, the order of a hash table for one, differs between runs
/// Thread  any
class CSeededHash {
public:
    /// With the seed of this run.
    CSeededHash() : CSeededHash(Seed()) {}
    /// seed: any number, the least significant bit is set.
    explicit CSeededHash(uint64_t seed) : m_seed(seed | 1) {}

    uint64_t operator()(uint64_t number) const { return Fold(number ^ m_seed, m_seed); }
    uint64_t operator()(std::string_view bytes) const {
        uint64_t hash = m_seed + bytes.size();
        for (; bytes.size() > sizeof(uint64_t); bytes.remove_prefix(sizeof(uint64_t)))
            hash = Fold(hash ^ Word(bytes), m_seed);
        return Fold(hash ^ Word(bytes), m_seed);
    }

    /// The product of two numbers, its high half over its low one.
    static uint64_t Fold(uint64_t a, uint64_t b) {
        __extension__ using Product = unsigned __int128;
        const Product product = Product{a} * b;
        return static_cast<uint64_t>(product) ^ static_cast<uint64_t>(product >> 64);
    }
    /// The first eight bytes as a number; missing ones count as zero.
    static uint64_t Word(std::string_view bytes) {
        const size_t size = bytes.size();
        if (size >= sizeof(uint64_t)) return Part<uint64_t>(bytes.data());
        // Parts that overlap have the same bytes where they do.
        if (size >= sizeof(uint32_t))
            return Part<uint32_t>(bytes.data()) | Part<uint32_t>(bytes.data() + size - 4) << (8 * (size - 4));
        if (size == 0) return 0;
        const size_t middle = size / 2;
        return Part<uint8_t>(bytes.data()) | Part<uint8_t>(bytes.data() + middle) << (8 * middle) |
               Part<uint8_t>(bytes.data() + size - 1) << (8 * (size - 1));
    }
    /// The seed of this run, odd.
    static uint64_t Seed();

private:
    template <typename TPart> static uint64_t Part(const char* bytes) {
        TPart part;
        std::memcpy(&part, bytes, sizeof part);
        return part;
    }

    uint64_t m_seed;
};

} // namespace vx
