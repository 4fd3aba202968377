// SPDX-License-Identifier: MIT
#pragma once

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

class CSendQueue;

/// What one event changed.
struct SUpdate {
    CFieldMask changed;
    uint64_t regions = 0;         ///< Bit n: the quote of region number n changed.
    bool newSession = false;      ///< A new day began: everything is to be sent again, the fundamentals too.
    bool newFundamentals = false; ///< The fundamentals are to be sent again.
    bool newSummary = false;      ///< The summary is to be sent again.
};

/// The quote of one symbol, wherever its values come from.
class CSecurity {
public:
    virtual ~CSecurity() = default;

    virtual const std::string& Symbol() const = 0;
    /// Every field that has a value.
    virtual const CFieldMask& Present() const = 0;
    /// What the newest event is about, EContents bits.
    virtual uint32_t Contents() const = 0;
    /// Adds an update ("Q") or summary ("P") line with its line end: the fields of the mask, in the order and with the
    /// names of the selection. The symbol is written as the client asked for it.
    virtual void AppendQuote(CSendQueue& out, char letter, std::string_view symbol, const CFieldMask& fields,
                             uint32_t contents, const CFieldSelection& selection) const = 0;
    /// How many regional quotes there are, at most 64.
    virtual size_t RegionCount() const { return 0; }
    /// Adds the regional ("R") line of a region that has a number below RegionCount(), the symbol as it was asked for.
    virtual void AppendRegion(CSendQueue&, std::string_view /*symbol*/, size_t /*region*/) const {}
};

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
    bool heldSummary = false;      ///< The summary is to be sent again.
    bool heldFundamentals = false; ///< The fundamentals are to be sent again.
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

/// One symbol as the search shows it.
struct SDirectoryEntry {
    std::string_view symbol;
    std::string_view name;
    int market = 0; ///< Listed market, 0: none.
    int type = 0;   ///< Security type, 0: none.
};

/// What lookups are answered from.
class CDirectory {
public:
    virtual ~CDirectory() = default;

    /// Another number than before when ForEachSymbol would tell something else than before.
    virtual uint64_t DirectoryVersion() const = 0;
    /// Calls the visitor with every symbol until it returns false.
    virtual void ForEachSymbol(const std::function<bool(const SDirectoryEntry&)>& visit) const = 0;
    /// How many of today's headlines so far name a symbol; nothing for an unknown symbol.
    virtual std::optional<uint32_t> StoryCount(std::string_view symbol) = 0;
};

/// Where what is served comes from: the simulated market, a recording or a user's own data.
///
/// Thread  the one of its event loop
class CSource : public CDirectory {
public:
    virtual CFeed& Feed() = 0;
    const CFeed& Feed() const { return const_cast<CSource*>(this)->Feed(); }

    /// What it calls itself to the clients: "simulated market" and "seed 1", for example. No commas.
    virtual std::string Kind() const = 0;
    virtual std::string Detail() const = 0;

    /// Makes what is due by now.
    virtual void Run() = 0;
    /// Whether values are up to date; false while a user's own live data do not come.
    virtual bool IsLive() const { return true; }
    /// Symbols came to those watched, or went.
    virtual void WatchesChanged() {}

    /// Called after something was added, or might have been: what waits is to be sent.
    std::function<void()> OnSlice;
    /// Called when IsLive() has changed.
    std::function<void()> OnLiveChanged;
    /// Called with each headline: an "N" line with its line end.
    std::function<void(const std::string& line)> OnHeadline;
};

} // namespace vx::sim
