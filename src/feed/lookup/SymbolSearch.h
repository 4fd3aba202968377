// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// What the text of a search is compared with.
enum class ESearchBy { Symbol, Description };

/// The request for a symbol search, its line end included.
///
/// Shape   IBM by symbol -> "SBF,s,IBM,,,LSearch\r\n"; in the markets "7 11" -> "SBF,s,IBM,e,7 11,LSearch\r\n". A
///         market filter goes before a type filter; both are ids joined by blanks, empty for no filter.
/// Errors  none; commas and control characters, which would end a field or the line, become blanks
std::string SymbolSearchRequest(ESearchBy by, std::string_view text, std::string_view marketFilter,
                                std::string_view typeFilter);

/// One symbol that a search found.
struct SSearchResult {
    std::string symbol;
    std::string description;
    std::string market;       ///< Market id as decimal text, see CListedMarkets.
    std::string securityType; ///< Security-type id as decimal text, see CSecurityTypes.

    bool operator==(const SSearchResult&) const = default;
};

/// Collects the results of one symbol search as its lines arrive.
///
/// All searches share one id, so that replies can be distinguished by their ends alone. Whatever comes is taken for the
/// present search's; when a further reply follows the first end while one is still owed, that end was a former
/// search's, and the further reply takes its place.
///
/// Units   times in milliseconds of CClock's monotonic time
/// Owns    the results
class CSearchResults {
public:
    static constexpr size_t kMostResults = 10000;
    static constexpr size_t kMostTextBytes = 255; ///< Of each text, as in every cell.
    /// The symbol of the only result of a search that found none.
    static constexpr std::string_view kNothingFound = "No Results Found";

    /// A new search begins: drops the results.
    void Clear();
    /// The request of the search went out, so that a reply is owed.
    void Expect();
    /// Takes one reply line. A search that ends without a result has one whose symbol is kNothingFound.
    ///
    /// Errors  none: other lines are ignored, results beyond kMostResults are dropped, which is logged
    void OnLine(std::string_view line);

    /// In the order of arrival; grows at its end only, within one generation.
    const std::vector<SSearchResult>& Results() const { return m_results; }
    /// How often results were dropped, for a new search or for a further reply.
    int Generation() const { return m_generation; }
    /// Whether the end of the reply has come.
    bool Ended() const { return m_ended; }
    /// Whether results beyond kMostResults were dropped.
    bool IsCut() const { return m_dropped; }
    /// How long ago the request went out, or the last line came, whichever is later.
    int64_t SilentMs() const;

private:
    std::vector<SSearchResult> m_results;
    bool m_ended = false;
    bool m_dropped = false;
    int m_generation = 0;
    int m_owed = 0; ///< Ends still to come, the present search's included; some may never come.
    int64_t m_heardMs = 0;
};

} // namespace vx
