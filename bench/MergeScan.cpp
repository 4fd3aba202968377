// SPDX-License-Identifier: MIT
#include "MergeScan.h"

#include <bit>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace vx::bench {

namespace {

size_t ScanBytes(std::string_view bytes, size_t from, uint32_t* out) {
    size_t count = 0;
    for (size_t i = from; i < bytes.size(); ++i)
        if (bytes[i] == ',' || bytes[i] == '\n') out[count++] = static_cast<uint32_t>(i);
    return count;
}

#if defined(__x86_64__)
__attribute__((target("avx2,bmi,popcnt"))) size_t ScanBlocks(std::string_view bytes, uint32_t* out) {
    const __m256i comma = _mm256_set1_epi8(',');
    const __m256i lf = _mm256_set1_epi8('\n');
    const auto mask = [](__m256i hits) __attribute__((target("avx2"))) {
        return uint64_t{static_cast<uint32_t>(_mm256_movemask_epi8(hits))};
    };
    size_t count = 0;
    size_t from = 0;
    for (; from + 64 <= bytes.size(); from += 64) {
        const __m256i low = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes.data() + from));
        const __m256i high = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes.data() + from + 32));
        uint64_t bits = mask(_mm256_or_si256(_mm256_cmpeq_epi8(low, comma), _mm256_cmpeq_epi8(low, lf))) |
                        mask(_mm256_or_si256(_mm256_cmpeq_epi8(high, comma), _mm256_cmpeq_epi8(high, lf))) << 32;
        // Eight at a time without looking: what is written too much is written over by the next block.
        const auto hits = static_cast<size_t>(std::popcount(bits));
        uint32_t* at = out + count;
        for (size_t done = 0; done < hits; done += 8)
            for (int i = 0; i < 8; ++i) {
                *at++ = static_cast<uint32_t>(from) + static_cast<uint32_t>(std::countr_zero(bits));
                bits &= bits - 1;
            }
        count += hits;
    }
    return count + ScanBytes(bytes, from, out + count);
}
#endif

} // namespace

size_t ScanSeparators(std::string_view bytes, uint32_t* out) {
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2")) return ScanBlocks(bytes, out);
#endif
    return ScanBytes(bytes, 0, out);
}

} // namespace vx::bench
