// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/market/Listings.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace vx::sim {

// Which options and futures exist follows from the first day of the market alone:
//
// Options   on every well-known ticker without a dot: TICKER yymmdd C|P strike ("IBM240216C180"), expiring on the next
//           three third Fridays, strikes the multiples of 1, 5, 10, 25 or 100 dollars within a fifth of the price. With
//           a "1" behind the ticker ("GE1240216C130") the non-standard options of kNonStandardRoots.
// Futures   PRODUCT month-letter yy ("ESH24"), of the product's months those whose third Friday lies after the first
//           day and at most a year later.

/// Whether options are listed on a well-known ticker.
bool HasOptions(const STicker& ticker);

/// The option of a symbol, nothing when there is none.
std::optional<SListing> FindOption(std::string_view symbol, uint64_t seed, PackedDate start,
                                   std::span<const STicker> tickers);

/// Calls the visitor with every option until it returns false; false when it did.
bool ForEachOption(uint64_t seed, PackedDate start, std::span<const STicker> tickers, const ListingVisitor& visit);

/// Calls the visitor with every future until it returns false; false when it did.
bool ForEachFuture(PackedDate start, const ListingVisitor& visit);

} // namespace vx::sim
