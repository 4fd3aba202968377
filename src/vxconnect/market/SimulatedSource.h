#pragma once

#include "vxconnect/common/Options.h"
#include "vxconnect/common/Source.h"
#include "vxconnect/market/Market.h"
#include "vxconnect/market/MarketFeed.h"
#include "vxconnect/market/NewsWire.h"
#include "vxconnect/market/UpdatePump.h"

namespace vx::sim {

/// The simulated market with its clock, its pace and its news.
class CSimulatedSource final : public CSource {
public:
    explicit CSimulatedSource(const SOptions& options);

    CFeed& Feed() override { return m_feed; }
    std::string Kind() const override { return "simulated market"; }
    std::string Detail() const override;
    void Run() override { m_pump.Run(); }
    void WatchesChanged() override;
    uint64_t DirectoryVersion() const override { return 0; } // What is listed stays so.
    void ForEachSymbol(const std::function<bool(const SDirectoryEntry&)>& visit) const override;
    std::optional<uint32_t> StoryCount(std::string_view symbol) override;

private:
    const uint64_t m_seed;
    const uint32_t m_rate;
    CMarket m_market;
    CMarketFeed m_feed;
    CNewsWire m_news;
    CUpdatePump m_pump;
};

} // namespace vx::sim
