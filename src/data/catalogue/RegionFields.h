// SPDX-License-Identifier: MIT
#pragma once

#include "base/fields/FieldKinds.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace vx {

struct SRegionField {
    std::string_view name;
    EParseRule rule;
};

/// The fields of a regional line, in its order. The layout is this program's own.
inline constexpr std::array kRegionFields = {
    SRegionField{"Symbol", EParseRule::Text},      SRegionField{"Region", EParseRule::Text},
    SRegionField{"Bid", EParseRule::Number},       SRegionField{"Bid Size", EParseRule::Integer},
    SRegionField{"Bid Time", EParseRule::Time},    SRegionField{"Ask", EParseRule::Number},
    SRegionField{"Ask Size", EParseRule::Integer}, SRegionField{"Ask Time", EParseRule::Time},
    SRegionField{"Last", EParseRule::Price},       SRegionField{"Last Size", EParseRule::Integer},
    SRegionField{"Last Time", EParseRule::Time},
};

inline constexpr size_t kRegionFieldCount = kRegionFields.size();
static_assert(kRegionFieldCount == 11);

/// Position of a regional field by its name; a name that is not in the table does not compile.
consteval size_t RegionSlot(std::string_view name) {
    for (size_t i = 0; i < kRegionFieldCount; ++i)
        if (kRegionFields[i].name == name) return i;
    throw "no regional field has this name";
}

} // namespace vx
