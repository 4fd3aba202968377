// SPDX-License-Identifier: MIT
#include "vxconnect/market/MarketFeed.h"

#include "vxconnect/market/Fundamentals.h"

#include <algorithm>

namespace vx::sim {

CMarketFeed::CMarketFeed(CMarket& market, uint32_t limit)
    : CFeed(limit), m_market(market), m_clock(market.StartDate()) {}

std::string CMarketFeed::FundamentalLine(SymbolIndex index, std::string_view) {
    return vx::sim::FundamentalLine(m_market, index);
}

std::unique_ptr<SWatched> CMarketFeed::Begin(SymbolIndex index) {
    auto watched = std::make_unique<SWatchedInstrument>();
    CInstrument& instrument = m_market.At(index);
    const MarketMs told = m_clock.Now() - instrument.DelayMs();
    if (told - instrument.Now() > kMostBehindMs) instrument.SkipTo(told);
    watched->security = watched->instrument = &instrument;
    watched->behind = m_clock.Now() - instrument.Now();
    Enter(*watched);
    return watched;
}

void CMarketFeed::End(SWatched& watched) { TakeOut(static_cast<SWatchedInstrument&>(watched)); }

void CMarketFeed::Enter(SWatchedInstrument& watched) {
    watched.due = watched.instrument->Next() + watched.behind;
    SWatchedInstrument*& first = SlotOf(watched.due);
    watched.before = nullptr;
    watched.after = first;
    if (first) first->before = &watched;
    first = &watched;
}

void CMarketFeed::TakeOut(SWatchedInstrument& watched) {
    (watched.before ? watched.before->after : SlotOf(watched.due)) = watched.after;
    if (watched.after) watched.after->before = watched.before;
}

void CMarketFeed::Happen(SWatchedInstrument& watched) {
    TakeOut(watched);
    m_clock.MoveTo(watched.due);
    const SUpdate update = watched.instrument->Tick();
    Enter(watched);
    Tell(watched, update);
}

void CMarketFeed::Step() {
    if (WatchedCount() == 0) return;
    while (!SlotOf(m_wheelTime)) ++m_wheelTime;
    Happen(*SlotOf(m_wheelTime));
}

void CMarketFeed::RunTo(MarketMs time) {
    if (WatchedCount() == 0) m_wheelTime = std::max(m_wheelTime, time);
    for (; m_wheelTime < time; ++m_wheelTime)
        while (SWatchedInstrument* const first = SlotOf(m_wheelTime)) Happen(*first);
    m_clock.MoveTo(time);
}

} // namespace vx::sim
