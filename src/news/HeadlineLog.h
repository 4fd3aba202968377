// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace vx {

/// The parts of a news line of the level-1 connection, "N,source,story,IBM:MSFT,20240131 093000,headline".
///
/// Owns    nothing: views of the line
struct SNewsLine {
    std::string_view symbols; ///< ":" between them.
    std::string_view time;    ///< As the feed writes it.
    std::string_view headline;
};

/// Cuts a news line at its first five commas; everything after the fifth is the headline.
///
/// Errors  nothing for a line with fewer commas
inline std::optional<SNewsLine> ReadNewsLine(std::string_view line) {
    constexpr size_t kLeadingFields = 5;
    constexpr size_t kSymbols = 3;
    constexpr size_t kTime = 4;
    std::array<std::string_view, kLeadingFields> fields;
    for (std::string_view& field : fields) {
        const size_t comma = line.find(',');
        if (comma == std::string_view::npos) return std::nullopt;
        field = line.substr(0, comma);
        line.remove_prefix(comma + 1);
    }
    return SNewsLine{fields[kSymbols], fields[kTime], line};
}

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
