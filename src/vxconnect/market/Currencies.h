#pragma once

#include "vxconnect/market/Contracts.h"

namespace vx::sim {

/// A currency pair ("EURUSD"), priced in the second of its currencies; nothing when there is none of this symbol.
std::optional<SListing> FindCurrency(std::string_view symbol);

/// Calls the visitor with every one of them until it returns false; false when it did.
bool ForEachCurrency(const ListingVisitor& visit);

} // namespace vx::sim
