// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/FieldEntry.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// One alert of a symbol.
struct A_INFO {
    uint32_t enabled = 0;   ///< 1 armed; 0 once it fired or the user disarmed it.
    uint32_t noZero = 0;    ///< 1: a value of exactly 0 never fires it.
    uint32_t loopSound = 0; ///< 1: the notice repeats its sound until it is closed.
    double value = 0;       ///< The threshold.
    int32_t fieldId = 0;    ///< The watched field: its catalogue index - 1; see below.
    uint32_t condition = 0; ///< An EAlertCondition; other codes are kept and never fire.
    uint32_t soundType = 0; ///< An EAlertSound; other codes are kept and are silent.
    std::string soundFile;  ///< Path of the wave file, Windows-1252; empty unless soundType is WaveFile.

    bool operator==(const A_INFO&) const = default;
};

/// Whether two alerts of a symbol count as one: a symbol has each of them once.
inline bool IsSameAlert(const A_INFO& a, const A_INFO& b) {
    return a.fieldId == b.fieldId && a.condition == b.condition && a.value == b.value && a.noZero == b.noZero;
}

enum class EAlertSound : uint32_t { None = 0, BuiltIn = 1, WaveFile = 2 };

/// The alerts of one symbol in the order in which they were added; an alert's index is its place here.
using CAlertArray = std::vector<A_INFO>;

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

// An alert names its field by the position in the catalogue without the row-number column: catalogue index - 1.

/// The field of news alerts: the News column.
int32_t NewsFieldId();

/// Display name of a field; empty when the catalogue has no such field.
std::string_view AlertFieldName(int32_t fieldId);

/// The field of a display name, case and blanks included; the latest-headline column counts as the news field. Nothing
/// when no column has the name.
std::optional<int32_t> AlertFieldId(std::string_view name);

/// The catalogue entry of a field whose value is a number and can be compared; null for every other field.
const SFieldEntry* JudgedField(int32_t fieldId);

/// Whether an alert can ever fire: on news, or on a field with numbers by a condition that exists.
bool CanFire(const A_INFO& alert);

} // namespace vx
