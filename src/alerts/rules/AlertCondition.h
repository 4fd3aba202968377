#pragma once

#include <cstdint>
#include <string_view>

namespace vx {

/// How a field's value stands to an alert's threshold when the alert fires.
enum class EAlertCondition : uint32_t { Equal = 0, Greater = 1, GreaterOrEqual = 2, Less = 3, LessOrEqual = 4 };

/// The words of a condition code ("greater than"), empty for a code that is none.
std::string_view ConditionWords(uint32_t condition);

/// The short form of a condition code (">"); "=" for a code that is none.
std::string_view ConditionShortForm(uint32_t condition);

/// The code of a condition's words or short form; Equal for any other text.
uint32_t ReadCondition(std::string_view text);

/// How two numbers stand to each other, as a bit; none when one of them is no number.
enum ECompared : uint8_t { kBelow = 1, kEqual = 2, kAbove = 4 };

constexpr uint8_t Compare(double value, double threshold) {
    return static_cast<uint8_t>((value < threshold ? kBelow : 0) | (value == threshold ? kEqual : 0) |
                                (value > threshold ? kAbove : 0));
}

/// The results of Compare that meet a condition; 0 for a code that is none.
constexpr uint8_t MeetingResults(uint32_t condition) {
    switch (static_cast<EAlertCondition>(condition)) {
    case EAlertCondition::Equal:
        return kEqual;
    case EAlertCondition::Greater:
        return kAbove;
    case EAlertCondition::GreaterOrEqual:
        return kAbove | kEqual;
    case EAlertCondition::Less:
        return kBelow;
    case EAlertCondition::LessOrEqual:
        return kBelow | kEqual;
    }
    return 0;
}

/// Whether a value meets an alert, compared exactly and without tolerance. noZero: a value of exactly 0 never does.
constexpr bool IsMet(uint8_t meetingResults, double value, double threshold, bool noZero) {
    return (Compare(value, threshold) & meetingResults) != 0 && !(noZero && value == 0.0);
}

} // namespace vx
