#include "vxconnect/Market.h"

#include <algorithm>

namespace vx::sim {

CMarket::CMarket(uint64_t seed, uint32_t symbolCount, PackedDate date) : m_seed(seed), m_startDate(date) {
    const auto known = KnownTickers();
    m_symbolCount = symbolCount == 0 ? static_cast<uint32_t>(known.size()) : std::min(symbolCount, kMaxSymbols);
    const size_t used = std::min<size_t>(known.size(), m_symbolCount);
    for (size_t i = 0; i < used; ++i) m_known.emplace(known[i].symbol, static_cast<Index>(i));
    m_instruments.resize(m_symbolCount);
}

std::optional<CMarket::Index> CMarket::Find(std::string_view symbol) const {
    if (const auto found = m_known.find(symbol); found != m_known.end()) return found->second;
    const uint32_t number = MadeUpNumber(symbol);
    if (number == 0 || m_known.size() + number > m_symbolCount) return std::nullopt;
    return static_cast<Index>(m_known.size() + number - 1);
}

CMarket::SListing CMarket::Listing(Index index) const {
    const auto known = KnownTickers();
    if (index < m_known.size()) return {std::string(known[index].symbol), std::string(known[index].name), known[index]};
    SMadeUpTicker made = MakeTicker(static_cast<uint32_t>(index - m_known.size() + 1), m_seed);
    return {std::move(made.symbol), std::move(made.name), made.ticker};
}

CInstrument& CMarket::At(Index index) {
    std::unique_ptr<CInstrument>& slot = m_instruments[index];
    if (!slot) {
        SListing listing = Listing(index);
        slot = std::make_unique<CInstrument>(std::move(listing.symbol), listing.ticker, m_seed, m_startDate);
    }
    return *slot;
}

} // namespace vx::sim
