// SPDX-License-Identifier: MIT
#include "vxconnect/market/Market.h"

#include <algorithm>

namespace vx::sim {

namespace {

constexpr int kDelayMinutes = 15;
constexpr std::string_view kDelayedSuffix = ".D";

STerms TermsOf(const STicker& ticker) {
    STerms out;
    if (ticker.sector == ESector::Fund) out.kind = EKind::ExchangeTradedFund;
    return out;
}

bool HasDelayedListing(const STicker& ticker) { return ticker.sector != ESector::Fund; }

SListing ListingOf(const STicker& ticker) {
    return {std::string(ticker.symbol), std::string(ticker.name), ticker, TermsOf(ticker)};
}

SListing Delayed(SListing listing) {
    listing.terms.prompt = listing.symbol;
    listing.terms.delayMinutes = kDelayMinutes;
    listing.symbol += kDelayedSuffix;
    listing.name += " (delayed)";
    return listing;
}

} // namespace

CMarket::CMarket(uint64_t seed, uint32_t symbolCount, PackedDate date, bool listedOnly)
    : m_seed(seed), m_startDate(date), m_listedOnly(listedOnly) {
    const auto known = KnownTickers();
    m_symbolCount = symbolCount == 0 ? static_cast<uint32_t>(known.size()) : std::min(symbolCount, kMaxSymbols);
    const size_t used = std::min<size_t>(known.size(), m_symbolCount);
    for (size_t i = 0; i < used; ++i) m_known.emplace(known[i].symbol, static_cast<Index>(i));
    m_instruments.resize(m_symbolCount);
}

std::optional<CMarket::Index> CMarket::FindKnown(std::string_view symbol) const {
    if (const auto found = m_known.find(symbol); found != m_known.end()) return found->second;
    if (const uint32_t number = MadeUpNumber(symbol); number != 0 && m_known.size() + number <= m_symbolCount)
        return static_cast<Index>(m_known.size() + number - 1);
    const auto found = m_besideBySymbol.find(std::string(symbol));
    return found == m_besideBySymbol.end() ? std::nullopt : std::optional(found->second);
}

std::optional<CMarket::Index> CMarket::Find(std::string_view symbol) {
    if (const auto known = FindKnown(symbol)) return known;
    std::optional<SListing> beside = FindBeside(symbol);
    if (!beside && !m_listedOnly && m_unlistedCount < kMaxUnlisted) {
        beside = FindUnlisted(symbol);
        m_unlistedCount += beside.has_value();
    }
    if (!beside) return std::nullopt;
    const auto index = static_cast<Index>(m_instruments.size());
    m_besideBySymbol.emplace(symbol, index);
    m_beside.push_back(std::move(*beside));
    m_instruments.emplace_back();
    return index;
}

std::optional<SListing> CMarket::FindBeside(std::string_view symbol) const {
    if (symbol.ends_with(kDelayedSuffix)) {
        const auto found = m_known.find(symbol.substr(0, symbol.size() - kDelayedSuffix.size()));
        if (found == m_known.end() || !HasDelayedListing(KnownTickers()[found->second])) return std::nullopt;
        return Delayed(ListingOf(KnownTickers()[found->second]));
    }
    std::optional<SListing> out;
    const auto take = [&](const SListing& listing) {
        if (listing.symbol == symbol) out = listing;
        return !out;
    };
    // "SIMGX", "ESH24", "EURUSD". The options are too many to look through.
    const bool mayBe = symbol.size() == 5 || symbol.size() == 6;
    if (mayBe && !(ForEachFundAndPair(take) && ForEachFuture(m_startDate, take))) return out;
    return FindOption(symbol, m_seed, m_startDate, Tickers());
}

// A well-known ticker that is left out of the list keeps its name and its price.
std::optional<SListing> CMarket::FindUnlisted(std::string_view symbol) const {
    const auto known = KnownTickers();
    const auto found = std::find_if(known.begin(), known.end(), [&](const STicker& t) { return t.symbol == symbol; });
    if (found != known.end()) return ListingOf(*found);
    if (!symbol.ends_with(kDelayedSuffix)) return MakeUnlisted(symbol, m_seed);
    auto prompt = FindUnlisted(symbol.substr(0, symbol.size() - kDelayedSuffix.size()));
    if (!prompt || prompt->terms.IsFund() || prompt->terms.delayMinutes > 0) return std::nullopt;
    return Delayed(std::move(*prompt));
}

bool CMarket::HasOptions(const SListing& listing) const {
    return m_known.count(listing.symbol) != 0 && vx::sim::HasOptions(listing.ticker);
}

SListing CMarket::Listing(Index index) const {
    const auto known = KnownTickers();
    if (index >= m_symbolCount) return m_beside[index - m_symbolCount];
    if (index < m_known.size()) return ListingOf(known[index]);
    SMadeUpTicker made = MakeTicker(static_cast<uint32_t>(index - m_known.size() + 1), m_seed);
    return {std::move(made.symbol), std::move(made.name), made.ticker, {}};
}

CInstrument& CMarket::At(Index index) {
    std::unique_ptr<CInstrument>& slot = m_instruments[index];
    if (!slot) {
        SListing listing = Listing(index);
        slot = std::make_unique<CInstrument>(std::move(listing.symbol), listing.ticker, std::move(listing.terms),
                                             m_seed, m_startDate);
    }
    return *slot;
}

void CMarket::ForEach(const ListingVisitor& visit) const {
    for (Index i = 0; i < m_symbolCount; ++i)
        if (!visit(Listing(i))) return;
    if (!ForEachFundAndPair(visit) || !ForEachFuture(m_startDate, visit)) return;
    for (const STicker& ticker : Tickers())
        if (HasDelayedListing(ticker) && !visit(Delayed(ListingOf(ticker)))) return;
    ForEachOption(m_seed, m_startDate, Tickers(), visit);
}

} // namespace vx::sim
