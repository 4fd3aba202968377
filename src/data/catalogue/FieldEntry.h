// SPDX-License-Identifier: MIT
#pragma once

#include "base/fields/FieldKinds.h"
#include "data/catalogue/ColourRule.h"

#include <cstdint>
#include <string_view>

namespace vx {

enum class EFieldGroup : uint8_t { RowNumber, Level1, Fundamental, Own };

/// From where in a symbol's record a column reads.
enum class ESource : uint8_t {
    None,        ///< Not from the record: the row number and the program's own columns.
    Quote,       ///< A slot of the update layout.
    Fundamental, ///< A slot of the fundamental layout.
    SplitDate,   ///< The date half of a split; the slot is the ratio's.
    MarketName   ///< Name of the market whose id is in a slot of the update layout.
};

/// The column shows nothing of a regional quote.
inline constexpr int8_t kNoRegionSlot = -1;

/// One column of the catalogue. Adding a column is adding one of these to its table.
struct SFieldEntry {
    std::string_view name;   ///< Column header and key, at most 39 characters.
    std::string_view format; ///< Display format, at most 19 characters.
    EValueClass valueClass = EValueClass::Text;
    EFieldGroup group = EFieldGroup::Own;
    ESource source = ESource::None;
    uint8_t slot = 0;                  ///< Position in the layout that source names.
    int8_t regionSlot = kNoRegionSlot; ///< Position in the regional layout, for the row of a regional quote.
    std::string_view description;      ///< Windows-1252, may hold line feeds.
    EColourRule colourRule = EColourRule::Direction; ///< Of numbers, unless a cell's format says otherwise.
    int8_t places = 0;                               ///< Decimals of the column's cells until somebody chooses others.
};

} // namespace vx
