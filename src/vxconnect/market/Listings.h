// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/CodeTables.h"
#include "vxconnect/market/Tickers.h"

#include <cstdint>
#include <functional>
#include <optional>
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

using ListingVisitor = std::function<bool(const SListing&)>;

/// Calls the visitor with every fund (mutual: five letters that end in X; money market: in XX) and every currency pair
/// ("EURUSD", priced in the second of its currencies) until it returns false; false when it did.
bool ForEachFundAndPair(const ListingVisitor& visit);

/// Makes up what has the form of a ticker but is not listed, the same each time for the same symbol and seed: one to
/// five letters A to Z, with "." and one letter after them for a class of shares. Five letters that end in X are a
/// mutual fund, in XX a money-market fund, anything else a share. Nothing for any other text.
std::optional<SListing> MakeUnlisted(std::string_view symbol, uint64_t seed);

} // namespace vx::sim
