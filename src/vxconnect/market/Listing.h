#pragma once

#include "vxconnect/common/Terms.h"
#include "vxconnect/market/Tickers.h"

#include <string>

namespace vx::sim {

/// What the market knows of a symbol apart from its prices.
struct SListing {
    std::string symbol;
    std::string name;
    STicker ticker; ///< Its two texts may be empty; those above count.
    STerms terms;
};

} // namespace vx::sim
