#pragma once

#include "data/store/SymbolKeyed.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vx {

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
/// Thread  GUI thread only
/// Source  docs/feed-protocol.md
class CNewsMap {
public:
    /// A reply that is longer or has more attributes is not read: it would be one for ten times the symbols that a
    /// request asks for. The parser compares each attribute of an element with all before it.
    static constexpr size_t kMostReplyBytes = 1024 * 1024;
    static constexpr int kMostReplyAttributes = 10'000;

    /// Knows a symbol from now on. For one that is there already count and fresh flag begin anew, and the headline
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
    /// them, and everything behind the fifth comma is the headline.
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
