#pragma once

#include "vxconnect/common/Terms.h"
#include "vxconnect/market/Tickers.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vx::sim {

/// What the market knows of a symbol apart from its prices.
struct SListing {
    std::string symbol;
    std::string name;
    STicker ticker; ///< Its two texts may be empty; those above count.
    STerms terms;
};

// Which options and futures exist follows from the first day of the market alone:
//
// Options   on every well-known ticker without a dot: TICKER yymmdd C|P strike ("IBM240216C180"), expiring on the next
//           three third Fridays, strikes the multiples of 1, 5, 10, 25 or 100 dollars within a fifth of the price. With
//           a "1" behind the ticker ("GE1240216C130") the non-standard options of kNonStandardRoots.
// Futures   PRODUCT month-letter yy ("ESH24"), of the product's months those whose third Friday lies after the first
//           day and at most a year later.

using ListingVisitor = std::function<bool(const SListing&)>;

/// Whether options are listed on a well-known ticker.
bool HasOptions(const STicker& ticker);

/// The option of a symbol, nothing when there is none.
std::optional<SListing> FindOption(std::string_view symbol, uint64_t seed, PackedDate start,
                                   std::span<const STicker> tickers);

/// Calls the visitor with every option until it returns false; false when it did.
bool ForEachOption(uint64_t seed, PackedDate start, std::span<const STicker> tickers, const ListingVisitor& visit);

/// The future of a symbol, nothing when there is none.
std::optional<SListing> FindFuture(std::string_view symbol, PackedDate start);

/// Calls the visitor with every future until it returns false; false when it did.
bool ForEachFuture(PackedDate start, const ListingVisitor& visit);

} // namespace vx::sim
