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
    size_t place = 0;      ///< In the board's list.
    uint32_t activity = 0; ///< How often its turn is used, of 256.
    std::vector<SSubscription*> subscriptions;
};

/// Who watches what: hands every event of the market to those who want it.
///
/// Owns    the list of watched symbols; subscriptions belong to the clients
/// Thread  any one
class CWatchBoard {
public:
    /// At most limit different symbols are watched at once, over all clients.
    CWatchBoard(CMarket& market, uint32_t limit, uint64_t seed);

    CMarket& Market() { return m_market; }
    uint32_t Limit() const { return m_limit; }
    uint32_t WatchedCount() const { return static_cast<uint32_t>(m_active.size()); }
    /// Events made so far.
    uint64_t EventCount() const { return m_events; }

    /// Enters a subscription; false when one more symbol would pass the limit.
    bool Join(SSubscription& subscription, CMarket::Index index);
    void Leave(SSubscription& subscription);

    /// Called when a symbol came to those watched, or went.
    std::function<void()> OnWatchedChanged;

    /// Makes one watched symbol's next event happen, busy symbols more often, and tells its watchers.
    void Step();

private:
    SWatched& PickOne();

    CMarket& m_market;
    const uint32_t m_limit;
    CRandom m_random;
    uint64_t m_events = 0;
    std::unordered_map<CMarket::Index, std::unique_ptr<SWatched>> m_watched;
    std::vector<SWatched*> m_active;
};

} // namespace vx::sim
