// SPDX-License-Identifier: MIT
#include "data/record/NumberText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>

namespace vx {

namespace {

__extension__ using Wide = unsigned __int128;

constexpr int kMostFixedDecimals = 15;
constexpr size_t kMostDigits = 20; ///< Of a 64-bit number.
constexpr std::array<uint64_t, kMostFixedDecimals + 1> kPowersOfTen = [] {
    std::array<uint64_t, kMostFixedDecimals + 1> powers{1};
    for (size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();

// "00" to "99", one after the other.
constexpr std::array<char, 200> kPairs = [] {
    std::array<char, 200> pairs{};
    for (size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

// Writes the digits so that they end before `end`, and returns where they begin; 0 gives "0".
char* DigitsBefore(char* end, uint64_t value) {
    while (value >= 100) {
        end -= 2;
        std::memcpy(end, &kPairs[value % 100 * 2], 2);
        value /= 100;
    }
    if (value >= 10) {
        end -= 2;
        std::memcpy(end, &kPairs[value * 2], 2);
    } else {
        *--end = static_cast<char>('0' + value);
    }
    return end;
}

size_t CopyOut(const char* first, const char* last, std::span<char> out) {
    const size_t size = std::min(out.size(), static_cast<size_t>(last - first));
    std::copy_n(first, size, out.data());
    return size;
}

// |value| * 10^decimals rounded to a whole number, ties to even, as exact arithmetic has it. False when the value is
// too large for that, or no number.
bool Scale(double value, int decimals, uint64_t& scaled) {
    constexpr int kFractionBits = 52;
    constexpr int kExponentBias = 1075; // Of a number seen as a whole 53-bit mantissa times a power of two.
    const uint64_t bits = std::bit_cast<uint64_t>(value) & ~(uint64_t{1} << 63);
    const int biased = static_cast<int>(bits >> kFractionBits);
    const int shift = kExponentBias - std::max(biased, 1);
    if (shift <= 0) return false; // From 2^52 on there are no decimals to round.
    const uint64_t fraction = bits & ((uint64_t{1} << kFractionBits) - 1);
    const uint64_t mantissa = fraction | (biased != 0 ? uint64_t{1} << kFractionBits : 0);
    if (shift > 110) {
        scaled = 0; // Below 10^-17.
        return true;
    }
    const Wide exact = Wide{mantissa} * kPowersOfTen[static_cast<size_t>(decimals)];
    const Wide whole = exact >> shift;
    if ((whole >> 63) != 0) return false;
    const Wide rest = exact - (whole << shift);
    const Wide half = Wide{1} << (shift - 1);
    scaled = static_cast<uint64_t>(whole);
    if (rest > half || (rest == half && (scaled & 1) != 0)) ++scaled;
    return true;
}

// Large, infinite and missing numbers.
size_t WriteRareFixed(double value, int decimals, bool plus, std::span<char> out) {
    std::array<char, 400> text; // DBL_MAX has 309 digits before the point.
    char* first = text.data();
    if (plus && !std::signbit(value)) *first++ = '+';
    const auto [end, error] =
        std::to_chars(first, text.data() + text.size(), value, std::chars_format::fixed, decimals);
    return CopyOut(text.data(), error == std::errc{} ? end : first, out);
}

} // namespace

size_t WriteFixed(double value, int decimals, bool plus, std::span<char> out) {
    decimals = std::clamp(decimals, 0, kMostFixedDecimals);
    uint64_t scaled = 0;
    if (!Scale(value, decimals, scaled)) return WriteRareFixed(value, decimals, plus, out);
    std::array<char, kMostDigits + kMostFixedDecimals + 4> text;
    char* const end = text.data() + text.size();
    char* first;
    if (decimals > 0) {
        const uint64_t power = kPowersOfTen[static_cast<size_t>(decimals)];
        char* const point = end - decimals - 1;
        first = DigitsBefore(end, scaled % power);
        std::fill(point + 1, first, '0');
        *point = '.';
        first = DigitsBefore(point, scaled / power);
    } else {
        first = DigitsBefore(end, scaled);
    }
    if (std::signbit(value))
        *--first = '-';
    else if (plus)
        *--first = '+';
    return CopyOut(first, end, out);
}

std::optional<double> RoundedAsWritten(double value, int decimals) {
    decimals = std::clamp(decimals, 0, kMostFixedDecimals);
    uint64_t scaled = 0;
    if (!Scale(value, decimals, scaled) || scaled >= kPowersOfTen.back()) return std::nullopt;
    // Both are exact, so the quotient is the double nearest to the decimal number.
    const double size = static_cast<double>(scaled) / static_cast<double>(kPowersOfTen[static_cast<size_t>(decimals)]);
    return std::signbit(value) ? -size : size;
}

size_t WriteInteger(int32_t value, std::span<char> out) {
    std::array<char, kMostDigits> text;
    char* const end = text.data() + text.size();
    const int64_t wide = value;
    char* first = DigitsBefore(end, static_cast<uint64_t>(wide < 0 ? -wide : wide));
    if (wide < 0) *--first = '-';
    return CopyOut(first, end, out);
}

size_t WriteUnsigned(uint32_t value, std::span<char> out) {
    std::array<char, kMostDigits> text;
    char* const end = text.data() + text.size();
    return CopyOut(DigitsBefore(end, value), end, out);
}

} // namespace vx
