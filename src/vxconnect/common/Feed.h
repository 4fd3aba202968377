#pragma once

#include "vxconnect/common/Security.h"
#include "vxconnect/common/UpdateFields.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::sim {

class CLevel1Client;
struct SWatched;

/// A symbol's number in its feed.
using SymbolIndex = uint32_t;

/// One client's watch of one symbol, with what the client has not been told yet because it does not read.
struct SSubscription {
    CLevel1Client* client = nullptr;
    std::string symbol; ///< As the client asked for it.
    SWatched* watched = nullptr;
    bool regions = false;          ///< The client wants the regional quotes as well.
    bool held = false;             ///< Something waits in the five below.
    bool heldSummary = false;      ///< The summary is to be told again.
    bool heldFundamentals = false; ///< The fundamentals are to be told again.
    uint32_t heldContents = 0;
    uint64_t heldRegions = 0;
    CFieldMask heldFields;
};

/// A symbol that somebody watches.
struct SWatched {
    virtual ~SWatched() = default;

    SymbolIndex index = 0;
    CSecurity* security = nullptr;
    std::vector<SSubscription*> subscriptions;
};

/// Hears what a feed tells, whoever watches it: the recorder does.
class CFeedListener {
public:
    virtual ~CFeedListener() = default;
    /// A symbol came to those watched.
    virtual void OnWatched(const SWatched& watched) = 0;
    virtual void OnUpdate(const SWatched& watched, const SUpdate& update) = 0;
};

/// Which symbols exist, who watches them, and the events on their way to those who do.
///
/// Owns    the list of watched symbols; subscriptions belong to the clients
/// Thread  any one
class CFeed {
public:
    /// At most limit different symbols are watched at once, over all clients.
    explicit CFeed(uint32_t limit) : m_limit(limit) {}
    virtual ~CFeed() = default;
    CFeed(const CFeed&) = delete;

    /// The number of a symbol, nothing for an unknown one.
    virtual std::optional<SymbolIndex> Find(std::string_view symbol) = 0;
    /// Whether an unknown symbol may become known later.
    virtual bool MayCome() const { return false; }
    /// The fundamental ("F") line of a symbol as it stands now, with its line end; the symbol as it was asked for.
    virtual std::string FundamentalLine(SymbolIndex index, std::string_view symbol) = 0;
    /// The market's time, "20240131 09:30:05".
    virtual std::string ClockText() const = 0;

    uint32_t Limit() const { return m_limit; }
    uint32_t WatchedCount() const { return static_cast<uint32_t>(m_watched.size()); }
    /// Events told so far.
    uint64_t EventCount() const { return m_events; }

    /// Enters a subscription; false when one more symbol would pass the limit.
    bool Join(SSubscription& subscription, SymbolIndex index);
    void Leave(SSubscription& subscription);

    /// Called when a symbol came to those watched, or went.
    std::function<void()> OnWatchedChanged;
    /// Called with each symbol that becomes known later.
    std::function<void(std::string_view symbol)> OnSymbolCame;
    /// The listener outlives the feed or is taken away; null: none.
    void SetListener(CFeedListener* listener) { m_listener = listener; }

protected:
    /// Begins the watch of a symbol.
    virtual std::unique_ptr<SWatched> Begin(SymbolIndex index) = 0;
    /// The last one who watched a symbol has left.
    virtual void End(SWatched&) {}

    /// Hands an event to everyone who watches the symbol.
    void Tell(SWatched& watched, const SUpdate& update);
    /// A symbol that somebody watches, else null.
    SWatched* FindWatched(SymbolIndex index);

private:
    const uint32_t m_limit;
    uint64_t m_events = 0;
    CFeedListener* m_listener = nullptr;
    std::unordered_map<SymbolIndex, std::unique_ptr<SWatched>> m_watched;
};

} // namespace vx::sim
