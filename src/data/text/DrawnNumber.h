// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/CellKind.h"
#include "data/catalogue/FieldEntry.h"

#include <optional>

namespace vx {

class CSymbolRec;

/// Whether the cells of a column can be shown as something: numbers as bars and heat, prices of the day as a range.
bool CanShow(const SFieldEntry& entry, ECellKind kind);

/// Whether the numbers of a column lie on both sides of zero by their meaning, as differences do.
bool HasTwoSides(const SFieldEntry& entry);

/// The number of a cell; nothing for one that was never set, and in columns without numbers.
std::optional<double> DrawnNumber(const CSymbolRec& record, const SFieldEntry& entry);

/// Where a day's prices lie between the lowest and the highest one.
///
/// Units   0 at the lowest, 1 at the highest; nothing for a price that is missing or lies outside
struct SDayRange {
    std::optional<double> open;
    std::optional<double> last;
};

/// The range of the day; nothing while Low or High is missing (0 is what a feed sends for a price that it does not
/// have), not finite, or both are the same. A regional quote has none.
std::optional<SDayRange> DayRange(const CSymbolRec& record);

} // namespace vx
