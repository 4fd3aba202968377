#pragma once

#include "vxconnect/common/Feed.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vx::sim {

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

    /// What the clients are told that it is: "simulated market" and "seed 1", for example. No commas.
    virtual std::string Kind() const = 0;
    virtual std::string Detail() const = 0;

    /// Makes what is due by now.
    virtual void Run() = 0;
    /// Whether values are up to date; false while a user's own live data do not come.
    virtual bool IsLive() const { return true; }
    /// Symbols came to those watched, or went.
    virtual void WatchesChanged() {}

    /// Called after something was told, or might have been: what waits is to be sent.
    std::function<void()> OnSlice;
    /// Called when IsLive() has changed.
    std::function<void()> OnLiveChanged;
    /// Called with each headline: an "N" line with its line end.
    std::function<void(const std::string& line)> OnHeadline;
};

} // namespace vx::sim
