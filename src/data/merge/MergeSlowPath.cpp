// SPDX-License-Identifier: MIT
#include "data/merge/MergeSlowPath.h"

#include "base/Number.h"
#include "data/record/FieldText.h"

#include <array>

namespace vx::slowpath {

namespace {

/// What a tick does to the trend.
struct STick {
    char mark = '\0'; ///< '\0' adds none.
    EDirection direction = EDirection::NeverSet;
};

// By their codes, from the first on: ticks follow no pattern, and a table needs no branch.
constexpr int64_t kFirstTick = 173;
constexpr std::array kTicks = [] {
    std::array<STick, 11> ticks{};
    ticks[173 - kFirstTick] = {'+', EDirection::Up};
    ticks[175 - kFirstTick] = {'-', EDirection::Down};
    ticks[183 - kFirstTick] = {'.', EDirection::Unchanged};
    return ticks;
}();

} // namespace

void MergeRareField(std::string_view text, const SSlot& slot, SFieldSlots block) {
    SFieldValue& value = block.values[slot.value];
    block.directions[slot.direction] = EDirection::Unchanged;
    switch (slot.rule) {
    case EParseRule::Hex:
        value.whole = ReadHex32(text);
        break;
    case EParseRule::Date:
        value.date = ReadDate(text);
        break;
    case EParseRule::MonthDay:
        value.date = ReadMonthDay(text);
        break;
    case EParseRule::Month:
        value.whole = ReadMonth(text);
        break;
    case EParseRule::Time: {
        const SLetteredTime time = ReadTime(text);
        value.time = time.time;
        block.texts[slot.extra].Assign(time.View());
        break;
    }
    case EParseRule::Split: {
        const SSplit split = ReadSplit(text);
        value.number = split.ratio;
        block.values[slot.extra].date = split.date;
        break;
    }
    default:
        break;
    }
}

void MergeTick(int64_t code, const SSlot& slot, SFieldSlots block) {
    constexpr size_t kTrendMarks = 10; // Newest first.
    const auto place = static_cast<uint64_t>(code - kFirstTick);
    const STick tick = place < kTicks.size() ? kTicks[place] : STick{};
    if (tick.mark != '\0') block.texts[slot.extra].PushFront(tick.mark, kTrendMarks);
    block.directions[slot.direction] = tick.direction;
}

EPriceWord ClassifyPrice(std::string_view text) {
    if (IsNotFound(text)) return EPriceWord::NotFound;
    return StartsWithNumber(text) ? EPriceWord::Price : EPriceWord::None;
}

} // namespace vx::slowpath
