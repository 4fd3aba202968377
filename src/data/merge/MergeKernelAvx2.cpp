// SPDX-License-Identifier: MIT
#include "data/merge/MergeKernel.h"

#if defined(__x86_64__)

#include "base/Number.h"
#include "data/merge/MergeSlowPath.h"

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

#include "data/merge/LineCut.inl"
#include "data/merge/PlainNumberSse.inl"

#include "data/merge/MergeKernel.inl"

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
