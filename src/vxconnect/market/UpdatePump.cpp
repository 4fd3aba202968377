#include "vxconnect/market/UpdatePump.h"

#include <algorithm>

namespace vx::sim {

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
