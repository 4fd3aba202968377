// SPDX-License-Identifier: MIT
#pragma once

#include "feed/session/FeedStats.h"
#include "feed/session/SymbolQueue.h"

#include <cstdint>
#include <functional>
#include <list>
#include <set>
#include <string>
#include <string_view>

namespace vx {

/// The symbols that the feed client refused because it watches as many as it may, and their way back.
///
/// A refused symbol is pending until the feed client has room; watched again, it is awaiting until its fundamental
/// line shows that the feed client took it, and takes one place of the room until then.
///
/// The lists are bounded, whatever the feed client refuses: each symbol is pending at most kMostOfOne times, and of
/// those that no row holds, strangers, as many as kMostStrangers and kMostStrangerBytes allow; what comes then is
/// dropped.
///
/// Errors  the first stranger that is dropped gives a line in the log
class CSymbolLimitQueue {
public:
    /// Sends one command on the level-1 port: the bytes sent, or -1; nothing at all when there is no such port.
    using SendCommand = std::function<int(std::string_view command)>;

    static constexpr size_t kMostOfOne = 16;
    static constexpr size_t kMostStrangers = 1000;
    static constexpr size_t kMostStrangerBytes = 64 * 1024;

    /// The feed client refused a symbol: it is no longer awaiting and becomes pending, last in order. wanted: a row
    /// holds it, or one of its regions.
    void Refused(std::string_view symbol, bool wanted);
    /// The symbol's fundamental line came.
    void Arrived(std::string_view symbol);
    /// Nobody wants the symbol any more.
    void Forget(std::string_view symbol);

    /// Watches pending symbols again, first come first, while there is room. A command that was not sent leaves its
    /// symbol pending, first in order; one sent in part drops it. Without a port (an empty send), the first symbol is
    /// appended once more and nothing is sent.
    ///
    /// Returns the number of commands sent whole
    uint32_t Pump(const FeedStats& stats, const SendCommand& send);

    /// Whether a symbol is in one of the lists.
    bool Has(std::string_view symbol) const { return m_pending.Count(symbol) + m_awaiting.Count(symbol) > 0; }

    const std::list<std::string>& Pending() const { return m_pending.Order(); }
    const std::list<std::string>& Awaiting() const { return m_awaiting.Order(); }

private:
    bool HasRoom(const FeedStats& stats) const;
    bool AdmitStranger(std::string_view symbol);
    void Left(std::string_view symbol);

    CSymbolQueue m_pending;
    CSymbolQueue m_awaiting;
    std::set<std::string, std::less<>> m_strangers; ///< In the lists, and in no row when they came.
    size_t m_strangerBytes = 0;
    bool m_strangerDropped = false; ///< Has been logged.
};

} // namespace vx
