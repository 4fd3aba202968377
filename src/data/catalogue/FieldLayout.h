// SPDX-License-Identifier: MIT
#pragma once

#include "base/fields/FundamentalFields.h"
#include "base/fields/QuoteFields.h"
#include "data/catalogue/RegionFields.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace vx {

/// The ways of the merge; several rules share one.
enum class EMergeKind : uint8_t { Skip, Number, Percent, Price, Integer, Unsigned, Text, Tick, Rare };

constexpr EMergeKind MergeKindOf(EParseRule rule) {
    switch (rule) {
    case EParseRule::None:
        return EMergeKind::Skip;
    case EParseRule::Number:
        return EMergeKind::Number;
    case EParseRule::Percent:
        return EMergeKind::Percent;
    case EParseRule::Price:
        return EMergeKind::Price;
    case EParseRule::Unsigned:
        return EMergeKind::Unsigned;
    case EParseRule::Text:
    case EParseRule::Regions:
        return EMergeKind::Text;
    case EParseRule::Tick:
        return EMergeKind::Tick;
    case EParseRule::Hex:
    case EParseRule::Date:
    case EParseRule::MonthDay:
    case EParseRule::Time:
    case EParseRule::Split:
    case EParseRule::Month:
        return EMergeKind::Rare;
    default:
        return EMergeKind::Integer;
    }
}

// What the store wants to know of a message beside its values: that it carried one of these fields. The numbers are
// bits of SSlot::note; those of the update and of the fundamental layout overlap.
inline constexpr uint8_t kNoteChange = 1;
inline constexpr uint8_t kNoteChangeFromOpen = 2;
inline constexpr uint8_t kNoteContents = 4;
inline constexpr uint8_t kNoteLastMarket = 8;
inline constexpr uint8_t kNoteExtendedMarket = 16;
inline constexpr uint8_t kNoteRecentMarket = 32;
inline constexpr uint8_t kNoteTradeMarkets = kNoteLastMarket | kNoteExtendedMarket | kNoteRecentMarket;
inline constexpr uint8_t kNoteQuoteMarkets = 64; ///< Of bid or ask.

inline constexpr uint8_t kNoteListedMarket = 1;
inline constexpr uint8_t kNoteSecurityType = 2;
inline constexpr uint8_t kNoteSecuritySubType = 4;

/// One comma-separated field of a data line: how it is read and where in the record's block it goes.
struct alignas(8) SSlot {
    EParseRule rule = EParseRule::None; ///< None: the field is looked at by the store itself, not by the merge.
    EMergeKind kind = EMergeKind::Skip;
    uint8_t direction = 0; ///< Index of its direction.
    uint8_t value = 0;     ///< Index of its value; 0, which is never written, where the rule keeps none.
    uint8_t extra = 0;     ///< Index of its text where the rule keeps one; of a split's date among the values.
    uint8_t note = 0;      ///< One of the bits above, or 0.
};

/// Whether the rule keeps a value beside, or instead of, a text.
constexpr bool KeepsValue(EParseRule rule) {
    return StorageOf(rule) != EStorage::None && StorageOf(rule) != EStorage::Text;
}

/// No layout has more slots.
inline constexpr size_t kMostSlots = 72;

/// What a vector of slot numbers looks up: one byte for each slot of a layout.
struct SSlotBytes {
    static constexpr size_t kRoom = 128; ///< Two registers of 64 bytes.
    static_assert(kMostSlots <= kRoom);

    /// Its EMergeKind; Rare for a slot whose value another slot has too, so that no two of a line are in one vector.
    alignas(64) std::array<uint8_t, kRoom> kinds{};
    alignas(64) std::array<uint8_t, kRoom> values{};
    alignas(64) std::array<uint8_t, kRoom> notes{};
};

namespace layout {

template <size_t kSize> constexpr SSlotBytes BytesOf(const std::array<SSlot, kSize>& slots) {
    static_assert(kSize <= kMostSlots);
    SSlotBytes bytes;
    for (size_t i = 0; i < kSize; ++i) {
        const bool ownValue = slots[i].direction == i || slots[i].kind == EMergeKind::Skip;
        bytes.kinds[i] = static_cast<uint8_t>(ownValue ? slots[i].kind : EMergeKind::Rare);
        bytes.values[i] = slots[i].value;
        bytes.notes[i] = slots[i].note;
    }
    return bytes;
}

/// How many of each a block has.
struct SBlockSize {
    size_t directions = 0;
    size_t values = 1; ///< With the one that is never written.
    size_t texts = 0;
};

template <size_t kSize> constexpr SBlockSize SizeOf(const std::array<SSlot, kSize>& slots) {
    SBlockSize size;
    for (const SSlot& slot : slots) {
        const size_t last = slot.rule == EParseRule::Split ? slot.extra : slot.value;
        size.directions = std::max<size_t>(size.directions, slot.direction + 1u);
        size.values = std::max<size_t>(size.values, last + 1);
        if (KeepsText(slot.rule)) size.texts = std::max<size_t>(size.texts, slot.extra + 1u);
    }
    return size;
}

// The symbol is in the record itself: slot 0 of every layout keeps nothing.
template <size_t kSize> constexpr std::array<SSlot, kSize> FromRules(const std::array<EParseRule, kSize>& rules) {
    std::array<SSlot, kSize> slots{};
    uint8_t values = 1;
    uint8_t texts = 0;
    for (size_t i = 1; i < kSize; ++i) {
        slots[i].rule = rules[i];
        slots[i].kind = MergeKindOf(rules[i]);
        slots[i].direction = static_cast<uint8_t>(i);
        if (KeepsValue(rules[i])) slots[i].value = values++;
        if (KeepsText(rules[i])) slots[i].extra = texts++;
        if (rules[i] == EParseRule::Split) slots[i].extra = values++;
    }
    return slots;
}

} // namespace layout

/// Update and summary lines: the update fields, and a last one that some feeds add and that repeats the symbol's
/// decimal precision.
inline constexpr std::array kUpdateLayout = [] {
    std::array<EParseRule, kUpdateFieldCount> rules{};
    for (size_t i = 0; i < rules.size(); ++i) rules[i] = kUpdateFields[i].rule;
    const auto named = layout::FromRules(rules);
    std::array<SSlot, kUpdateFieldCount + 1> slots{};
    for (size_t i = 0; i < named.size(); ++i) slots[i] = named[i];
    slots.back() = slots[UpdateSlot("Decimal Precision")];
    slots[UpdateSlot("Change")].note = kNoteChange;
    slots[UpdateSlot("Change From Open")].note = kNoteChangeFromOpen;
    slots[UpdateSlot("Message Contents")].note = kNoteContents;
    slots[UpdateSlot("Last Market Center")].note = kNoteLastMarket;
    slots[UpdateSlot("Extended Trade Market Center")].note = kNoteExtendedMarket;
    slots[UpdateSlot("Most Recent Trade Market Center")].note = kNoteRecentMarket;
    slots[UpdateSlot("Bid Market Center")].note = kNoteQuoteMarkets;
    slots[UpdateSlot("Ask Market Center")].note = kNoteQuoteMarkets;
    return slots;
}();

inline constexpr std::array kFundamentalLayout = [] {
    std::array<EParseRule, kFundamentalSlotCount> rules{};
    for (size_t row = 0; row < kFundamentalColumnCount; ++row)
        if (kFundamentalFields[row].rule != EParseRule::None)
            rules[FundamentalSlotOfRow(row)] = kFundamentalFields[row].rule;
    auto slots = layout::FromRules(rules);
    slots[FundamentalSlot("Listed Market")].note = kNoteListedMarket;
    slots[FundamentalSlot("Security Type")].note = kNoteSecurityType;
    slots[FundamentalSlot("Security SubType")].note = kNoteSecuritySubType;
    return slots;
}();

inline constexpr std::array kRegionLayout = [] {
    std::array<EParseRule, kRegionFieldCount> rules{};
    for (size_t i = 0; i < rules.size(); ++i) rules[i] = kRegionFields[i].rule;
    rules[RegionSlot("Region")] = EParseRule::None; // Part of the record's name.
    return layout::FromRules(rules);
}();

} // namespace vx
