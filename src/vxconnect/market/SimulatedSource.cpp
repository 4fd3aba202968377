#include "vxconnect/market/SimulatedSource.h"

#include "vxconnect/common/CodeTables.h"

#include <fmt/format.h>

namespace vx::sim {

CSimulatedSource::CSimulatedSource(const SOptions& options)
    : m_seed(options.seed), m_rate(options.rate),
      m_market(options.seed, options.symbols, options.date, options.listedOnly), m_feed(m_market, options.limit),
      m_news(m_market, m_feed.Clock()), m_pump(
                                            m_feed,
                                            [this] {
                                                m_news.RunTo(m_feed.Clock());
                                                if (OnSlice) OnSlice();
                                            },
                                            options.burst ? kBurstMs : CUpdatePump::kSliceMs) {
    m_news.OnHeadline = [this](const std::string& line) {
        if (OnHeadline) OnHeadline(line);
    };
}

std::string CSimulatedSource::Detail() const { return fmt::format("seed {}", m_seed); }

void CSimulatedSource::WatchesChanged() {
    const bool tooMany = uint64_t{m_feed.WatchedCount()} * kAutoRatePerSymbol > kMaxAutoRate;
    m_pump.SetRate(m_rate > 0 ? m_rate : tooMany ? kMaxAutoRate : 0);
}

void CSimulatedSource::ForEachSymbol(const std::function<bool(const SDirectoryEntry&)>& visit) const {
    m_market.ForEach([&](const SListing& listing) {
        return visit({listing.symbol, listing.name, ListedMarketOf(listing.terms, listing.symbol),
                      SecurityTypeOf(listing.terms)});
    });
}

std::optional<uint32_t> CSimulatedSource::StoryCount(std::string_view symbol) {
    const auto index = m_market.FindKnown(symbol);
    if (!index) return std::nullopt;
    return m_news.Count(*index);
}

} // namespace vx::sim
