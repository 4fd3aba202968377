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

/// Whether a value meets a condition, compared exactly and without tolerance; false for a code that is none and for
/// what is no number.
constexpr bool ConditionHolds(uint32_t condition, double value, double threshold) {
    switch (static_cast<EAlertCondition>(condition)) {
    case EAlertCondition::Equal:
        return value == threshold;
    case EAlertCondition::Greater:
        return value > threshold;
    case EAlertCondition::GreaterOrEqual:
        return value >= threshold;
    case EAlertCondition::Less:
        return value < threshold;
    case EAlertCondition::LessOrEqual:
        return value <= threshold;
    }
    return false;
}

} // namespace vx
