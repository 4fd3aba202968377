#pragma once

#include "vxconnect/data/DataRecord.h"

namespace vx::sim {

/// The figures of a quote that follow from others, for data that do not hold them: Change, Percent Change, Change From
/// Open, Range, Spread and, when the row holds a last price, Tick. Only those whose parts the row touches, and only as
/// far as they can be worked out.
///
/// Shape   before: the last price before the row, empty for none
std::vector<SRowValue> DerivedFigures(const CDataRecord& record, const CFieldMask& touched, std::string_view before);

/// The decimals of a price as it was meant: those of its text, at most 6, without the digits that a program's
/// arithmetic has added (10.299999999999999 has 1).
size_t PlacesShown(std::string_view number);

} // namespace vx::sim
