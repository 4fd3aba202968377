// SPDX-License-Identifier: MIT
#include "data/catalogue/Level1Columns.h"

#include "data/catalogue/RegionFields.h"

#include <algorithm>

namespace vx {

namespace {

struct SPlaced {
    int place = 0;
    SFieldEntry entry;
};

constexpr int8_t RegionSlotOf(std::string_view field) {
    if (field.empty()) return kNoRegionSlot;
    const auto found = std::ranges::find(kRegionFields, field, &SRegionField::name);
    if (found == kRegionFields.end()) throw "no regional field has this name";
    return static_cast<int8_t>(found - kRegionFields.begin());
}

constexpr SPlaced Placed(size_t slot, const SFieldColumn& column) {
    SPlaced out;
    out.place = column.place;
    out.entry.name = column.name;
    out.entry.format = column.format;
    out.entry.valueClass = column.valueClass;
    out.entry.group = EFieldGroup::Level1;
    out.entry.source = column.shows == EColumnShows::MarketName ? ESource::MarketName : ESource::Quote;
    out.entry.slot = static_cast<uint8_t>(slot);
    out.entry.regionSlot = RegionSlotOf(column.region);
    out.entry.description = column.description;
    out.entry.colourRule = column.shows == EColumnShows::Difference ? EColourRule::Sign : EColourRule::Direction;
    return out;
}

constexpr auto kEntries = [] {
    std::array<SPlaced, kLevel1ColumnCount> placed;
    size_t count = 0;
    for (size_t slot = 0; slot < kUpdateFieldCount; ++slot)
        for (const SFieldColumn& column : kUpdateFields[slot].columns)
            if (!column.name.empty()) placed[count++] = Placed(slot, column);
    std::ranges::sort(placed, {}, &SPlaced::place);
    if (std::ranges::adjacent_find(placed, {}, &SPlaced::place) != placed.end()) throw "two columns have one place";
    std::array<SFieldEntry, kLevel1ColumnCount> entries;
    std::ranges::transform(placed, entries.begin(), &SPlaced::entry);
    return entries;
}();

} // namespace

std::span<const SFieldEntry, kLevel1ColumnCount> Level1Columns() { return kEntries; }

} // namespace vx
