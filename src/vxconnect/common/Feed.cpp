// SPDX-License-Identifier: MIT
#include "vxconnect/common/Feed.h"

#include "vxconnect/common/Level1Client.h"

namespace vx::sim {

bool CFeed::Join(SSubscription& subscription, SymbolIndex index) {
    auto found = m_watched.find(index);
    const bool isNew = found == m_watched.end();
    if (isNew) {
        if (WatchedCount() >= m_limit) return false;
        found = m_watched.emplace(index, Begin(index)).first;
        found->second->index = index;
    }
    found->second->subscriptions.push_back(&subscription);
    subscription.watched = found->second.get();
    if (isNew && m_listener) m_listener->OnWatched(*found->second);
    if (isNew && OnWatchedChanged) OnWatchedChanged();
    return true;
}

void CFeed::Leave(SSubscription& subscription) {
    SWatched& watched = *subscription.watched;
    std::erase(watched.subscriptions, &subscription);
    subscription.watched = nullptr;
    if (!watched.subscriptions.empty()) return;
    End(watched);
    m_watched.erase(watched.index);
    if (OnWatchedChanged) OnWatchedChanged();
}

void CFeed::Tell(SWatched& watched, const SUpdate& update) {
    ++m_events;
    if (m_listener) m_listener->OnUpdate(watched, update);
    for (SSubscription* subscription : watched.subscriptions) subscription->client->Tell(*subscription, update);
}

SWatched* CFeed::FindWatched(SymbolIndex index) {
    const auto found = m_watched.find(index);
    return found == m_watched.end() ? nullptr : found->second.get();
}

} // namespace vx::sim
