// SPDX-License-Identifier: MIT
// Plain numbers with the instructions that every processor with AVX2 has. The including file is inside an unnamed
// namespace of vx and has defined ZW_TARGET, the attribute of every function, before.

// By the position of the point among sixteen bytes; 16 means none.
constexpr unsigned kNoPoint = 16;
struct SPointTables {
    alignas(16) int8_t closeGap[17][16]; ///< Moves the bytes before the point one up, over it; byte 0 becomes 0.
    double divisor[2][17];               ///< The second row for negative numbers.
};

constexpr SPointTables kPoint = [] {
    SPointTables table{};
    for (int p = 0; p <= 16; ++p) {
        for (int i = 0; i < 16; ++i)
            table.closeGap[p][i] = static_cast<int8_t>(i > p || p == kNoPoint ? i : i == 0 ? -128 : i - 1);
        const double divisor = p == kNoPoint ? 1 : kPowersOfTen[static_cast<size_t>(15 - p)];
        table.divisor[0][p] = divisor;
        table.divisor[1][p] = -divisor;
    }
    return table;
}();

// Sixteen bytes from kKeepLast + n: 0xFF in the last n of them.
alignas(32) constexpr uint8_t kKeepLast[32] = {0,    0,    0,    0,    0,    0,    0,    0,    0,    0,    0,
                                               0,    0,    0,    0,    0,    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                                               0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

// Sixteen bytes from kMoveUp + 16 - n move those of a register up by n; what comes in is 0.
alignas(32) constexpr int8_t kMoveUp[32] = {-128, -128, -128, -128, -128, -128, -128, -128, -128, -128, -128,
                                            -128, -128, -128, -128, -128, 0,    1,    2,    3,    4,    5,
                                            6,    7,    8,    9,    10,   11,   12,   13,   14,   15};

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

// The bytes of a field of at most 16, at the end of a register; before them are whatever bytes the line has there.
// The line has at least 16 bytes.
ZW_TARGET inline __m128i LoadEndingAt(const char* line, const char* last) {
    if (last - line >= 16) return _mm_loadu_si128(reinterpret_cast<const __m128i*>(last - 16));
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(line));
    return _mm_shuffle_epi8(bytes, _mm_loadu_si128(reinterpret_cast<const __m128i*>(kMoveUp + (last - line))));
}

ZW_TARGET inline __m128i KeepLast(unsigned count) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(kKeepLast + count));
}

// Without a branch but for the texts that are no plain number: signs, lengths and points follow no pattern.
ZW_TARGET inline bool ReadPlain(std::string_view line, const char* first, const char* last, SPlainNumber& out) {
    constexpr char kPointLessZero = '.' - '0';
    const bool minus = *first == '-';
    first += static_cast<int>(minus);
    const auto size = static_cast<unsigned>(last - first);
    if (size - 1 >= kMostPlainDigits || line.size() < 16) return false; // None, or too many.
    const __m128i shown = _mm_sub_epi8(LoadEndingAt(line.data(), last), _mm_set1_epi8('0'));
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
    out.divisor = kPoint.divisor[minus ? 1 : 0][point];
    out.whole = point >= 15;
    out.negative = minus;
    return true;
}
