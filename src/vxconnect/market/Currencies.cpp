#include "vxconnect/market/Currencies.h"

#include <array>

namespace vx::sim {

namespace {

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

SListing ListingOf(const SPair& pair) {
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

} // namespace

bool ForEachCurrency(const ListingVisitor& visit) {
    for (const SPair& pair : kPairs)
        if (!visit(ListingOf(pair))) return false;
    return true;
}

std::optional<SListing> FindCurrency(std::string_view symbol) {
    for (const SPair& pair : kPairs)
        if (pair.symbol == symbol) return ListingOf(pair);
    return std::nullopt;
}

} // namespace vx::sim
