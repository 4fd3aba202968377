// SPDX-License-Identifier: MIT
#include "data/merge/MergeKernel.h"

#include "base/Number.h"
#include "data/merge/MergeSlowPath.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <type_traits>

namespace vx {

namespace {

#define ZW_TARGET

static_assert(std::endian::native == std::endian::little, "ReadBlock takes the lowest byte of a word as the first");

constexpr uint64_t kEachByte = 0x0101010101010101;

// 0x80 in each byte of the word that is the character.
uint64_t Hits(uint64_t word, char c) {
    constexpr uint64_t kLowBits = 0x7F * kEachByte;
    const uint64_t x = word ^ kEachByte * static_cast<unsigned char>(c);
    return ~(((x & kLowBits) + kLowBits) | x | kLowBits);
}

SBlock ReadBlock(const char* bytes) {
    constexpr uint64_t kGather = 0x0102040810204080; ///< Moves the low bit of byte i to bit 56 + i.
    SBlock block{0, false};
    for (int i = 0; i < 8; ++i) {
        uint64_t word;
        std::memcpy(&word, bytes + i * 8, 8);
        block.commas |= ((Hits(word, ',') >> 7) * kGather >> 56) << (i * 8);
        block.hasBlanks |= Hits(word, ' ') != 0;
    }
    return block;
}

bool ReadPlain(std::string_view /*line*/, const char* first, const char* last, SPlainNumber& out) {
    out.negative = *first == '-';
    if (out.negative || *first == '+') ++first;
    if (last - first > kMostPlainDigits + 1) return false;
    uint64_t digits = 0;
    const char* point = nullptr;
    for (const char* c = first; c != last; ++c) {
        const auto digit = static_cast<unsigned>(static_cast<unsigned char>(*c)) - '0';
        if (digit <= 9) {
            digits = digits * 10 + digit;
        } else {
            if (*c != '.' || point) return false;
            point = c;
        }
    }
    const auto count = last - first - (point ? 1 : 0);
    if (count == 0 || count > kMostPlainDigits) return false;
    const auto places = point ? last - point - 1 : 0;
    out.digits = digits;
    const double divisor = kPowersOfTen[static_cast<size_t>(places)];
    out.divisor = out.negative ? -divisor : divisor;
    out.whole = places == 0;
    return true;
}

#include "data/merge/LineCut.inl"
#include "data/merge/MergeKernel.inl"

} // namespace

const SMergeKernel& PortableKernel() {
    static constexpr SMergeKernel kernel{"portable", Cut, Merge};
    return kernel;
}

} // namespace vx
