// SPDX-License-Identifier: MIT
#include "feed/lookup/LookupTables.h"

#include "base/Clock.h"
#include "base/Log.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>

namespace vx {

CLookupTables::CLookupTables(CRegistry& registry, SLookupTimes times)
    : m_markets(registry), m_types(registry), m_times(times) {}

// Loads what is missing, unless a pause lasts.
void CLookupTables::Load() {
    if (m_markets.IsLoaded() && m_types.IsLoaded()) return;
    if (CClock::Instance().MonotonicMs() < m_nextTryMs) return;
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::milliseconds(m_times.totalMs);
    const auto left = [&] {
        const auto time = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        return SLookupTimes{static_cast<int>(time.count()), m_times.quietMs};
    };
    m_markets.SetTimes(left());
    m_markets.Load();
    if (!m_markets.IsLoaded()) return Pause(m_markets.WasUnanswered());
    m_types.SetTimes(left());
    m_types.Load();
    if (!m_types.IsLoaded()) return Pause(m_types.WasUnanswered());
    LogInformation(fmt::format("Lookup: {} listed markets and {} security types.", m_markets.Count(), m_types.Count()));
}

void CLookupTables::Pause(bool unanswered) {
    m_nextTryMs = CClock::Instance().MonotonicMs() + (unanswered ? m_pauseMs : kPauseMs);
    if (unanswered) m_pauseMs = std::min(m_pauseMs * 2, kMostPauseMs);
}

bool CLookupTables::EnsureMarketsLoaded() {
    if (!m_markets.IsLoaded()) Load();
    return m_markets.IsLoaded();
}

bool CLookupTables::EnsureSecurityTypesLoaded() {
    if (!m_types.IsLoaded()) Load();
    return m_types.IsLoaded();
}

} // namespace vx
