#include "feed/LineScan.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace vx {

char* FindLineByteScalar(char* text) {
    while (*text != '\0' && *text != '\n' && *text != '\r') ++text;
    return text;
}

#if defined(__x86_64__)

char* FindLineByteSse2(char* text) {
    const __m128i nul = _mm_setzero_si128();
    const __m128i cr = _mm_set1_epi8('\r');
    const __m128i lf = _mm_set1_epi8('\n');
    for (;; text += 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
        const __m128i ends = _mm_or_si128(_mm_cmpeq_epi8(block, cr), _mm_cmpeq_epi8(block, lf));
        const int found = _mm_movemask_epi8(_mm_or_si128(ends, _mm_cmpeq_epi8(block, nul)));
        if (found != 0) return text + __builtin_ctz(static_cast<unsigned>(found));
    }
}

// One table look-up compares with all three bytes: the low four bits of each byte pick the only byte with these bits
// that would be a match (0, 10, 13), or 0, which has other low bits and so differs. Bytes from 0x80 on pick 0.
__attribute__((target("avx2"))) char* FindLineByteAvx2(char* text) {
    const __m256i table = _mm256_setr_epi8(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, '\n', 0, 0, '\r', 0, 0, //
                                           0, 0, 0, 0, 0, 0, 0, 0, 0, 0, '\n', 0, 0, '\r', 0, 0);
    for (;; text += 32) {
        const __m256i block = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text));
        const __m256i candidates = _mm256_shuffle_epi8(table, block);
        const int found = _mm256_movemask_epi8(_mm256_cmpeq_epi8(candidates, block));
        if (found != 0) return text + __builtin_ctz(static_cast<unsigned>(found));
    }
}

bool HasAvx2() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") != 0;
}

const LineScanner FindLineByte = HasAvx2() ? FindLineByteAvx2 : FindLineByteSse2;

#else

const LineScanner FindLineByte = FindLineByteScalar;

#endif

} // namespace vx
