// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/market/Contracts.h"
#include "vxconnect/market/Instrument.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::sim {

constexpr uint32_t kMaxSymbols = 100'000;
/// So many symbols that are not listed are made up, later ones are unknown.
constexpr uint32_t kMaxUnlisted = 100'000;

/// The whole simulated market: which symbols exist, and their instruments, made when first asked for.
///
/// The symbols are the well-known tickers and, when more are asked for, the made-up companies "S00001", "S00002" ...
/// There are also the options and futures of Contracts.h, the funds and currency pairs of Listings.h and, for
/// every well-known share, its delayed listing: the ticker and ".D". All these are listed. What has the form of a
/// ticker and is not listed is made up when it is first asked for, as Listings.h tells; any other text, another case of
/// letters included, is unknown.
///
/// Thread  any one
class CMarket {
public:
    /// A symbol's number: 0 to SymbolCount() - 1 for tickers and companies, the rest have higher ones, given when they
    /// are first asked for.
    using Index = uint32_t;

    /// A count below that of the well-known tickers leaves the last of them out; 0 means all of them and no company.
    /// With listedOnly nothing is made up.
    CMarket(uint64_t seed, uint32_t symbolCount, PackedDate date, bool listedOnly = false);

    /// Tickers and companies.
    uint32_t SymbolCount() const { return m_symbolCount; }
    PackedDate StartDate() const { return m_startDate; }
    uint64_t Seed() const { return m_seed; }
    std::optional<Index> Find(std::string_view symbol);
    /// The same, but nothing for a symbol beside the shares that nobody has asked for yet.
    std::optional<Index> FindKnown(std::string_view symbol) const;
    /// Owns    the market does, for its whole life
    CInstrument& At(Index index);
    SListing Listing(Index index) const;
    /// The well-known tickers that exist; their numbers are their places.
    std::span<const STicker> Tickers() const { return KnownTickers().first(m_known.size()); }

    /// Whether options are listed on a symbol.
    bool HasOptions(const SListing& listing) const;

    /// Calls the visitor with every listed symbol, options last, until it returns false.
    void ForEach(const ListingVisitor& visit) const;

private:
    std::optional<SListing> FindBeside(std::string_view symbol) const;
    std::optional<SListing> FindUnlisted(std::string_view symbol) const;

    uint64_t m_seed;
    uint32_t m_symbolCount;
    PackedDate m_startDate;
    bool m_listedOnly;
    uint32_t m_unlistedCount = 0;
    std::unordered_map<std::string_view, Index> m_known;
    std::vector<SListing> m_beside; // Those that were asked for; the first has the number SymbolCount().
    std::unordered_map<std::string, Index> m_besideBySymbol;
    std::vector<std::unique_ptr<CInstrument>> m_instruments;
};

} // namespace vx::sim
