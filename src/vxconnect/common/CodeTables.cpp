// SPDX-License-Identifier: MIT
#include "vxconnect/common/CodeTables.h"

#include <array>

namespace vx::sim {

namespace {

constexpr auto kMarkets = std::to_array<SListedMarket>({
    {1, "SIMX", "Simulated Exchange", 1, "EQ"},
    {2, "HARBOR", "Harbor Stock Exchange", 1, "EQ"},
    {3, "SUMMIT", "Summit Fund Exchange", 1, "EQ"},
    {5, "BRIDGE", "Bridge Street Exchange", 1, "EQ"},
    {7, "ALPHA", "Alpha Stock Exchange", 1, "EQ"},
    {8, "LANTERN", "Lantern Trading Floor", 1, "EQ"},
    {11, "MERIDIAN", "Meridian Electronic Market", 1, "EQ"},
    {14, "QUAY", "Quay Regional Exchange", 2, "REG"},
    {17, "PRAIRIE", "Prairie Regional Exchange", 2, "REG"},
    {21, "ORCHARD", "Orchard Dark Pool", 3, "ATS"},
    {25, "COMPASS", "Compass Crossing Network", 3, "ATS"},
    {26, "DELTA", "Delta Market Makers", 3, "ATS"},
    {40, "GRANITE", "Granite Options Exchange", 4, "OPT"},
    {43, "TIMBER", "Timber Futures Exchange", 5, "FUT"},
    {64, "OTCSIM", "Simulated Over The Counter", 6, "OTC"},
    {255, "OTHER", "Other Simulated Market", 9, "OTH"},
});

constexpr auto kTypes = std::to_array<SSecurityType>({
    {kTypeEquity, "EQUITY", "Equity"},
    {kTypeOption, "OPTION", "Equity or Index Option"},
    {kTypeFund, "FUND", "Fund"},
    {kTypeMoneyFund, "MONEY", "Money Market Fund"},
    {5, "BOND", "Bond"},
    {6, "INDEX", "Index"},
    {kTypeFuture, "FUTURE", "Future"},
    {8, "FUTOPTION", "Future Option"},
    {9, "SPOT", "Spot Price"},
    {kTypeCurrency, "FOREX", "Foreign Exchange"},
});

// One entry per draw: the more often a market stands here, the more trades it gets.
constexpr std::array<uint8_t, 16> kCenters = {1, 1, 1, 1, 2, 2, 5, 7, 7, 8, 11, 11, 14, 21, 25, 26};

} // namespace

std::span<const SListedMarket> ListedMarkets() { return kMarkets; }
std::span<const SSecurityType> SecurityTypes() { return kTypes; }

uint8_t SecurityTypeOf(const STerms& terms) {
    switch (terms.kind) {
    case EKind::Option:
        return kTypeOption;
    case EKind::Future:
        return kTypeFuture;
    case EKind::Currency:
        return kTypeCurrency;
    case EKind::MoneyFund:
        return kTypeMoneyFund;
    case EKind::MutualFund:
    case EKind::ExchangeTradedFund:
        return kTypeFund;
    case EKind::Share:
        break;
    }
    return kTypeEquity;
}

uint8_t SubTypeOf(const STerms& terms) {
    if (terms.kind == EKind::ExchangeTradedFund) return kSubTypeExchangeTradedFund;
    return terms.nonStandard ? kSubTypeNonStandardOption : uint8_t{0};
}

uint8_t ListedMarketOf(const STerms& terms, std::string_view symbol) {
    constexpr uint8_t kFunds = 3, kOptions = 40, kFutures = 43, kOverTheCounter = 64;
    if (terms.kind == EKind::Option) return kOptions;
    if (terms.kind == EKind::Future) return kFutures;
    if (terms.IsFund()) return kFunds;
    if (terms.delayMinutes > 0 || terms.kind == EKind::Currency) return kOverTheCounter;
    constexpr std::array<uint8_t, 3> kHomes = {1, 2, 7};
    return kHomes[SymbolSeed(0, symbol) % kHomes.size()];
}

bool IsRestricted(const STerms& terms, double price) { return terms.kind == EKind::Share && price < kRestrictedBelow; }

uint8_t RandomMarketCenter(CRandom& random) { return kCenters[random.Below(kCenters.size())]; }

} // namespace vx::sim
