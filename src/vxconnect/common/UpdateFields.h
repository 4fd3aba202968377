// SPDX-License-Identifier: MIT
#pragma once

#include "base/fields/QuoteFields.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vx::sim {

/// What a quote line is about. The bits are in the order in which the letters are written: quotes come newest, last.
enum EContents : uint32_t {
    kContentsTrade = 1u << 0,         ///< "C"
    kContentsExtendedTrade = 1u << 1, ///< "E"
    kContentsOtherTrade = 1u << 2,    ///< "O"
    kContentsOpen = 1u << 3,          ///< "o"
    kContentsHigh = 1u << 4,          ///< "h"
    kContentsLow = 1u << 5,           ///< "l"
    kContentsClose = 1u << 6,         ///< "c"
    kContentsSettlement = 1u << 7,    ///< "s"
    kContentsVolume = 1u << 8,        ///< "v"
    kContentsBid = 1u << 9,           ///< "b"
    kContentsAsk = 1u << 10,          ///< "a"
};
inline constexpr std::string_view kContentsLetters = "CEOohlcsvba";

/// A set of fields.
class CFieldMask {
public:
    constexpr void Set(EField field) { m_words[Word(field)] |= Bit(field); }
    constexpr void Clear(EField field) { m_words[Word(field)] &= ~Bit(field); }
    constexpr bool Has(EField field) const { return (m_words[Word(field)] & Bit(field)) != 0; }
    constexpr bool Empty() const { return (m_words[0] | m_words[1]) == 0; }
    constexpr int Count() const { return std::popcount(m_words[0]) + std::popcount(m_words[1]); }
    constexpr void operator|=(const CFieldMask& other) {
        m_words[0] |= other.m_words[0];
        m_words[1] |= other.m_words[1];
    }
    constexpr CFieldMask operator&(const CFieldMask& other) const {
        CFieldMask out;
        out.m_words = {m_words[0] & other.m_words[0], m_words[1] & other.m_words[1]};
        return out;
    }
    constexpr bool operator==(const CFieldMask&) const = default;

    /// Calls the function with every field of the set, lowest first.
    template <class TFunction> constexpr void ForEach(TFunction&& function) const {
        for (size_t word = 0; word < m_words.size(); ++word)
            for (uint64_t bits = m_words[word]; bits != 0; bits &= bits - 1)
                function(static_cast<EField>(word * 64 + static_cast<size_t>(std::countr_zero(bits))));
    }

private:
    static constexpr size_t Word(EField field) { return static_cast<size_t>(field) / 64; }
    static constexpr uint64_t Bit(EField field) { return uint64_t{1} << (static_cast<unsigned>(field) % 64); }

    std::array<uint64_t, 2> m_words{};
    static_assert(kUpdateFieldCount <= 2 * 64);
};

/// The fields that one client asked for, in its order.
///
/// Shape   at most kMaxSelected names are honoured, the rest of a longer list is dropped; an unknown name keeps its
///         place and stays empty
class CFieldSelection {
public:
    static constexpr size_t kMaxSelected = 256;

    /// The standard list.
    CFieldSelection();
    /// The names between commas, blanks around them allowed.
    explicit CFieldSelection(std::string_view names);

    bool IsStandard() const { return m_standard; }
    /// Field numbers in the client's order, -1 for an unknown name.
    const std::vector<int16_t>& Order() const { return m_order; }
    const CFieldMask& Mask() const { return m_mask; }
    bool operator==(const CFieldSelection& other) const { return m_order == other.m_order; }

private:
    std::vector<int16_t> m_order;
    CFieldMask m_mask;
    bool m_standard = false;
};

/// Writes letter and fields of a quote line in the order of a selection, each followed by a comma, and the line end.
///
/// Shape   write(out, field) writes one field of the mask and returns the new end; fields outside the mask are empty,
///         the symbol always stands
/// Returns the end of what was written
template <class TOut, class TWrite>
TOut LayOutQuote(TOut out, char letter, const CFieldMask& fields, const CFieldSelection& selection, TWrite&& write) {
    CFieldMask filled = fields;
    filled.Set(EField::Symbol);
    *out++ = letter;
    *out++ = ',';
    if (selection.IsStandard()) {
        size_t commas = 0;
        filled.ForEach([&](EField field) {
            for (; commas < static_cast<size_t>(field); ++commas) *out++ = ',';
            out = write(out, field);
        });
        for (; commas < kUpdateFieldCount; ++commas) *out++ = ',';
    } else {
        for (const int16_t field : selection.Order()) {
            if (field >= 0 && filled.Has(static_cast<EField>(field))) out = write(out, static_cast<EField>(field));
            *out++ = ',';
        }
    }
    *out++ = '\r';
    *out++ = '\n';
    return out;
}

} // namespace vx::sim
