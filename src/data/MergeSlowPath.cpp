#include "data/MergeSlowPath.h"

#include "base/Number.h"
#include "data/FieldText.h"

namespace vx::slowpath {

void MergeRareField(std::string_view text, const SSlot& slot, const SFieldSlots& block) {
    SFieldValue& value = block.values[slot.value];
    block.directions[slot.value] = EDirection::Unchanged;
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
        block.directions[slot.extra] = EDirection::Unchanged;
        break;
    }
    default:
        break;
    }
}

void MergeTick(int64_t code, const SSlot& slot, const SFieldSlots& block) {
    constexpr size_t kTrendMarks = 10; // Newest first.
    const char mark = TickMark(code);
    if (mark != '\0') block.texts[slot.extra].PushFront(mark, kTrendMarks);
    block.directions[slot.value] = mark == '+'   ? EDirection::Up
                                   : mark == '-' ? EDirection::Down
                                   : mark == '.' ? EDirection::Unchanged
                                                 : EDirection::NeverSet;
}

EPriceWord ClassifyPrice(std::string_view text) {
    if (IsNotFound(text)) return EPriceWord::NotFound;
    return StartsWithNumber(text) ? EPriceWord::Price : EPriceWord::None;
}

} // namespace vx::slowpath
