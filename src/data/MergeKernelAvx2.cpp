#include "data/MergeKernel.h"

#if defined(__x86_64__)

#include "base/Number.h"
#include "data/KernelTypes.h"
#include "data/MergeSlowPath.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <immintrin.h>
#include <limits>
#include <type_traits>

namespace vx {

namespace {

#define ZW_TARGET __attribute__((target("avx2,bmi,bmi2,lzcnt,popcnt")))

ZW_TARGET inline SBlock ReadBlock(const char* bytes) {
    const __m256i comma = _mm256_set1_epi8(',');
    const __m256i blank = _mm256_set1_epi8(' ');
    const __m256i low = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes));
    const __m256i high = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes + 32));
    const auto lowMask = static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(low, comma)));
    const auto highMask = static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(high, comma)));
    const __m256i blanks = _mm256_or_si256(_mm256_cmpeq_epi8(low, blank), _mm256_cmpeq_epi8(high, blank));
    return {uint64_t{highMask} << 32 | lowMask, _mm256_testz_si256(blanks, blanks) == 0};
}

// By the place of the point among sixteen bytes; 16 stands for none.
constexpr unsigned kNoPoint = 16;
struct SPointTables {
    alignas(16) int8_t closeGap[17][16]; ///< Moves the bytes before the point one up, over it; byte 0 becomes 0.
    double divisor[17];
};

constexpr SPointTables kPoint = [] {
    SPointTables table{};
    for (int p = 0; p <= 16; ++p) {
        for (int i = 0; i < 16; ++i)
            table.closeGap[p][i] = static_cast<int8_t>(i > p || p == kNoPoint ? i : i == 0 ? -128 : i - 1);
        table.divisor[p] = p == kNoPoint ? 1 : kPowersOfTen[static_cast<size_t>(15 - p)];
    }
    return table;
}();

// Sixteen bytes from kKeepLast + n: 0xFF in the last n of them.
alignas(32) constexpr uint8_t kKeepLast[32] = {0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,
                                               0,    0,    0,    0,    0,    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                                               0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

// Sixteen digits, most significant first, as a number.
ZW_TARGET inline uint64_t SumDigits(__m128i digits) {
    const __m128i tens = _mm_setr_epi8(10, 1, 10, 1, 10, 1, 10, 1, 10, 1, 10, 1, 10, 1, 10, 1);
    const __m128i hundreds = _mm_setr_epi16(100, 1, 100, 1, 100, 1, 100, 1);
    const __m128i tenThousands = _mm_setr_epi16(10000, 1, 10000, 1, 10000, 1, 10000, 1);
    const __m128i pairs = _mm_maddubs_epi16(digits, tens);
    const __m128i fours = _mm_madd_epi16(pairs, hundreds);
    const __m128i eights = _mm_madd_epi16(_mm_packus_epi32(fours, fours), tenThousands);
    const auto halves = static_cast<uint64_t>(_mm_cvtsi128_si64(eights));
    return (halves & 0xFFFFFFFF) * 100000000 + (halves >> 32);
}

// The bytes of a field of at most 16, at the end of a register; what stands before them is whatever the line has there.
ZW_TARGET inline __m128i LoadEndingAt(const char* line, const char* first, const char* last) {
    if (last - line >= 16) return _mm_loadu_si128(reinterpret_cast<const __m128i*>(last - 16));
    alignas(16) char copy[16] = {};
    std::copy(first, last, copy + 16 - (last - first));
    return _mm_load_si128(reinterpret_cast<const __m128i*>(copy));
}

ZW_TARGET inline __m128i KeepLast(unsigned count) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(kKeepLast + count));
}

// Without a branch but for the texts that are no plain number: signs, lengths and points follow no pattern.
ZW_TARGET inline bool ReadPlain(const char* line, const char* first, const char* last, SPlainNumber& out) {
    constexpr char kPointLessZero = '.' - '0';
    const bool minus = *first == '-';
    first += static_cast<int>(minus);
    const auto size = static_cast<unsigned>(last - first);
    if (size - 1 >= kMostPlainDigits) return false; // None, or too many.
    const __m128i shown = _mm_sub_epi8(LoadEndingAt(line, first, last), _mm_set1_epi8('0'));
    const __m128i kept = _mm_and_si128(shown, KeepLast(size));
    const auto points = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(kept, _mm_set1_epi8(kPointLessZero))));
    const auto point = static_cast<unsigned>(std::countr_zero(points | 1u << kNoPoint));
    // With two points, one of them stays in the text and is no digit.
    const __m128i row = _mm_load_si128(reinterpret_cast<const __m128i*>(kPoint.closeGap[point]));
    const __m128i digits = _mm_shuffle_epi8(kept, row);
    const __m128i nine = _mm_set1_epi8(9);
    const int areDigits = _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_max_epu8(digits, nine), nine));
    if (areDigits != 0xFFFF || size + point == kNoPoint) return false; // The second: the point comes first.
    out.digits = SumDigits(digits);
    out.divisor = kPoint.divisor[point];
    out.whole = point >= 15;
    out.negative = minus;
    return true;
}

#include "data/MergeKernel.inl"

} // namespace

const SMergeKernel* Avx2Kernel() {
    static constexpr SMergeKernel kernel{"avx2", Cut, Merge};
    static const bool usable = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
                               __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt");
    return usable ? &kernel : nullptr;
}

} // namespace vx

#else

namespace vx {

const SMergeKernel* Avx2Kernel() { return nullptr; }

} // namespace vx

#endif
