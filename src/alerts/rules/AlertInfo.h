#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vx {

/// One alert of a symbol.
struct A_INFO {
    uint32_t enabled = 0;   ///< 1 armed; 0 once it fired or the user disarmed it.
    uint32_t noZero = 0;    ///< 1: a value of exactly 0 never fires it.
    uint32_t loopSound = 0; ///< 1: the notice repeats its sound until it is closed.
    double value = 0;       ///< The threshold.
    int32_t fieldId = 0;    ///< The watched field: its catalogue index - 1; see AlertField.h.
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

} // namespace vx
