#include "vxconnect/market/Funds.h"

#include <array>

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

SListing ListingOf(const SFund& fund) {
    SListing out;
    out.symbol = fund.symbol;
    out.name = fund.name;
    out.ticker.sector = ESector::Fund;
    out.ticker.price = fund.price;
    out.terms.kind = fund.kind;
    out.terms.tick = fund.kind == EKind::MoneyFund ? 0.0001 : 0.01;
    return out;
}

} // namespace

bool ForEachFund(const ListingVisitor& visit) {
    for (const SFund& fund : kFunds)
        if (!visit(ListingOf(fund))) return false;
    return true;
}

std::optional<SListing> FindFund(std::string_view symbol) {
    for (const SFund& fund : kFunds)
        if (fund.symbol == symbol) return ListingOf(fund);
    return std::nullopt;
}

} // namespace vx::sim
