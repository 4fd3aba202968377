// SPDX-License-Identifier: MIT
#pragma once

#include "base/fields/FundamentalFields.h"
#include "vxconnect/market/Market.h"

#include <string>

namespace vx::sim {

/// The fundamental ("F") line of a symbol as it stands now, with its line end.
///
/// Shape   "F," and kFundamentalSlotCount fields (docs/vxconnect.md lists them), each followed by a comma; what does
/// not apply is empty Units   prices and amounts in dollars, percents as percents, shares outstanding in thousands,
/// assets, liabilities
///         and debt in millions; dates m/d/yyyy, the ex-dividend date m/d; a split is "ratio m/d/yyyy"
std::string FundamentalLine(CMarket& market, CMarket::Index index);

} // namespace vx::sim
