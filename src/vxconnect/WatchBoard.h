#pragma once

#include "vxconnect/Market.h"
#include "vxconnect/UpdateFields.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

namespace vx::sim {

class CLevel1Client;
struct SWatched;

/// One client's watch of one symbol, with what the client has not been told yet because it does not read.
struct SSubscription {
    CLevel1Client* client = nullptr;
    SWatched* watched = nullptr;
    bool held = false;        ///< Something waits in the four below.
    bool heldSession = false; ///< A new session began meanwhile.
    bool heldExtreme = false; ///< The fundamentals changed meanwhile.
    uint32_t heldContents = 0;
    CFieldMask heldFields;
};

/// A symbol that somebody watches.
struct SWatched {
    CMarket::Index index = 0;
    CInstrument* instrument = nullptr;
    MarketMs behind = 0;        ///< How far the symbol's own clock is behind the market's.
    MarketMs due = 0;           ///< When its next event is, on the market's clock.
    SWatched* before = nullptr; ///< Neighbours among those that are due in the same millisecond.
    SWatched* after = nullptr;
    std::vector<SSubscription*> subscriptions;
};

/// Who watches what: makes the watched symbols' events happen in the order of their times and hands each to those who
/// want it.
///
/// A symbol that is watched for the first time, or again, goes on where its own clock stands, so that its sequence is
/// the same in every run; only one that has fallen behind by more than kMostBehindMs is put forward.
///
/// Owns    the market's clock and the list of watched symbols; subscriptions belong to the clients
/// Thread  any one
class CWatchBoard {
public:
    static constexpr MarketMs kMostBehindMs = 60'000;

    /// At most limit different symbols are watched at once, over all clients.
    CWatchBoard(CMarket& market, uint32_t limit);

    CMarket& Market() { return m_market; }
    const CSessionClock& Clock() const { return m_clock; }
    uint32_t Limit() const { return m_limit; }
    uint32_t WatchedCount() const { return static_cast<uint32_t>(m_watched.size()); }
    /// Events made so far.
    uint64_t EventCount() const { return m_events; }

    /// Enters a subscription; false when one more symbol would pass the limit.
    bool Join(SSubscription& subscription, CMarket::Index index);
    void Leave(SSubscription& subscription);

    /// Called when a symbol came to those watched, or went.
    std::function<void()> OnWatchedChanged;

    /// Makes the one event happen that is due next, however far the market's clock has to jump; nothing when no symbol
    /// is watched.
    void Step();
    /// Moves the market's clock on and makes every event happen on the way.
    void RunTo(MarketMs time);

private:
    // Whatever is due lies less than a turn of the wheel ahead: a symbol's events follow each other more closely.
    static constexpr size_t kWheelMs = 4096;
    static_assert((kWheelMs & (kWheelMs - 1)) == 0);

    SWatched*& SlotOf(MarketMs time) { return m_wheel[static_cast<size_t>(time) & (kWheelMs - 1)]; }
    void Enter(SWatched& watched);
    void TakeOut(SWatched& watched);
    void Happen(SWatched& watched);

    CMarket& m_market;
    const uint32_t m_limit;
    CSessionClock m_clock;
    uint64_t m_events = 0;
    std::unordered_map<CMarket::Index, std::unique_ptr<SWatched>> m_watched;
    MarketMs m_wheelTime = 0; // Nothing is due before it.
    std::vector<SWatched*> m_wheel = std::vector<SWatched*>(kWheelMs);
};

} // namespace vx::sim
