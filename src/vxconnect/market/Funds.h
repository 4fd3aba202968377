#pragma once

#include "vxconnect/market/Contracts.h"

namespace vx::sim {

/// A mutual fund (five letters that end in X) or money-market fund (in XX); nothing when there is none of this symbol.
std::optional<SListing> FindFund(std::string_view symbol);

/// Calls the visitor with every one of them until it returns false; false when it did.
bool ForEachFund(const ListingVisitor& visit);

} // namespace vx::sim
