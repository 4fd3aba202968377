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

// A line is cut 64 bytes at a time into lists of begins and ends, without a loop over its fields. The fields are sorted
// into numbers, texts and others by their slots, and eight numbers are read, compared and stored at once.
//
// The forms of instructions with a mask of ones are used where the plain form makes g++ 12 warn about its own header.

namespace vx {

namespace {

#define ZW_TARGET                                                                                                      \
    __attribute__((                                                                                                    \
        target("avx512f,avx512bw,avx512dq,avx512vl,avx512vbmi,avx512vbmi2,avx512bitalg,bmi,bmi2,lzcnt,popcnt")))

#include "data/merge/PlainNumberSse.inl"

#include "data/merge/MergeKernel.inl"

constexpr auto kIota = [] {
    struct {
        alignas(64) std::array<uint8_t, 64> bytes;  ///< 0, 1, 2 ...
        alignas(64) std::array<uint8_t, 64> places; ///< The same within each sixteen.
        alignas(64) std::array<uint8_t, 64> lanes;  ///< Which sixteen.
    } out{};
    for (uint8_t i = 0; i < 64; ++i) {
        out.bytes[i] = i;
        out.places[i] = i % 16;
        out.lanes[i] = i / 16;
    }
    return out;
}();

ZW_TARGET inline __m512i Load64(const void* bytes) { return _mm512_loadu_si512(bytes); }
ZW_TARGET inline __m256i LowHalf(__m512i bytes) { return __builtin_shufflevector(bytes, bytes, 0, 1, 2, 3); }
ZW_TARGET inline __m512i WithZeros(__m256i low) {
    return _mm512_maskz_inserti64x4(0xFF, _mm512_setzero_si512(), low, 0);
}
ZW_TARGET inline __m512i WithZeros(__m128i low) {
    return _mm512_maskz_inserti32x4(0xFFFF, _mm512_setzero_si512(), low, 0);
}
ZW_TARGET inline __m128i Load16(const void* bytes) { return _mm_loadu_si128(static_cast<const __m128i*>(bytes)); }

ZW_TARGET inline void Store32(void* to, __m256i bytes) { _mm256_storeu_si256(static_cast<__m256i*>(to), bytes); }

// Writes the positions of the set bits; at most 32 of 64 are set.
ZW_TARGET inline void WritePlaces(uint64_t bits, size_t from, uint16_t* out) {
    const __m512i places = _mm512_maskz_compress_epi8(bits, Load64(kIota.bytes.data()));
    const __m512i wide = _mm512_maskz_cvtepu8_epi16(~__mmask32{0}, LowHalf(places));
    _mm512_storeu_si512(out, _mm512_add_epi16(wide, _mm512_set1_epi16(static_cast<int16_t>(from))));
}

ZW_TARGET inline void WriteSlots(uint64_t bits, size_t from, uint8_t* out) {
    const __m512i slots = _mm512_maskz_compress_epi8(bits, Load64(kIota.bytes.data()));
    Store32(out, _mm256_add_epi8(LowHalf(slots), _mm256_set1_epi8(static_cast<char>(from))));
}

ZW_TARGET void Cut(std::string_view line, size_t slots, SCutLine& out) {
    line = line.substr(0, SCutLine::kMostBytes);
    size_t begins = 0; // One more than ends at times: a field may begin in one block and end in the next.
    size_t ends = 0;
    size_t slot = 0;
    uint64_t afterComma = 1; // Whether the block starts right after a comma.
    uint64_t blanks = 0;
    for (size_t from = kFirstFieldOffset; from < line.size() && slot < slots; from += 64) {
        const uint64_t valid = _bzhi_u64(~uint64_t{0}, static_cast<unsigned>(std::min<size_t>(line.size() - from, 64)));
        const __m512i bytes = _mm512_maskz_loadu_epi8(valid, line.data() + from);
        const uint64_t commas = _mm512_cmpeq_epi8_mask(bytes, _mm512_set1_epi8(','));
        blanks |= _mm512_cmpeq_epi8_mask(bytes, _mm512_set1_epi8(' '));
        const uint64_t behindCommas = commas << 1 | afterComma;
        const uint64_t first = behindCommas & ~commas;
        const uint64_t last = commas & ~behindCommas;
        WritePlaces(first, from, &out.begins[begins]);
        WritePlaces(last, from, &out.ends[ends]);
        WriteSlots(_pext_u64(last, commas), slot, &out.slots[ends]);
        begins += static_cast<size_t>(std::popcount(first));
        ends += static_cast<size_t>(std::popcount(last));
        slot += static_cast<size_t>(std::popcount(commas));
        afterComma = commas >> 63;
    }
    while (ends > 0 && out.slots[ends - 1] >= slots) --ends;
    out.count = ends;
    out.hasBlanks = blanks != 0;
}

/// The fields of one class, in the order of the line.
struct SFieldList {
    static constexpr size_t kStep = 32; ///< So many are added at once.
    static constexpr size_t kRoom = kMostSlots + kStep;

    size_t count = 0;
    alignas(64) std::array<uint16_t, kRoom> ends;
    alignas(64) std::array<uint16_t, kRoom> sizes;
    alignas(64) std::array<uint8_t, kRoom> slots;
};

struct SFieldStep {
    __m512i ends;
    __m512i sizes;
    __m256i slots;
};

ZW_TARGET inline void Append(SFieldList& list, __mmask32 which, const SFieldStep& step) {
    const size_t at = list.count;
    _mm512_storeu_si512(&list.ends[at], _mm512_maskz_compress_epi16(which, step.ends));
    _mm512_storeu_si512(&list.sizes[at], _mm512_maskz_compress_epi16(which, step.sizes));
    Store32(&list.slots[at], _mm256_maskz_compress_epi8(which, step.slots));
    list.count += static_cast<size_t>(std::popcount(which));
}

/// The numbers, and the EMergeKind of each.
struct SNumberList : SFieldList {
    alignas(64) std::array<uint8_t, kRoom> kinds;
};

struct SSortedFields {
    SNumberList numbers;
    SFieldList texts;
    SFieldList others;
    uint8_t notes = 0; ///< Of all of them.
};

ZW_TARGET inline __m256i LookUp(const std::array<uint8_t, SSlotBytes::kRoom>& table, __m512i slots) {
    return LowHalf(_mm512_permutex2var_epi8(Load64(&table[0]), slots, Load64(&table[64])));
}

ZW_TARGET inline uint8_t OrAll(__m256i bytes) {
    const __m128i half = _mm_or_si128(_mm256_castsi256_si128(bytes), _mm256_extracti128_si256(bytes, 1));
    uint64_t all = static_cast<uint64_t>(_mm_cvtsi128_si64(half)) | static_cast<uint64_t>(_mm_extract_epi64(half, 1));
    all |= all >> 32;
    all |= all >> 16;
    return static_cast<uint8_t>(all | all >> 8);
}

ZW_TARGET inline void Sort(const SCutLine& cut, const SSlotBytes& table, SSortedFields& out) {
    static_assert(EMergeKind::Skip < EMergeKind::Number && EMergeKind::Unsigned < EMergeKind::Text);
    const __m256i firstNumber = _mm256_set1_epi8(static_cast<char>(EMergeKind::Number));
    const __m256i lastNumber = _mm256_set1_epi8(static_cast<char>(EMergeKind::Unsigned));
    const __m256i text = _mm256_set1_epi8(static_cast<char>(EMergeKind::Text));
    __m256i notes = _mm256_setzero_si256();
    for (size_t at = 0; at < cut.count; at += SFieldList::kStep) {
        const __mmask32 valid = _bzhi_u32(~0u, static_cast<unsigned>(std::min(cut.count - at, SFieldList::kStep)));
        SFieldStep step;
        step.slots = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(&cut.slots[at]));
        const __m512i slots = WithZeros(step.slots);
        const __m256i kinds = LookUp(table.kinds, slots);
        step.ends = Load64(&cut.ends[at]);
        step.sizes = _mm512_sub_epi16(step.ends, Load64(&cut.begins[at]));
        notes = _mm256_mask_or_epi32(notes, 0xFF, notes, _mm256_maskz_mov_epi8(valid, LookUp(table.notes, slots)));
        const __mmask32 fromNumber = _mm256_mask_cmpge_epu8_mask(valid, kinds, firstNumber);
        const __mmask32 numbers = _mm256_mask_cmple_epu8_mask(fromNumber, kinds, lastNumber);
        Store32(&out.numbers.kinds[out.numbers.count], _mm256_maskz_compress_epi8(numbers, kinds));
        Append(out.numbers, numbers, step);
        Append(out.texts, _mm256_mask_cmpeq_epu8_mask(valid, kinds, text), step);
        Append(out.others, _mm256_mask_cmpgt_epu8_mask(valid, kinds, text), step);
    }
    out.notes = OrAll(notes);
}

constexpr size_t kEight = 8;
constexpr uint64_t kLaneEnds = 0x8000800080008000; ///< The last of sixteen bytes, four times.

/// Four numbers as sixteen digits each.
struct SFourNumbers {
    __m512i digits;
    uint64_t points; ///< Where the point was, and the last position of each.
    uint64_t signs;
    uint64_t known; ///< Where digits should be.
    uint64_t junk;  ///< Where something else is.
};

// The last sixteen bytes up to and with the comma after each of four fields, none before the line's own.
ZW_TARGET inline __m512i LoadFour(const char* line, const uint16_t* from) {
    const __m512i one = _mm512_maskz_broadcast_i32x4(0x000F, Load16(line + from[0]));
    const __m512i two = _mm512_mask_broadcast_i32x4(one, 0x00F0, Load16(line + from[1]));
    const __m512i three = _mm512_mask_broadcast_i32x4(two, 0x0F00, Load16(line + from[2]));
    return _mm512_mask_broadcast_i32x4(three, 0xF000, Load16(line + from[3]));
}

// text: as loaded; moves, begins: one byte in all of a lane's, how far the text must go up for its comma to stand last,
// and where it begins then.
ZW_TARGET inline SFourNumbers ReadFour(__m512i text, __m512i moves, __m512i begins) {
    const __m512i places = Load64(kIota.places.data());
    text = _mm512_shuffle_epi8(text, _mm512_sub_epi8(places, moves)); // What comes in is 0.
    const uint64_t field = _mm512_cmpge_epu8_mask(places, begins) & ~kLaneEnds;
    const uint64_t first = field & ~(field << 1);
    const uint64_t inner = _mm512_mask_cmpeq_epi8_mask(field, text, _mm512_set1_epi8('.'));
    SFourNumbers out;
    out.signs = _mm512_mask_cmpeq_epi8_mask(first, text, _mm512_set1_epi8('-'));
    out.points = inner | kLaneEnds;
    // The digits before the point go one up, over it; without a point all do, over the comma. With one, the comma
    // counts as one more 0 after it.
    const uint64_t upToPoint = out.points ^ (out.points - first);
    const __m512i values = _mm512_maskz_sub_epi8(field & ~out.signs, text, _mm512_set1_epi8('0'));
    out.digits = _mm512_mask_blend_epi8(upToPoint, values, _mm512_bslli_epi128(values, 1));
    out.known = field & ~out.signs & ~inner;
    out.junk = _mm512_cmpgt_epu8_mask(out.digits, _mm512_set1_epi8(9)); // A second point is, too.
    return out;
}

// Two times four numbers of sixteen digits as eight integers, in their order.
ZW_TARGET inline __m512i SumDigits(__m512i low, __m512i high) {
    const __m512i tens = _mm512_set1_epi16(0x010A);
    const __m512i hundreds = _mm512_set1_epi32(0x00010064);
    const __m512i tenThousands = _mm512_set1_epi32(0x00012710);
    const __m512i lowFours = _mm512_madd_epi16(_mm512_maddubs_epi16(low, tens), hundreds);
    const __m512i highFours = _mm512_madd_epi16(_mm512_maddubs_epi16(high, tens), hundreds);
    const __m512i eights = _mm512_madd_epi16(_mm512_packus_epi32(lowFours, highFours), tenThousands);
    const __m512i sums = _mm512_add_epi64(_mm512_maskz_mul_epu32(0xFF, eights, _mm512_set1_epi64(100000000)),
                                          _mm512_maskz_srli_epi64(0xFF, eights, 32));
    return _mm512_maskz_permutexvar_epi64(0xFF, _mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), sums);
}

/// Eight numbers as they were written.
struct SEightNumbers {
    __m512i digits;
    __m512d divisors;
    __mmask8 negative;
    __mmask8 whole;
    bool plain;
};

// Four bytes from `first` on, each sixteen times.
ZW_TARGET inline __m512i Spread(__m512i bytes, char first) {
    return _mm512_maskz_permutexvar_epi8(~__mmask64{0},
                                         _mm512_add_epi8(Load64(kIota.lanes.data()), _mm512_set1_epi8(first)), bytes);
}

// A lane in the registers of sixteen-bit lanes for each of eight fields.
ZW_TARGET inline __m128i PerField(uint64_t low, uint64_t high) {
    return _mm_set_epi64x(static_cast<int64_t>(high), static_cast<int64_t>(low));
}

// The fields that are not valid are read as if they were empty and at the start of the line.
ZW_TARGET inline SEightNumbers ReadEight(const char* line, const uint16_t* ends, const uint16_t* sizes,
                                         __mmask8 valid) {
    const __m128i last = _mm_maskz_mov_epi16(valid, Load16(ends));
    const __m128i size = _mm_maskz_mov_epi16(valid, Load16(sizes));
    const __m128i fifteen = _mm_set1_epi16(15);
    alignas(16) std::array<uint16_t, kEight> from;
    _mm_store_si128(reinterpret_cast<__m128i*>(from.data()), _mm_subs_epu16(last, fifteen));
    const __m128i moves = _mm_subs_epu16(fifteen, last);
    const __m512i both = WithZeros(_mm_packus_epi16(moves, _mm_subs_epu16(fifteen, size)));
    const SFourNumbers low = ReadFour(LoadFour(line, &from[0]), Spread(both, 0), Spread(both, 8));
    const SFourNumbers high = ReadFour(LoadFour(line, &from[4]), Spread(both, 4), Spread(both, 12));

    // Of each the positions up to the point: their number says how many follow it.
    const __m128i points = PerField(low.points, high.points);
    const __m128i upTo = _mm_xor_si128(points, _mm_sub_epi16(points, _mm_set1_epi16(1)));
    const __m512i count = _mm512_maskz_cvtepu16_epi64(0xFF, _mm_popcnt_epi16(upTo));
    const __m512i powersLow = Load64(&kPowersOfTen[0]);
    const __m512i powersHigh = Load64(&kPowersOfTen[8]);
    const __m128i signs = PerField(low.signs, high.signs);
    const __m128i known = PerField(low.known, high.known);

    SEightNumbers out;
    out.digits = SumDigits(low.digits, high.digits);
    out.divisors =
        _mm512_permutex2var_pd(_mm512_castsi512_pd(powersLow), _mm512_sub_epi64(_mm512_set1_epi64(16), count),
                               _mm512_castsi512_pd(powersHigh));
    out.negative = _mm_test_epi16_mask(signs, signs);
    out.whole = _mm_cmpeq_epi16_mask(upTo, _mm_set1_epi16(-1));
    const unsigned notPlain = _mm_cmpgt_epu16_mask(size, fifteen) | (_mm_testn_epi16_mask(known, known) & valid);
    out.plain = (low.junk | high.junk | notPlain) == 0;
    return out;
}

ZW_TARGET inline __m512d AsNumbers(const SEightNumbers& eight, __mmask8 percents) {
    const __m512d sizes = _mm512_div_pd(_mm512_cvtepi64_pd(eight.digits), eight.divisors);
    const __m512d numbers = _mm512_mask_xor_pd(sizes, eight.negative, sizes, _mm512_set1_pd(-0.0));
    return _mm512_mask_mul_pd(numbers, percents, numbers, _mm512_set1_pd(100.0));
}

ZW_TARGET inline __m512i AsIntegers(const SEightNumbers& eight, __mmask8 unsignedOnes) {
    const __m512i least = _mm512_maskz_mov_epi64(static_cast<__mmask8>(~unsignedOnes), _mm512_set1_epi64(INT32_MIN));
    const __m512i most = _mm512_mask_mov_epi64(_mm512_set1_epi64(INT32_MAX), unsignedOnes,
                                               _mm512_set1_epi64(std::numeric_limits<uint32_t>::max()));
    const __m512i whole = _mm512_mask_sub_epi64(eight.digits, eight.negative, _mm512_setzero_si512(), eight.digits);
    return _mm512_maskz_min_epi64(0xFF, _mm512_maskz_max_epi64(0xFF, whole, least), most);
}

ZW_TARGET inline __mmask8 OfKind(__m128i kinds, EMergeKind kind) {
    return static_cast<__mmask8>(_mm_cmpeq_epi8_mask(kinds, _mm_set1_epi8(static_cast<char>(kind))));
}

// Up to eight of the numbers from `at` on; false, and nothing done, when one of them is not plain.
ZW_TARGET inline bool MergeEight(const char* line, const SNumberList& list, size_t at, const SFieldSlots& block,
                                 EPriceWord& priceWord) {
    const __m128i kinds = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(&list.kinds[at]));
    const __m128i slots = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(&list.slots[at]));
    const size_t count = std::min(list.count - at, kEight);
    const auto valid = static_cast<__mmask8>(_bzhi_u32(0xFF, static_cast<unsigned>(count)));
    const SEightNumbers eight = ReadEight(line, &list.ends[at], &list.sizes[at], valid);
    const __mmask8 unsignedOnes = OfKind(kinds, EMergeKind::Unsigned);
    const auto integers = static_cast<__mmask8>(unsignedOnes | OfKind(kinds, EMergeKind::Integer));
    const auto fractions = static_cast<__mmask8>(~integers);
    if (!eight.plain || (integers & ~eight.whole & valid) != 0) return false;
    if ((OfKind(kinds, EMergeKind::Price) & valid) != 0) priceWord = EPriceWord::Price;

    const __m512d numbers = AsNumbers(eight, OfKind(kinds, EMergeKind::Percent));
    const __m512i wholes = AsIntegers(eight, unsignedOnes);
    const __m512i places =
        _mm512_maskz_cvtepu8_epi64(0xFF, _mm256_castsi256_si128(LookUp(block.bytes->values, WithZeros(slots))));
    const __m512i before = _mm512_mask_i64gather_epi64(_mm512_setzero_si512(), valid, places, block.values, 8);
    const __m512i now = _mm512_mask_mov_epi64(_mm512_castpd_si512(numbers), integers, wholes);
    const __m512d beforeNumbers = _mm512_castsi512_pd(before);
    const unsigned up = _mm512_mask_cmp_pd_mask(fractions, numbers, beforeNumbers, _CMP_GT_OQ) |
                        _mm512_mask_cmpgt_epi64_mask(integers, wholes, before);
    const unsigned down = _mm512_mask_cmp_pd_mask(fractions, numbers, beforeNumbers, _CMP_LT_OQ) |
                          _mm512_mask_cmplt_epi64_mask(integers, wholes, before);
    _mm512_mask_i64scatter_epi64(block.values, valid, places, now, 8);
    constexpr auto kUnchanged = static_cast<unsigned>(EDirection::Unchanged);
    for (size_t i = 0; i < count; ++i) {
        EDirection& direction = block.directions[list.slots[at + i]];
        const unsigned moved = kUnchanged + (up >> i & 1) - (down >> i & 1);
        direction = direction == EDirection::NeverSet ? EDirection::Unchanged : static_cast<EDirection>(moved);
    }
    return true;
}

ZW_TARGET inline void MergeOneByOne(std::string_view line, const SFieldList& list, size_t from, size_t to,
                                    const SFieldSlots& block, SMergeNotes& notes) {
    for (size_t i = from; i < to; ++i) {
        const char* const last = line.data() + list.ends[i];
        MergeField(line, last - list.sizes[i], last, block.layout[list.slots[i]], block, notes);
    }
}

ZW_TARGET inline void MergeNumbers(std::string_view line, const SNumberList& list, const SFieldSlots& block,
                                   SMergeNotes& notes) {
    for (size_t at = 0; at < list.count; at += kEight)
        if (!MergeEight(line.data(), list, at, block, notes.priceWord))
            MergeOneByOne(line, list, at, std::min(at + kEight, list.count), block, notes);
}

ZW_TARGET inline void MergeTexts(std::string_view line, const SFieldList& list, const SFieldSlots& block) {
    for (size_t i = 0; i < list.count; ++i) {
        const char* const last = line.data() + list.ends[i];
        const SSlot& slot = block.layout[list.slots[i]];
        MergeText(line, last - list.sizes[i], last, block.texts[slot.extra]);
        block.directions[slot.direction] = EDirection::Unchanged;
    }
}

ZW_TARGET void MergeSorted(std::string_view line, const SCutLine& cut, const SFieldSlots& block, SMergeNotes& notes) {
    // Fields with blanks are trimmed one by one, and of a short line sixteen bytes cannot be read.
    if (cut.hasBlanks || line.size() < 16) return Merge(line, cut, block, notes);
    SSortedFields fields;
    Sort(cut, *block.bytes, fields);
    SMergeNotes seen;
    MergeNumbers(line, fields.numbers, block, seen);
    MergeTexts(line, fields.texts, block);
    MergeOneByOne(line, fields.others, 0, fields.others.count, block, seen);
    notes = {fields.notes, seen.priceWord};
}

} // namespace

const SMergeKernel* Avx512Kernel() {
    static constexpr SMergeKernel kernel{"avx512", Cut, MergeSorted};
    static const bool usable = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                               __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl") &&
                               __builtin_cpu_supports("avx512vbmi") && __builtin_cpu_supports("avx512vbmi2") &&
                               __builtin_cpu_supports("avx512bitalg") && __builtin_cpu_supports("bmi") &&
                               __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt");
    return usable ? &kernel : nullptr;
}

} // namespace vx

#else

namespace vx {

const SMergeKernel* Avx512Kernel() { return nullptr; }

} // namespace vx

#endif
