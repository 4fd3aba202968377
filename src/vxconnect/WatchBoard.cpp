#include "vxconnect/WatchBoard.h"

#include "vxconnect/Level1Client.h"

#include <algorithm>

namespace vx::sim {

namespace {

// From a quarter of all turns for a quiet symbol to every turn for a busy one.
uint32_t ActivityOf(const STicker& ticker) {
    return static_cast<uint32_t>(std::clamp(64 + ticker.volumeMillions * 10, 64.0, 256.0));
}

} // namespace

CWatchBoard::CWatchBoard(CMarket& market, uint32_t limit, uint64_t seed)
    : m_market(market), m_limit(limit), m_random(seed) {}

bool CWatchBoard::Join(SSubscription& subscription, CMarket::Index index) {
    std::unique_ptr<SWatched>& watched = m_watched[index];
    if (!watched) {
        if (WatchedCount() >= m_limit) {
            m_watched.erase(index);
            return false;
        }
        watched = std::make_unique<SWatched>();
        watched->index = index;
        watched->instrument = &m_market.At(index);
        watched->place = m_active.size();
        watched->activity = ActivityOf(m_market.Listing(index).ticker);
        m_active.push_back(watched.get());
        if (OnWatchedChanged) OnWatchedChanged();
    }
    watched->subscriptions.push_back(&subscription);
    subscription.watched = watched.get();
    return true;
}

void CWatchBoard::Leave(SSubscription& subscription) {
    SWatched& watched = *subscription.watched;
    std::erase(watched.subscriptions, &subscription);
    subscription.watched = nullptr;
    if (!watched.subscriptions.empty()) return;
    m_active[watched.place] = m_active.back();
    m_active[watched.place]->place = watched.place;
    m_active.pop_back();
    m_watched.erase(watched.index);
    if (OnWatchedChanged) OnWatchedChanged();
}

SWatched& CWatchBoard::PickOne() {
    const uint32_t count = WatchedCount();
    SWatched* picked = m_active[m_random.Below(count)];
    for (int tries = 0; tries < 3 && m_random.Below(256) >= picked->activity; ++tries)
        picked = m_active[m_random.Below(count)];
    return *picked;
}

void CWatchBoard::Step() {
    if (m_active.empty()) return;
    SWatched& watched = PickOne();
    const SUpdate update = watched.instrument->Tick();
    ++m_events;
    for (SSubscription* subscription : watched.subscriptions) subscription->client->Tell(*subscription, update);
}

} // namespace vx::sim
