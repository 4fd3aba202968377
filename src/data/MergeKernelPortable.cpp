#include "data/MergeKernel.h"

#include "base/Number.h"
#include "data/MergeSlowPath.h"
#include "data/PlainNumber.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

namespace vx {

namespace {

#define ZW_TARGET

static_assert(std::endian::native == std::endian::little, "Commas64 takes the lowest byte of a word as the first");

uint64_t Commas64(const char* bytes) {
    constexpr uint64_t kEachByte = 0x0101010101010101;
    constexpr uint64_t kLowBits = 0x7F * kEachByte;
    constexpr uint64_t kGather = 0x0102040810204080; ///< Moves the low bit of byte i to bit 56 + i.
    uint64_t mask = 0;
    for (int word = 0; word < 8; ++word) {
        uint64_t x;
        std::memcpy(&x, bytes + word * 8, 8);
        x ^= kEachByte * static_cast<uint64_t>(',');
        const uint64_t hits = ~(((x & kLowBits) + kLowBits) | x | kLowBits); // 0x80 in each byte that was a comma
        mask |= ((hits >> 7) * kGather >> 56) << (word * 8);
    }
    return mask;
}

bool ReadPlain(const char* /*line*/, const char* first, const char* last, SPlainNumber& out) {
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
    out.divisor = kPowersOfTen[static_cast<size_t>(places)];
    out.whole = places == 0;
    return true;
}

#include "data/MergeKernel.inl"

} // namespace

const SMergeKernel& PortableKernel() {
    static constexpr SMergeKernel kernel{"portable", Cut, Merge};
    return kernel;
}

} // namespace vx
