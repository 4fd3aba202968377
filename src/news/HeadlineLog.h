#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace vx {

/// One headline as it came. Texts are Windows-1252.
struct SHeadline {
    uint64_t number = 0; ///< Running number, from 1, never reused.
    std::string symbols; ///< ":" between them; any number, also of symbols that are not in the watchlist.
    std::string time;    ///< See HeadlineTime.
    std::string text;

    /// Symbols are compared exactly, case included.
    bool IsAbout(std::string_view symbol) const;
};

/// Every headline since a watchlist was opened, as many as the bounds allow: the oldest go first.
///
/// Owns    the headlines; a reference to one is good until the next Add or Clear
/// Thread  GUI thread only
class CHeadlineLog {
public:
    static constexpr size_t kMostHeadlines = 10'000;
    static constexpr size_t kMostBytes = 8 * 1024 * 1024; ///< Of texts and records together.

    /// Takes a news line of the level-1 connection.
    ///
    /// Errors  none: a line without a headline is ignored
    void Add(std::string_view line);
    void Clear();

    size_t Size() const { return m_headlines.size(); }
    size_t Bytes() const { return m_bytes; }
    /// The number of the newest headline ever taken, 0 for none; it stays when the log is cleared.
    uint64_t LastNumber() const { return m_last; }
    /// The number of the oldest one kept; one more than LastNumber when there is none.
    uint64_t FirstNumber() const { return m_last + 1 - m_headlines.size(); }
    /// Null for a number that is not kept.
    const SHeadline* Find(uint64_t number) const;

private:
    std::deque<SHeadline> m_headlines; ///< Oldest first, numbers without gaps.
    size_t m_bytes = 0;
    uint64_t m_last = 0;
};

/// A headline's time for people.
///
/// Shape   "20240131 093000" -> "2024-01-31 09:30:00"; any other text stays as it is
std::string HeadlineTime(std::string_view time);

} // namespace vx
