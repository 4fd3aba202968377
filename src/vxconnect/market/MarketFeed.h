// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/Feed.h"
#include "vxconnect/market/Market.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx::sim {

/// A symbol that somebody watches, and when its next event is.
struct SWatchedInstrument final : SWatched {
    CInstrument* instrument = nullptr;
    MarketMs behind = 0;                  ///< How far the symbol's own clock is behind the market's.
    MarketMs due = 0;                     ///< When its next event is, on the market's clock.
    SWatchedInstrument* before = nullptr; ///< Neighbours among those that are due in the same millisecond.
    SWatchedInstrument* after = nullptr;
};

/// The feed of the simulated market: makes the watched symbols' events happen in the order of their times.
///
/// A symbol that is watched for the first time, or again, continues from its own clock, so that its sequence is
/// the same in every run; only one that has fallen behind by more than kMostBehindMs is put forward.
///
/// Owns    the market's clock
/// Thread  any one
class CMarketFeed final : public CFeed {
public:
    static constexpr MarketMs kMostBehindMs = 60'000;

    /// At most limit different symbols are watched at once, over all clients.
    CMarketFeed(CMarket& market, uint32_t limit);

    CMarket& Market() { return m_market; }
    const CSessionClock& Clock() const { return m_clock; }

    std::optional<SymbolIndex> Find(std::string_view symbol) override { return m_market.Find(symbol); }
    std::string FundamentalLine(SymbolIndex index, std::string_view symbol) override;
    std::string ClockText() const override { return m_clock.Text(); }

    /// Makes the one event happen that is due next, however far the market's clock has to jump; nothing when no symbol
    /// is watched.
    void Step();
    /// Moves the market's clock on and makes every event happen on the way.
    void RunTo(MarketMs time);

protected:
    std::unique_ptr<SWatched> Begin(SymbolIndex index) override;
    void End(SWatched& watched) override;

private:
    // Whatever is due lies less than a turn of the wheel ahead: a symbol's events follow each other more closely.
    static constexpr size_t kWheelMs = 4096;
    static_assert((kWheelMs & (kWheelMs - 1)) == 0);

    SWatchedInstrument*& SlotOf(MarketMs time) { return m_wheel[static_cast<size_t>(time) & (kWheelMs - 1)]; }
    void Enter(SWatchedInstrument& watched);
    void TakeOut(SWatchedInstrument& watched);
    void Happen(SWatchedInstrument& watched);

    CMarket& m_market;
    CSessionClock m_clock;
    MarketMs m_wheelTime = 0; // Nothing is due before it.
    std::vector<SWatchedInstrument*> m_wheel = std::vector<SWatchedInstrument*>(kWheelMs);
};

} // namespace vx::sim
