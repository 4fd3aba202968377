// SPDX-License-Identifier: MIT
#include "vxconnect/market/Contracts.h"

#include "vxconnect/common/Random.h"
#include "vxconnect/market/Tickers.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

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

namespace {

constexpr std::array<std::string_view, 3> kNonStandardRoots = {"C", "GE", "T"};
constexpr int kExpirations = 3;
constexpr int kShares = 100;
constexpr int kNonStandardShares = 150;

struct SOption {
    const STicker* underlying;
    bool nonStandard;
    PackedDate expiration;
    bool call;
    int strike; // Dollars.
};

std::array<PackedDate, kExpirations> Expirations(PackedDate start) {
    std::array<PackedDate, kExpirations> out{};
    int year = start / 10000, month = start / 100 % 100;
    for (int found = 0; found < kExpirations; month == 12 ? (month = 1, ++year) : ++month)
        if (const PackedDate day = ThirdFriday(year, month); day > start) out[static_cast<size_t>(found++)] = day;
    return out;
}

int StrikeStep(double price) { return price < 25 ? 1 : price < 100 ? 5 : price < 250 ? 10 : price < 1000 ? 25 : 100; }

bool HasStrike(double price, int strike) {
    return strike > 0 && strike % StrikeStep(price) == 0 && strike >= price * 0.8 && strike <= price * 1.2;
}

bool HasNonStandard(const STicker& ticker) {
    return std::find(kNonStandardRoots.begin(), kNonStandardRoots.end(), ticker.symbol) != kNonStandardRoots.end();
}

double NormalShare(double x) { return 0.5 * std::erfc(-x / std::sqrt(2.0)); }

// What the option is worth without interest, and how much more its price moves than the share's.
//
// Source  Black, Scholes: The Pricing of Options and Corporate Liabilities, 1973
struct SWorth {
    double price;
    double leverage;
};
SWorth WorthOf(const SOption& option, PackedDate start, double dayDeviation) {
    const double share = option.underlying->price, strike = option.strike;
    const double days = std::max(1, DaysBetween(start, option.expiration));
    const double deviation = dayDeviation * std::sqrt(252.0 * days / 365);
    const double d1 = std::log(share / strike) / deviation + deviation / 2, d2 = d1 - deviation;
    const double call = share * NormalShare(d1) - strike * NormalShare(d2);
    const double price = std::max(0.1, option.call ? call : call - share + strike);
    const double delta = option.call ? NormalShare(d1) : 1 - NormalShare(d1);
    return {price, delta * share / price};
}

std::string SymbolOf(const SOption& option) {
    return fmt::format("{}{}{:06}{}{}", option.underlying->symbol, option.nonStandard ? "1" : "",
                       option.expiration % 1'000'000, option.call ? 'C' : 'P', option.strike);
}

SListing ListingOf(const SOption& option, uint64_t seed, PackedDate start) {
    constexpr double kLeastMove = 0.03, kMostMove = 0.2;
    SListing out;
    out.symbol = SymbolOf(option);
    const PackedDate day = option.expiration;
    out.name = fmt::format("{} {:02}/{:02}/{:02} {} {}", option.underlying->symbol, day / 100 % 100, day % 100,
                           day / 10000 % 100, option.call ? "Call" : "Put", option.strike);
    const double dayDeviation = SectorOf(option.underlying->sector).dayDeviation;
    const SWorth worth = WorthOf(option, start, dayDeviation);
    CRandom random(SymbolSeed(seed + 2, out.symbol));
    out.ticker.sector = option.underlying->sector;
    out.ticker.price = worth.price;
    out.ticker.volumeMillions = random.Between(0.0005, 0.01);
    out.terms.kind = EKind::Option;
    out.terms.dayDeviation = std::clamp(dayDeviation * worth.leverage, kLeastMove, kMostMove);
    out.terms.expiration = option.expiration;
    out.terms.strike = option.strike;
    out.terms.root = option.underlying->symbol;
    out.terms.nonStandard = option.nonStandard;
    out.terms.multiplier = kShares;
    out.terms.contractSize = fmt::format("{} shares", option.nonStandard ? kNonStandardShares : kShares);
    out.terms.openInterest = 200 + random.Below(20'000);
    return out;
}

// Cuts the last so many bytes off; empty when there are not enough.
std::string_view TakeTail(std::string_view& text, size_t bytes) {
    if (text.size() < bytes) return {};
    const std::string_view tail = text.substr(text.size() - bytes);
    text.remove_suffix(bytes);
    return tail;
}

bool AllDigits(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

int NumberOf(std::string_view digits) {
    int value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

} // namespace

bool HasOptions(const STicker& ticker) { return ticker.symbol.find('.') == std::string_view::npos; }

std::optional<SListing> FindOption(std::string_view symbol, uint64_t seed, PackedDate start,
                                   std::span<const STicker> tickers) {
    const size_t side = symbol.find_last_of("CP");
    if (side == std::string_view::npos) return std::nullopt;
    const std::string_view strike = symbol.substr(side + 1);
    std::string_view root = symbol.substr(0, side);
    const std::string_view day = TakeTail(root, 6);
    if (!AllDigits(strike) || strike.size() > 6 || !AllDigits(day)) return std::nullopt;
    const bool nonStandard = !root.empty() && root.back() == '1';
    if (nonStandard) root.remove_suffix(1);
    const auto found = std::find_if(tickers.begin(), tickers.end(), [&](const STicker& t) { return t.symbol == root; });
    if (found == tickers.end() || !HasOptions(*found) || (nonStandard && !HasNonStandard(*found))) return std::nullopt;
    const SOption option = {&*found, nonStandard, 20'000'000 + NumberOf(day), symbol[side] == 'C', NumberOf(strike)};
    const auto expirations = Expirations(start);
    if (std::find(expirations.begin(), expirations.end(), option.expiration) == expirations.end()) return std::nullopt;
    if (!HasStrike(found->price, option.strike) || SymbolOf(option) != symbol) return std::nullopt;
    return ListingOf(option, seed, start);
}

bool ForEachOption(uint64_t seed, PackedDate start, std::span<const STicker> tickers, const ListingVisitor& visit) {
    const auto expirations = Expirations(start);
    for (const STicker& ticker : tickers) {
        if (!HasOptions(ticker)) continue;
        const int step = StrikeStep(ticker.price);
        for (const bool nonStandard : {false, true}) {
            if (nonStandard && !HasNonStandard(ticker)) continue;
            for (const PackedDate expiration : expirations)
                for (int strike = step; strike <= ticker.price * 1.2; strike += step)
                    for (const bool call : {true, false})
                        if (HasStrike(ticker.price, strike) &&
                            !visit(ListingOf({&ticker, nonStandard, expiration, call, strike}, seed, start)))
                            return false;
        }
    }
    return true;
}

} // namespace vx::sim
