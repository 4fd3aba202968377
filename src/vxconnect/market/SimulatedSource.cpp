// SPDX-License-Identifier: MIT
#include "vxconnect/market/SimulatedSource.h"

#include "vxconnect/common/CodeTables.h"

#include <fmt/format.h>

#include <algorithm>

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

CUpdatePump::CUpdatePump(CMarketFeed& feed, std::function<void()> sliceDone, int sliceMs)
    : m_feed(feed), m_sliceDone(std::move(sliceDone)), m_sliceMs(sliceMs),
      m_budgetMs(std::max(kSliceBudgetMs, sliceMs / 2)), m_maxLagMs(std::max(kMaxLagMs, sliceMs * 2)) {
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] { Run(); });
    m_timer.start(m_sliceMs);
    m_elapsed.start();
}

void CUpdatePump::SetRate(uint32_t rate) {
    if (rate == m_rate) return;
    Run();
    m_rate = rate;
    m_dueEvents = 0;
}

void CUpdatePump::Run() {
    const double seconds =
        std::min(static_cast<double>(m_elapsed.nsecsElapsed()) * 1e-9, static_cast<double>(m_maxLagMs) / 1000);
    m_elapsed.start();
    if (m_rate > 0 && m_feed.WatchedCount() > 0) {
        RunAtRate(seconds);
    } else {
        RunAtRealTime(seconds);
    }
    const int interval = m_feed.WatchedCount() > 0 ? m_sliceMs : std::max(m_sliceMs, kIdleSliceMs);
    if (interval != m_timer.interval()) m_timer.setInterval(interval);
    m_sliceDone();
}

void CUpdatePump::RunAtRealTime(double seconds) {
    m_dueMs += seconds * 1000;
    const auto whole = static_cast<MarketMs>(m_dueMs);
    m_dueMs -= static_cast<double>(whole);
    m_feed.RunTo(m_feed.Clock().Now() + whole);
}

void CUpdatePump::RunAtRate(double seconds) {
    constexpr int kEventsBetweenLooks = 256;
    m_dueEvents = std::min(m_dueEvents + seconds * m_rate, static_cast<double>(m_rate) * m_maxLagMs / 1000 + 1);
    for (bool inTime = true; m_dueEvents >= 1 && inTime; inTime = m_elapsed.elapsed() < m_budgetMs)
        for (int i = 0; i < kEventsBetweenLooks && m_dueEvents >= 1; ++i, m_dueEvents -= 1) m_feed.Step();
}

} // namespace vx::sim
