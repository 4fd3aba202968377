// SPDX-License-Identifier: MIT
#include "data/catalogue/Catalogue.h"

#include "data/catalogue/CellFormat.h"
#include "data/catalogue/DataInfo.h"
#include "data/catalogue/Level1Columns.h"

#include <algorithm>

namespace vx {

namespace {

constexpr SFieldEntry OwnColumn(std::string_view name, std::string_view description, EFieldGroup group) {
    return {name, "%s", EValueClass::Text, group, ESource::None, 0, kNoRegionSlot, description};
}

constexpr std::array<SFieldEntry, kOwnColumnCount> kOwnColumns = {
    OwnColumn("Alerts", "Price/News Alerts set for the symbol", EFieldGroup::Own),
    OwnColumn("Notes", "User entered notes", EFieldGroup::Own),
    OwnColumn("News", "Number of News stories for the current day", EFieldGroup::Own),
    OwnColumn("Latest Headline", "Displays Latest Headline for symbol since the Watchlist was opened",
              EFieldGroup::Own),
};

SFieldEntry FundamentalColumn(size_t row) {
    const SFundamentalField& field = kFundamentalFields[row];
    const ESource source = field.rule == EParseRule::None ? ESource::SplitDate : ESource::Fundamental;
    return {field.name,       field.format,
            field.valueClass, EFieldGroup::Fundamental,
            source,           static_cast<uint8_t>(FundamentalSlotOfRow(row)),
            kNoRegionSlot,    field.description};
}

std::array<SFieldEntry, kCatalogueSize> Build() {
    std::array<SFieldEntry, kCatalogueSize> all;
    auto out = all.begin();
    *out++ = OwnColumn(" ", "", EFieldGroup::RowNumber);
    out = std::ranges::copy(Level1Columns(), out).out;
    for (size_t row = 0; row < kFundamentalColumnCount; ++row) *out++ = FundamentalColumn(row);
    std::ranges::copy(kOwnColumns, out);
    for (SFieldEntry& entry : all)
        entry.places = static_cast<int8_t>(CDataInfo::DecimalPlaces(entry.name).value_or(kUnchosenDecimals));
    return all;
}

} // namespace

std::span<const SFieldEntry, kCatalogueSize> Catalogue() {
    static const std::array<SFieldEntry, kCatalogueSize> all = Build();
    return all;
}

int FieldIndex(std::string_view name) {
    const auto all = Catalogue();
    const auto found = std::ranges::find(all, name, &SFieldEntry::name);
    return found == all.end() ? kNoField : static_cast<int>(found - all.begin());
}

const SFieldEntry* FindField(std::string_view name) {
    const int index = FieldIndex(name);
    return index == kNoField ? nullptr : &Catalogue()[static_cast<size_t>(index)];
}

} // namespace vx
