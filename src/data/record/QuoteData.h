#pragma once

#include "data/record/FieldBlock.h"

namespace vx {

/// The latest value of every field of the update layout. Slots are positions in kUpdateFields.
class CQuoteData : public CFieldBlock<kUpdateLayout, kQuoteValueCount, kQuoteTextCount> {};

/// The latest value of every field of a fundamental line. Slots are those of FundamentalSlot.
class CFundamentalData : public CFieldBlock<kFundamentalLayout, kFundamentalValueCount, kFundamentalTextCount> {};

/// The latest value of every field of a regional line. Slots are positions in kRegionFields.
class CRegionData : public CFieldBlock<kRegionLayout, kRegionFieldCount, kRegionTextCount> {};

} // namespace vx
