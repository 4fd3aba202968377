// SPDX-License-Identifier: MIT
#include "feed/socket/LineIndex.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace vx {

SLineEnds IndexLineEndsScalar(const char* block, size_t size, uint16_t* ends) {
    SLineEnds found{0, false};
    bool inRun = false;
    for (size_t i = 0; i < size; ++i) {
        const bool isEnd = block[i] == '\r' || block[i] == '\n';
        if (isEnd && !inRun) ends[found.count++] = static_cast<uint16_t>(i);
        if (block[i] == '\0') found.hasNul = true;
        inRun = isEnd;
    }
    return found;
}

#if defined(__x86_64__)

// Both vector ways look at 64 bytes at a time as a bit mask, one bit per byte.

namespace {

constexpr uint64_t FirstBits(size_t count) { return count < 64 ? (uint64_t{1} << count) - 1 : ~uint64_t{0}; }

uint64_t EqualMask64(const char* text, __m128i byte) {
    uint64_t mask = 0;
    for (int i = 0; i < 4; ++i) {
        const __m128i part = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + 16 * i));
        mask |= uint64_t{static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(part, byte)))} << (16 * i);
    }
    return mask;
}

} // namespace

SLineEnds IndexLineEndsSse2(const char* block, size_t size, uint16_t* ends) {
    const __m128i cr = _mm_set1_epi8('\r');
    const __m128i lf = _mm_set1_epi8('\n');
    uint64_t nuls = 0;
    uint64_t carry = 0;
    size_t count = 0;
    for (size_t i = 0; i < size; i += 64) {
        const uint64_t valid = FirstBits(size - i);
        const uint64_t isEnd = (EqualMask64(block + i, cr) | EqualMask64(block + i, lf)) & valid;
        nuls |= EqualMask64(block + i, _mm_setzero_si128()) & valid;
        for (uint64_t first = isEnd & ~(isEnd << 1 | carry); first != 0; first &= first - 1)
            ends[count++] = static_cast<uint16_t>(i + static_cast<size_t>(__builtin_ctzll(first)));
        carry = isEnd >> 63;
    }
    return {count, nuls != 0};
}

#define VX_AVX2 __attribute__((target("avx2,bmi,popcnt")))

namespace {

struct SBytes64 {
    __m256i low;
    __m256i high;
};

VX_AVX2 inline SBytes64 Load64(const char* text) {
    return {_mm256_loadu_si256(reinterpret_cast<const __m256i*>(text)),
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text + 32))};
}

VX_AVX2 inline uint64_t Mask64(__m256i equalLow, __m256i equalHigh) {
    return static_cast<uint32_t>(_mm256_movemask_epi8(equalLow)) |
           uint64_t{static_cast<uint32_t>(_mm256_movemask_epi8(equalHigh))} << 32;
}

// A table look-up compares with CR and LF at once: the low four bits of a byte pick the only byte with these bits that
// would be a match, or 1 for low bits 0 and 0 for the others, which differ from it. Bytes from 0x80 on pick 0.
VX_AVX2 inline uint64_t LineEnds64(const SBytes64& bytes) {
    const __m256i table = _mm256_setr_epi8(1, 0, 0, 0, 0, 0, 0, 0, 0, 0, '\n', 0, 0, '\r', 0, 0, //
                                           1, 0, 0, 0, 0, 0, 0, 0, 0, 0, '\n', 0, 0, '\r', 0, 0);
    return Mask64(_mm256_cmpeq_epi8(_mm256_shuffle_epi8(table, bytes.low), bytes.low),
                  _mm256_cmpeq_epi8(_mm256_shuffle_epi8(table, bytes.high), bytes.high));
}

VX_AVX2 inline uint64_t Nuls64(const SBytes64& bytes) {
    const __m256i zero = _mm256_setzero_si256();
    return Mask64(_mm256_cmpeq_epi8(bytes.low, zero), _mm256_cmpeq_epi8(bytes.high, zero));
}

// Lines are longer than 64 bytes as a rule, so as many hold one end or none: one offset is written whether or not it is
// there, without a branch that would be mispredicted at every line.
__attribute__((target("bmi,popcnt"))) inline size_t WriteOffsets(uint64_t bits, size_t base, uint16_t* ends,
                                                                 size_t count) {
    const size_t next = count + static_cast<size_t>(__builtin_popcountll(bits));
    ends[count++] = static_cast<uint16_t>(base + _tzcnt_u64(bits));
    for (bits &= bits - 1; bits != 0; bits &= bits - 1) ends[count++] = static_cast<uint16_t>(base + _tzcnt_u64(bits));
    return next;
}

} // namespace

VX_AVX2 SLineEnds IndexLineEndsAvx2(const char* block, size_t size, uint16_t* ends) {
    // The smallest byte seen at each position shows at the end whether there was a NUL.
    __m256i smallest = _mm256_set1_epi8(-1);
    uint64_t carry = 0;
    size_t count = 0;
    size_t i = 0;
    for (; i + 64 <= size; i += 64) {
        const SBytes64 bytes = Load64(block + i);
        smallest = _mm256_min_epu8(smallest, _mm256_min_epu8(bytes.low, bytes.high));
        const uint64_t isEnd = LineEnds64(bytes);
        count = WriteOffsets(isEnd & ~(isEnd << 1 | carry), i, ends, count);
        carry = isEnd >> 63;
    }
    uint64_t nuls = Nuls64({smallest, smallest});
    if (i < size) {
        const SBytes64 bytes = Load64(block + i);
        const uint64_t isEnd = LineEnds64(bytes) & FirstBits(size - i);
        nuls |= Nuls64(bytes) & FirstBits(size - i);
        count = WriteOffsets(isEnd & ~(isEnd << 1 | carry), i, ends, count);
    }
    return {count, nuls != 0};
}

#undef VX_AVX2

bool HasAvx2() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") && __builtin_cpu_supports("popcnt");
}

// Registers of 64 bytes were no faster.
const LineIndexer IndexLineEnds = HasAvx2() ? IndexLineEndsAvx2 : IndexLineEndsSse2;

#else

const LineIndexer IndexLineEnds = IndexLineEndsScalar;

#endif

} // namespace vx
