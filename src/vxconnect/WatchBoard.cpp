#include "vxconnect/WatchBoard.h"

#include "vxconnect/Level1Client.h"

#include <algorithm>

namespace vx::sim {

CWatchBoard::CWatchBoard(CMarket& market, uint32_t limit)
    : m_market(market), m_limit(limit), m_clock(market.StartDate()) {}

bool CWatchBoard::Join(SSubscription& subscription, CMarket::Index index) {
    auto found = m_watched.find(index);
    if (found == m_watched.end()) {
        if (WatchedCount() >= m_limit) return false;
        found = m_watched.emplace(index, std::make_unique<SWatched>()).first;
        SWatched& watched = *found->second;
        watched.index = index;
        watched.instrument = &m_market.At(index);
        if (m_clock.Now() - watched.instrument->Now() > kMostBehindMs) watched.instrument->SkipTo(m_clock.Now());
        watched.behind = m_clock.Now() - watched.instrument->Now();
        Enter(watched);
        if (OnWatchedChanged) OnWatchedChanged();
    }
    found->second->subscriptions.push_back(&subscription);
    subscription.watched = found->second.get();
    return true;
}

void CWatchBoard::Leave(SSubscription& subscription) {
    SWatched& watched = *subscription.watched;
    std::erase(watched.subscriptions, &subscription);
    subscription.watched = nullptr;
    if (!watched.subscriptions.empty()) return;
    TakeOut(watched);
    m_watched.erase(watched.index);
    if (OnWatchedChanged) OnWatchedChanged();
}

void CWatchBoard::Enter(SWatched& watched) {
    watched.due = watched.instrument->Next() + watched.behind;
    SWatched*& first = SlotOf(watched.due);
    watched.before = nullptr;
    watched.after = first;
    if (first) first->before = &watched;
    first = &watched;
}

void CWatchBoard::TakeOut(SWatched& watched) {
    (watched.before ? watched.before->after : SlotOf(watched.due)) = watched.after;
    if (watched.after) watched.after->before = watched.before;
}

void CWatchBoard::Happen(SWatched& watched) {
    TakeOut(watched);
    m_clock.MoveTo(watched.due);
    const SUpdate update = watched.instrument->Tick();
    Enter(watched);
    ++m_events;
    for (SSubscription* subscription : watched.subscriptions) subscription->client->Tell(*subscription, update);
}

void CWatchBoard::Step() {
    if (m_watched.empty()) return;
    while (!SlotOf(m_wheelTime)) ++m_wheelTime;
    Happen(*SlotOf(m_wheelTime));
}

void CWatchBoard::RunTo(MarketMs time) {
    if (m_watched.empty()) m_wheelTime = std::max(m_wheelTime, time);
    for (; m_wheelTime < time; ++m_wheelTime)
        while (SWatched* const first = SlotOf(m_wheelTime)) Happen(*first);
    m_clock.MoveTo(time);
}

} // namespace vx::sim
