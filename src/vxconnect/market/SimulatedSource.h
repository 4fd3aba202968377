// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/Feed.h"
#include "vxconnect/common/Options.h"
#include "vxconnect/market/Market.h"
#include "vxconnect/market/MarketFeed.h"
#include "vxconnect/market/NewsWire.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <functional>

namespace vx::sim {

/// Keeps the market going, in slices short enough that everything else gets its turn: either as fast as real time, or
/// at a number of events a second, which makes the market's clock run faster or slower than real time.
///
/// A slice that takes longer than kSliceBudgetMs is cut off; what could not be made within kMaxLagMs is given up (with
/// longer slices both are as much longer), so that a machine that is too slow makes fewer events instead of falling
/// ever further behind.
///
/// Thread  the one of its event loop
class CUpdatePump : public QObject {
public:
    static constexpr int kSliceMs = 10;
    static constexpr int kIdleSliceMs = 100; ///< While nobody watches anything.
    static constexpr int kSliceBudgetMs = 25;
    static constexpr int kMaxLagMs = 250;

    /// sliceDone is called after each slice; slices of more than kSliceMs make the updates come in bursts.
    CUpdatePump(CMarketFeed& feed, std::function<void()> sliceDone, int sliceMs = kSliceMs);

    /// Events a second over all watched symbols; 0: as many as real time brings.
    void SetRate(uint32_t rate);
    /// Makes what is due by now.
    void Run();

private:
    void RunAtRealTime(double seconds);
    void RunAtRate(double seconds);

    CMarketFeed& m_feed;
    std::function<void()> m_sliceDone;
    const int m_sliceMs;
    const int m_budgetMs;
    const int m_maxLagMs;
    QTimer m_timer;
    QElapsedTimer m_elapsed;
    uint32_t m_rate = 0;
    double m_dueEvents = 0;
    double m_dueMs = 0;
};

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
