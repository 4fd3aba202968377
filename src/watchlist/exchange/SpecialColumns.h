#pragma once

#include "data/catalogue/FieldEntry.h"

#include <span>

namespace vx {

/// The columns that the view treats in a way of their own, by their place in the catalogue.
///
/// Shape   catalogue indices; kNoColumn for a column that the catalogue does not have
struct SSpecialColumns {
    static constexpr int kNoColumn = -1;

    int symbol = kNoColumn;
    int alerts = kNoColumn;
    int notes = kNoColumn;
    int tickTrend = kNoColumn;
    int bidTick = kNoColumn;
    int exchange = kNoColumn;
    int news = kNoColumn;
    int latestHeadline = kNoColumn;
    int last = kNoColumn;
    int ask = kNoColumn;
    int bid = kNoColumn;

    bool operator==(const SSpecialColumns&) const = default;
};

/// Looks for the special columns by their names, from the last entry of a catalogue down to entry 1. Entry 0, the row
/// numbers, is never one of them.
SSpecialColumns FindSpecialColumns(std::span<const SFieldEntry> catalogue);

} // namespace vx
