#pragma once

#include "vxconnect/Instrument.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::sim {

constexpr uint32_t kMaxSymbols = 100'000;

/// The whole simulated market: which symbols exist, and their instruments, made when first asked for.
///
/// The symbols are the well-known tickers and, when more are asked for, the made-up companies "S00001", "S00002" ...
/// Any other text, another case of letters included, is unknown.
///
/// Thread  any one
class CMarket {
public:
    /// A symbol's number, 0 to SymbolCount() - 1.
    using Index = uint32_t;

    /// A count below that of the well-known tickers leaves the last of them out; 0 means all of them and no other.
    CMarket(uint64_t seed, uint32_t symbolCount, PackedDate date);

    uint32_t SymbolCount() const { return m_symbolCount; }
    PackedDate StartDate() const { return m_startDate; }
    uint64_t Seed() const { return m_seed; }
    std::optional<Index> Find(std::string_view symbol) const;
    /// Owns    the market does, for its whole life
    CInstrument& At(Index index);

    /// What the market knows of a symbol apart from its prices.
    struct SListing {
        std::string symbol;
        std::string name;
        STicker ticker; ///< Its two texts may be empty; those above count.
    };
    SListing Listing(Index index) const;

private:
    uint64_t m_seed;
    uint32_t m_symbolCount;
    PackedDate m_startDate;
    std::unordered_map<std::string_view, Index> m_known;
    std::vector<std::unique_ptr<CInstrument>> m_instruments;
};

} // namespace vx::sim
