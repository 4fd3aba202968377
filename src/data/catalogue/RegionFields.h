#pragma once

#include "data/catalogue/ParseRule.h"
#include "data/catalogue/UpdateFields.h"

namespace vx {

/// The fields of a regional line, in its order. The layout is this program's own.
inline constexpr std::array kRegionFields = {
    SUpdateField{"Symbol", EParseRule::Text},      SUpdateField{"Region", EParseRule::Text},
    SUpdateField{"Bid", EParseRule::Number},       SUpdateField{"Bid Size", EParseRule::Integer},
    SUpdateField{"Bid Time", EParseRule::Time},    SUpdateField{"Ask", EParseRule::Number},
    SUpdateField{"Ask Size", EParseRule::Integer}, SUpdateField{"Ask Time", EParseRule::Time},
    SUpdateField{"Last", EParseRule::Price},       SUpdateField{"Last Size", EParseRule::Integer},
    SUpdateField{"Last Time", EParseRule::Time},
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
