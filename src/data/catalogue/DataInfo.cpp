// SPDX-License-Identifier: MIT
#include "data/catalogue/DataInfo.h"

#include "base/fields/FundamentalFields.h"
#include "base/fields/QuoteFields.h"

namespace vx {

namespace {

struct SOldName {
    std::string_view name;
    int places;
};

// Of columns that have other names now, to which they give nothing.
constexpr SOldName kOldNames[] = {{"ET Change", 4}, {"Strike", 2}};

std::optional<int> Chosen(int places) { return places == kGridPlaces ? std::nullopt : std::optional(places); }

} // namespace

std::optional<int> CDataInfo::DecimalPlaces(std::string_view name) {
    for (const SUpdateField& field : kUpdateFields)
        for (const SFieldColumn& column : field.columns)
            if (!name.empty() && column.name == name) return Chosen(column.places);
    for (const SFundamentalField& field : kFundamentalFields)
        if (field.name == name) return Chosen(field.places);
    for (const SOldName& old : kOldNames)
        if (old.name == name) return old.places;
    return std::nullopt;
}

} // namespace vx
