// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/common/Connection.h"
#include "vxconnect/common/Feed.h"

#include <deque>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace vx::sim {

/// A client of the level-1 port: its field list, its watches and what is still to be sent to it.
///
/// While its queue has room, every event is a line. Beyond that the events of one symbol fold into one line that
/// carries every field that has changed, with its newest value, and is written when the client has read enough.
///
/// Thread  the one of its event loop
class CLevel1Client final : public CConnection {
public:
    static constexpr size_t kMostHeldHeadlines = 500;
    static constexpr size_t kMostRegions = 100'000; ///< Symbols whose regions are wanted.

    /// The feed outlives the client; port is the one it came to.
    CLevel1Client(qintptr socket, const SLink& link, CFeed& feed, uint16_t port);
    ~CLevel1Client() override;

    /// Tells one event of a watched symbol, now or folded with later ones.
    void Tell(SSubscription& subscription, const SUpdate& update);
    /// Tells a headline ("N" line, with its line end) to a client that wants them, now or when it has read enough; of
    /// those that wait, the oldest beyond kMostHeldHeadlines are dropped.
    void TellHeadline(const std::string& line);
    /// Sends the market's time, unless the queue is full: a later one will do.
    void TellTime();
    /// A symbol has become known: a client that has asked for it watches it from now on.
    void SymbolCame(std::string_view symbol);
    /// Ends all watches.
    void Leave();

    size_t WatchCount() const { return m_watches.size(); }
    /// Symbols whose news wait, folded, for the client to read.
    size_t HeldCount() const { return m_held.size() - m_heldBegin; }

protected:
    void OnLine(std::string_view line) override;
    void OnOverlongLine() override;
    bool HoldsBack() const override { return HeldCount() > 0 || !m_heldHeadlines.empty(); }
    void OnRoom() override;
    void OnEndOfInput() override;

private:
    void OnSystemCommand(std::string_view command);
    void SelectFields(std::string_view names);
    void Watch(std::string_view symbol);
    void Await(std::string_view symbol);
    void Forget(std::string_view symbol);
    void Unwatch(std::string_view symbol);
    void WantRegions(std::string_view symbol);
    void SendSummary(SSubscription& subscription);
    void SendFundamentals(SSubscription& subscription);
    void SendRegions(SSubscription& subscription, uint64_t regions);
    void SendQuote(char letter, const SSubscription& subscription, const CFieldMask& fields, uint32_t contents);
    void Hold(SSubscription& subscription, const SUpdate& update);
    void Release(SSubscription& subscription);

    CFeed& m_feed;
    const uint16_t m_port;
    CFieldSelection m_selection;
    CFieldMask m_worthALine; // The selected fields without those that come with every line.
    bool m_wantsNews = false;
    std::unordered_map<std::string, std::unique_ptr<SSubscription>> m_watches; // By the symbol as it was asked for.
    std::unordered_multimap<std::string, std::string> m_awaited; // Not known yet; by the symbol in capital letters.
    std::unordered_set<std::string> m_regionsWanted; // Until the symbol is no longer watched; at most kMostRegions.
    std::vector<SSubscription*> m_held;              // Oldest first from m_heldBegin; null: unwatched meanwhile.
    size_t m_heldBegin = 0;
    std::deque<std::string> m_heldHeadlines;
};

} // namespace vx::sim
