// SPDX-License-Identifier: MIT
#include "vxconnect/market/Listings.h"

#include "vxconnect/common/Random.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

namespace vx::sim {

namespace {

struct SFund {
    std::string_view symbol;
    std::string_view name;
    EKind kind;
    double price; // Dollars.
};

constexpr std::array<SFund, 8> kFunds = {{
    {"SIMGX", "Simulated Growth Fund", EKind::MutualFund, 42.1},
    {"SIMIX", "Simulated Income Fund", EKind::MutualFund, 11.2},
    {"SIMBX", "Simulated Balanced Fund", EKind::MutualFund, 27.5},
    {"HRBEX", "Harbor Equity Fund", EKind::MutualFund, 63.0},
    {"WLDEX", "World Equity Fund", EKind::MutualFund, 18.9},
    {"SIMXX", "Simulated Cash Reserves", EKind::MoneyFund, 1},
    {"HRBXX", "Harbor Money Market Fund", EKind::MoneyFund, 1},
    {"TBLXX", "Treasury Bill Cash Fund", EKind::MoneyFund, 1},
}};

struct SPair {
    std::string_view symbol;
    std::string_view name;
    std::string_view currency; // The one that is priced.
    double price;
    double tick;
};

constexpr std::array<SPair, 2> kPairs = {{
    {"EURUSD", "Euro / US Dollar", "EUR", 1.0845, 0.00001},
    {"USDJPY", "US Dollar / Japanese Yen", "USD", 147.6, 0.001},
}};

SListing FundOf(std::string_view symbol, std::string_view name, EKind kind, double price) {
    SListing out;
    out.symbol = symbol;
    out.name = name;
    out.ticker.sector = ESector::Fund;
    out.ticker.price = price;
    out.terms.kind = kind;
    out.terms.tick = kind == EKind::MoneyFund ? 0.0001 : 0.01;
    return out;
}

SListing PairOf(const SPair& pair) {
    constexpr double kDayDeviation = 0.005, kVolumeMillions = 2000;
    SListing out;
    out.symbol = pair.symbol;
    out.name = pair.name;
    out.ticker.price = pair.price;
    out.ticker.volumeMillions = kVolumeMillions;
    out.terms.kind = EKind::Currency;
    out.terms.tick = pair.tick;
    out.terms.dayDeviation = kDayDeviation;
    out.terms.currency = pair.currency;
    return out;
}

bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }

SListing UnlistedFund(std::string_view symbol, uint64_t seed) {
    if (symbol.ends_with("XX")) return FundOf(symbol, fmt::format("{} Money Market Fund", symbol), EKind::MoneyFund, 1);
    CRandom random(SymbolSeed(seed, symbol));
    return FundOf(symbol, fmt::format("{} Mutual Fund", symbol), EKind::MutualFund, random.Between(8, 90));
}

} // namespace

bool ForEachFundAndPair(const ListingVisitor& visit) {
    for (const SFund& fund : kFunds)
        if (!visit(FundOf(fund.symbol, fund.name, fund.kind, fund.price))) return false;
    return std::ranges::all_of(kPairs, [&](const SPair& pair) { return visit(PairOf(pair)); });
}

std::optional<SListing> MakeUnlisted(std::string_view symbol, uint64_t seed) {
    constexpr size_t kMostLetters = 5;
    const std::string_view letters = symbol.substr(0, symbol.find('.'));
    const std::string_view shareClass = symbol.substr(letters.size());
    if (letters.empty() || letters.size() > kMostLetters || !std::ranges::all_of(letters, IsLetter))
        return std::nullopt;
    if (!shareClass.empty() && (shareClass.size() != 2 || !IsLetter(shareClass[1]))) return std::nullopt;
    if (letters.size() == kMostLetters && letters.back() == 'X' && shareClass.empty())
        return UnlistedFund(symbol, seed);

    SMadeUpTicker made = MakeTicker(std::string(symbol), std::string(letters), seed);
    if (!shareClass.empty()) made.name += fmt::format(" Class {}", shareClass[1]);
    return SListing{std::move(made.symbol), std::move(made.name), made.ticker, {}};
}

} // namespace vx::sim
