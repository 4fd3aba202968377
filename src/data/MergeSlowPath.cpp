#include "data/MergeSlowPath.h"

#include "base/Number.h"
#include "data/FieldText.h"

namespace vx::slowpath {

namespace {

constexpr size_t kTrendMarks = 10; ///< Newest first.

void MergeTick(std::string_view text, EDirection& direction, CSlotText& trend) {
    const char mark = TickMark(ReadInt32(text));
    if (mark != '\0') trend.PushFront(mark, kTrendMarks);
    direction = mark == '+'   ? EDirection::Up
                : mark == '-' ? EDirection::Down
                : mark == '.' ? EDirection::Unchanged
                              : EDirection::NeverSet;
}

} // namespace

void MergeRareField(std::string_view text, const SSlot& slot, const SFieldSlots& block) {
    SFieldValue& value = block.values[slot.value];
    EDirection& direction = block.directions[slot.value];
    direction = EDirection::Unchanged;
    switch (slot.rule) {
    case EParseRule::Hex:
        value.count = ReadHex32(text);
        break;
    case EParseRule::Date:
        value.date = ReadDate(text);
        break;
    case EParseRule::MonthDay:
        value.date = ReadMonthDay(text);
        break;
    case EParseRule::Month:
        value.integer = ReadMonth(text);
        break;
    case EParseRule::Tick:
        MergeTick(text, direction, block.texts[slot.extra]);
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
        block.directions[slot.extra] = EDirection::Unchanged;
        break;
    }
    default:
        break;
    }
}

EPriceWord ClassifyPrice(std::string_view text) {
    if (IsNotFound(text)) return EPriceWord::NotFound;
    return StartsWithNumber(text) ? EPriceWord::Price : EPriceWord::None;
}

} // namespace vx::slowpath
