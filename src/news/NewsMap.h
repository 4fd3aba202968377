// SPDX-License-Identifier: MIT
#pragma once

#include "data/record/SymbolKey.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// One request takes at most so many symbols, and the line at most so many bytes: a quarter of the longest line that a
/// feed client takes, and a reply that is read in no noticeable time.
inline constexpr size_t kMostNewsSymbols = 500;
inline constexpr size_t kMostNewsRequestBytes = 16 * 1024;

/// The request for the counts of today's news, its line end included; today is the clock's local date.
///
/// Shape   "IBM:MSFT" -> "NSC,IBM:MSFT,x,,20240131,LNewsCounts\r\n"
std::string NewsCountsRequest(std::string_view symbolList);

/// The requests for a list of symbols, as few as the limits above allow, symbols in their order.
///
/// Errors  none; symbols that no request can carry are left out: empty ones, those that hold ",", ":" or control
///         characters, and those longer than a request
std::vector<std::string> NewsCountsRequests(std::span<const std::string> symbols);

/// The lookup connection, as far as news counts go.
class CNewsCountsPort {
public:
    virtual ~CNewsCountsPort() = default;

    /// Sends one request as it stands and returns without waiting; its reply goes to CNewsMap::ApplyCountsReply. A
    /// request that cannot be sent is dropped: the counts then grow with the headlines.
    virtual void SendNewsRequest(std::string_view request) = 0;
};

/// Asks for today's counts of the symbols.
void RequestNewsCounts(std::span<const std::string> symbols, CNewsCountsPort& port);

/// What is known of today's news of one symbol.
struct NEWS {
    uint32_t fresh = 0;     ///< 1 once a headline has come since the symbol was added.
    int32_t storyCount = 0; ///< Stories of today.
    std::string headline;   ///< The latest one, Windows-1252; empty at first.
};

/// How the cell of the news count looks; the view knows the colours.
enum class ENewsStyle { Fresh = 1, Plain = 2 };

/// The news counts and latest headlines of one watchlist, by symbol.
///
/// Shape   symbols are compared exactly, case included
/// Errors  none: what cannot be read changes nothing
/// Source  docs/feed-protocol.md
class CNewsMap {
public:
    /// A reply that is longer or has more attributes is not read: it would be one for ten times the symbols that a
    /// request asks for. The parser compares each attribute of an element with all before it.
    static constexpr size_t kMostReplyBytes = 1024 * 1024;
    static constexpr int kMostReplyAttributes = 10'000;

    /// Knows a symbol from now on. For one that is there already, count and fresh flag start over, and the headline
    /// stays. Regional quotes ("IBM--X") have no news.
    void AddSymbol(std::string_view symbol);
    void Clear() { m_news.clear(); }

    /// Null for a symbol that was not added. Good until the next AddSymbol or Clear.
    const NEWS* Find(std::string_view symbol) const;
    /// The fresh flag, 0 for a symbol that was not added.
    uint32_t GetFresh(std::string_view symbol) const;

    /// Takes today's counts from the reply of a counts request: XML whose root holds elements named "symbol" with the
    /// attributes "Name" and "StoryCount". A count only ever grows by it.
    void ApplyCountsReply(std::string_view xml);

    /// Takes a headline from a news line of the level-1 connection: the field of index 3 names the symbols, ":" between
    /// them, and everything after the fifth comma is the headline.
    ///
    /// Returns the symbols of this map that it is about, each followed by ",", for CAlertsMap::CheckNews
    std::string ApplyHeadline(std::string_view line);

    /// The news count as its cell shows it, empty for none.
    std::string CountText(std::string_view symbol) const;
    ENewsStyle CountStyle(std::string_view symbol) const;
    /// The latest headline as its cell shows it, at most 255 bytes. Good until the next change.
    std::string_view HeadlineText(std::string_view symbol) const;

private:
    NEWS* FindMutable(std::string_view symbol);
    void RaiseCount(std::string_view symbol, int32_t count);

    CSymbolKeyed<NEWS> m_news;
};

} // namespace vx
