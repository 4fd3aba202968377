// SPDX-License-Identifier: MIT
#include "data/text/DrawnNumber.h"

#include "data/record/L1SymbolRec.h"
#include "data/text/CellText.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vx {

namespace {

constexpr std::array kDayPrices = {EField::Last,        EField::Bid,           EField::Ask,   EField::Open,
                                   EField::High,        EField::Low,           EField::Close, EField::Settle,
                                   EField::RecentTrade, EField::ExtendedTrade, EField::Vwap};

bool IsDayPrice(const SFieldEntry& entry) {
    return entry.source == ESource::Quote && std::ranges::find(kDayPrices, EField{entry.slot}) != kDayPrices.end();
}

std::optional<double> Price(const CL1SymbolRec& record, EField field) {
    const auto slot = static_cast<size_t>(field);
    const double price = record.Quote().Number(slot);
    if (record.Quote().Direction(slot) == EDirection::NeverSet || !std::isfinite(price) || price == 0) return {};
    return price;
}

} // namespace

bool CanShow(const SFieldEntry& entry, ECellKind kind) {
    switch (kind) {
    case ECellKind::Bar:
    case ECellKind::Heat:
        return entry.source != ESource::None && IsNumberClass(entry.valueClass);
    case ECellKind::Range:
        return IsDayPrice(entry);
    default:
        return true;
    }
}

// A format with a plus is that of a number whose sign is meant to be seen.
bool HasTwoSides(const SFieldEntry& entry) {
    return entry.colourRule == EColourRule::Sign || entry.format.starts_with("%+");
}

std::optional<double> DrawnNumber(const CSymbolRec& record, const SFieldEntry& entry) {
    if (!IsNumberClass(entry.valueClass) || CellDirection(record, entry) == EDirection::NeverSet) return std::nullopt;
    if (entry.valueClass == EValueClass::FourPlaces) return CellTextNumber(record, entry, 4);
    return CellNumber(record, entry);
}

std::optional<SDayRange> DayRange(const CSymbolRec& record) {
    if (record.AsRegion()) return std::nullopt;
    const CL1SymbolRec& base = record.Base();
    const std::optional<double> low = Price(base, EField::Low);
    const std::optional<double> high = Price(base, EField::High);
    if (!low || !high || *low >= *high) return std::nullopt;
    const auto between = [&](EField field) -> std::optional<double> {
        const std::optional<double> price = Price(base, field);
        if (!price || *price < *low || *price > *high) return std::nullopt;
        // Halves, because the difference of two numbers may be greater than the greatest number.
        return (*price / 2 - *low / 2) / (*high / 2 - *low / 2);
    };
    return SDayRange{between(EField::Open), between(EField::Last)};
}

} // namespace vx
