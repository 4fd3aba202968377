#include "vxconnect/market/Contracts.h"

#include <array>

#include <fmt/format.h>

namespace vx::sim {

namespace {

struct SProduct {
    std::string_view root;
    std::string_view name;
    double price; // Dollars, of the nearest month.
    double tick;  // Dollars.
    double dayDeviation;
    double volumeMillions;
    int64_t openInterest;
    std::string_view size;
    std::string_view months; // Letters.
};

constexpr std::array<SProduct, 10> kProducts = {{
    {"ES", "Stock Index 500", 4905, 0.25, 0.009, 1.5, 2'200'000, "50 x index", "HMUZ"},
    {"NQ", "Stock Index 100", 17520, 0.25, 0.012, 0.6, 270'000, "20 x index", "HMUZ"},
    {"CL", "Crude Oil", 76, 0.01, 0.018, 0.35, 310'000, "1000 barrels", "FGHJKMNQUVXZ"},
    {"NG", "Natural Gas", 2.1, 0.001, 0.035, 0.15, 250'000, "10000 mmBtu", "FGHJKMNQUVXZ"},
    {"GC", "Gold", 2040, 0.1, 0.008, 0.2, 340'000, "100 troy ounces", "GJMQVZ"},
    {"SI", "Silver", 23, 0.005, 0.016, 0.06, 110'000, "5000 troy ounces", "HKNUZ"},
    {"HG", "Copper", 3.9, 0.0005, 0.012, 0.08, 130'000, "25000 pounds", "HKNUZ"},
    {"ZC", "Corn", 448, 0.25, 0.013, 0.25, 700'000, "5000 bushels", "HKNUZ"},
    {"ZS", "Soybeans", 1222, 0.25, 0.011, 0.2, 350'000, "5000 bushels", "FHKNQUX"},
    {"ZW", "Wheat", 595, 0.25, 0.017, 0.11, 190'000, "5000 bushels", "HKNUZ"},
}};

constexpr std::string_view kMonthLetters = "FGHJKMNQUVXZ"; // January to December.
constexpr std::array<std::string_view, 12> kMonths = {"January",   "February", "March",    "April",
                                                      "May",       "June",     "July",     "August",
                                                      "September", "October",  "November", "December"};

SListing ListingOf(const SProduct& product, int year, int month, int monthsAhead) {
    constexpr double kCarry = 0.003; // What a month more adds to the price.
    SListing out;
    out.symbol = fmt::format("{}{}{:02}", product.root, kMonthLetters[static_cast<size_t>(month - 1)], year % 100);
    out.name = fmt::format("{} {} {}", product.name, kMonths[static_cast<size_t>(month - 1)], year);
    const double share = 1.0 / (1 + monthsAhead); // The nearest months are traded most.
    out.ticker.price = product.price * (1 + kCarry * monthsAhead);
    out.ticker.volumeMillions = product.volumeMillions * share;
    out.terms.kind = EKind::Future;
    out.terms.tick = product.tick;
    out.terms.dayDeviation = product.dayDeviation;
    out.terms.expiration = ThirdFriday(year, month);
    out.terms.firstDelivery = year * 10000 + month * 100 + 1;
    out.terms.root = product.root;
    out.terms.contractSize = product.size;
    for (const char letter : product.months) {
        if (!out.terms.contractMonths.empty()) out.terms.contractMonths += ';';
        out.terms.contractMonths += letter;
    }
    out.terms.openInterest = static_cast<int64_t>(static_cast<double>(product.openInterest) * share);
    return out;
}

} // namespace

bool ForEachFuture(PackedDate start, const ListingVisitor& visit) {
    const PackedDate end = start + 10000; // A year later; only compared with other days.
    for (const SProduct& product : kProducts) {
        int year = start / 10000, month = start / 100 % 100, ahead = 0;
        for (int i = 0; i <= 12; ++i, month == 12 ? (month = 1, ++year) : ++month) {
            const PackedDate expiration = ThirdFriday(year, month);
            const char letter = kMonthLetters[static_cast<size_t>(month - 1)];
            if (product.months.find(letter) == std::string_view::npos || expiration <= start || expiration > end)
                continue;
            if (!visit(ListingOf(product, year, month, ahead++))) return false;
        }
    }
    return true;
}

std::optional<SListing> FindFuture(std::string_view symbol, PackedDate start) {
    std::optional<SListing> out;
    if (symbol.size() == 5)
        ForEachFuture(start, [&](const SListing& listing) {
            if (listing.symbol == symbol) out = listing;
            return !out;
        });
    return out;
}

} // namespace vx::sim
