#pragma once

#include "vxconnect/DataRecord.h"

namespace vx::sim {

/// The figures of a quote that follow from others, for data that do not hold them: Change, Percent Change, Change From
/// Open, Range, Spread and, when the row holds a last price, Tick. Only those whose parts the row touches, and only as
/// far as they can be worked out.
///
/// Shape   before: the last price before the row, empty for none
std::vector<SRowValue> DerivedFigures(const CDataRecord& record, const CFieldMask& touched, std::string_view before);

/// The decimals that a price is meant to have: those of its text, at most 6; what a program's arithmetic left behind
/// them (10.299999999999999) does not count.
size_t PlacesShown(std::string_view number);

} // namespace vx::sim
