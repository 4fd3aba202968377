#include "vxconnect/market/Unlisted.h"

#include "vxconnect/common/Random.h"

#include <algorithm>

#include <fmt/format.h>

namespace vx::sim {

namespace {

constexpr size_t kMostLetters = 5;

bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }

SListing Fund(std::string_view symbol, uint64_t seed) {
    CRandom random(SymbolSeed(seed, symbol));
    SListing out;
    out.symbol = symbol;
    const bool money = symbol.ends_with("XX");
    out.name = fmt::format("{} {} Fund", symbol, money ? "Money Market" : "Mutual");
    out.ticker.sector = ESector::Fund;
    out.ticker.price = money ? 1 : random.Between(8, 90);
    out.terms.kind = money ? EKind::MoneyFund : EKind::MutualFund;
    out.terms.tick = money ? 0.0001 : 0.01;
    return out;
}

} // namespace

std::optional<SListing> MakeUnlisted(std::string_view symbol, uint64_t seed) {
    const std::string_view letters = symbol.substr(0, symbol.find('.'));
    const std::string_view shareClass = symbol.substr(letters.size());
    if (letters.empty() || letters.size() > kMostLetters || !std::all_of(letters.begin(), letters.end(), IsLetter))
        return std::nullopt;
    if (!shareClass.empty() && (shareClass.size() != 2 || !IsLetter(shareClass[1]))) return std::nullopt;
    if (letters.size() == kMostLetters && letters.back() == 'X' && shareClass.empty()) return Fund(symbol, seed);

    SMadeUpTicker made = MakeTicker(std::string(symbol), std::string(letters), seed);
    if (!shareClass.empty()) made.name += fmt::format(" Class {}", shareClass[1]);
    return SListing{std::move(made.symbol), std::move(made.name), made.ticker, {}};
}

} // namespace vx::sim
