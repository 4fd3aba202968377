// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/FieldLayout.h"
#include "data/record/SlotText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vx {

/// Which way a value went with its last change; cells are coloured by it.
enum class EDirection : uint8_t {
    NeverSet = 0,
    Down = 1,
    Unchanged = 2, ///< Also the first value, and every value that is not a number.
    Up = 3
};

enum class EDateState : uint8_t {
    Empty,  ///< Never set, or its day is 0.
    Valid,  ///< A day of the calendar.
    Invalid ///< Was given, and is no day of the calendar.
};

/// A calendar day, or a month and day without a year.
struct SDate {
    int16_t year = 0; ///< 1..9999, 0 when the field has no year.
    uint8_t month = 0;
    uint8_t day = 0;
    EDateState state = EDateState::Empty;

    bool operator==(const SDate&) const = default;
};

/// A time of day with the letter that came with it.
struct STimeOfDay {
    uint8_t hour = 0; ///< As given, values above 255 cut to 255; the same for the other two.
    uint8_t minute = 0;
    uint8_t second = 0;
    char letter = 't'; ///< One of "tTbao".

    bool operator==(const STimeOfDay&) const = default;
};

/// What one slot of a record holds; the parse rule of the slot says which member.
union SFieldValue {
    double number = 0;
    int64_t whole; ///< Every integer, signed or not: 32 bits of it are used.
    SDate date;
    STimeOfDay time;
};
static_assert(sizeof(SFieldValue) == 8);

/// A block of slots seen without its size: what a merge writes into.
struct SFieldSlots {
    std::span<const SSlot> layout;
    const SSlotBytes* bytes; ///< Of the layout.
    SFieldValue* values;
    EDirection* directions;
    CSlotText* texts;
};

/// The values, directions and texts of one layout's slots, each in an array of its own.
template <const auto& kLayout> class CFieldBlock {
public:
    double Number(size_t slot) const { return m_values[kLayout[slot].value].number; }
    int32_t Integer(size_t slot) const { return static_cast<int32_t>(m_values[kLayout[slot].value].whole); }
    uint32_t Unsigned(size_t slot) const { return static_cast<uint32_t>(m_values[kLayout[slot].value].whole); }
    const SDate& Date(size_t slot) const { return m_values[kLayout[slot].value].date; }
    const STimeOfDay& Time(size_t slot) const { return m_values[kLayout[slot].value].time; }
    /// The date half of a split.
    const SDate& SplitDate(size_t slot) const { return m_values[kLayout[slot].extra].date; }
    const SFieldValue& Value(size_t slot) const { return m_values[kLayout[slot].value]; }
    static constexpr bool HasText(size_t slot) { return KeepsText(kLayout[slot].rule); }
    std::string_view Text(size_t slot) const { return m_texts[kLayout[slot].extra].View(); }
    /// Asks for the memory of a slot's value and direction.
    void Prefetch(size_t slot) const {
        __builtin_prefetch(&m_values[kLayout[slot].value]);
        __builtin_prefetch(&m_directions[kLayout[slot].direction]);
    }
    /// No slot was ever set.
    bool IsEmpty() const {
        return std::ranges::all_of(m_directions, [](EDirection d) { return d == EDirection::NeverSet; });
    }
    EDirection Direction(size_t slot) const { return m_directions[kLayout[slot].direction]; }

    void SetText(size_t slot, std::string_view text) {
        m_texts[kLayout[slot].extra].Assign(text);
        SetDirection(slot, EDirection::Unchanged);
    }
    void SetDirection(size_t slot, EDirection direction) { m_directions[kLayout[slot].direction] = direction; }

    /// What its texts take outside of the block.
    size_t TextBytes() const {
        size_t bytes = 0;
        for (const CSlotText& text : m_texts) bytes += text.HeapBytes();
        return bytes;
    }

    SFieldSlots Slots() { return {kLayout, &kBytes, m_values.data(), m_directions.data(), m_texts.data()}; }

private:
    static constexpr SSlotBytes kBytes = layout::BytesOf(kLayout);
    static constexpr layout::SBlockSize kSize = layout::SizeOf(kLayout);

    std::array<EDirection, kSize.directions> m_directions{};
    std::array<SFieldValue, kSize.values> m_values{};
    std::array<CSlotText, kSize.texts> m_texts;
};

/// The latest value of every field of the update layout. Slots are positions in kUpdateFields.
class CQuoteData : public CFieldBlock<kUpdateLayout> {};

/// The latest value of every field of a fundamental line. Slots are those of FundamentalSlot.
class CFundamentalData : public CFieldBlock<kFundamentalLayout> {};

/// The latest value of every field of a regional line. Slots are positions in kRegionFields.
class CRegionData : public CFieldBlock<kRegionLayout> {};

} // namespace vx
