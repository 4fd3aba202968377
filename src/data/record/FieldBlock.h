#pragma once

#include "data/catalogue/FieldLayout.h"
#include "data/record/FieldValue.h"
#include "data/record/SlotText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace vx {

/// A block of slots seen without its size: what a merge writes into.
struct SFieldSlots {
    std::span<const SSlot> layout;
    const SSlotBytes* bytes; ///< Of the layout.
    SFieldValue* values;
    EDirection* directions;
    CSlotText* texts;
};

/// The values, directions and texts of one layout's slots, each in an array of its own.
template <const auto& kLayout, size_t kValues, size_t kTexts> class CFieldBlock {
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
    /// No slot was ever set.
    bool IsEmpty() const {
        return std::ranges::all_of(m_directions, [](EDirection d) { return d == EDirection::NeverSet; });
    }
    EDirection Direction(size_t slot) const { return m_directions[kLayout[slot].value]; }

    void SetText(size_t slot, std::string_view text) {
        m_texts[kLayout[slot].extra].Assign(text);
        SetDirection(slot, EDirection::Unchanged);
    }
    void SetDirection(size_t slot, EDirection direction) { m_directions[kLayout[slot].value] = direction; }

    /// What its texts take outside of the block.
    size_t TextBytes() const {
        size_t bytes = 0;
        for (const CSlotText& text : m_texts) bytes += text.HeapBytes();
        return bytes;
    }

    SFieldSlots Slots() { return {kLayout, &kBytes, m_values.data(), m_directions.data(), m_texts.data()}; }

private:
    static constexpr SSlotBytes kBytes = layout::BytesOf(kLayout);

    std::array<EDirection, kValues> m_directions{};
    std::array<SFieldValue, kValues> m_values{};
    std::array<CSlotText, kTexts> m_texts;
};

} // namespace vx
