#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

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
/// Owns    the results
/// Thread  GUI thread only
class CSearchResults {
public:
    static constexpr size_t kMostResults = 10000;
    static constexpr size_t kMostTextBytes = 255; ///< Of each text, as in every cell.

    /// A new search begins.
    void Clear();
    /// Takes one reply line. A search that ends without a result has one whose symbol is "No Results Found".
    ///
    /// Errors  none: other lines are ignored, results beyond kMostResults are dropped, which is logged
    void OnLine(std::string_view line);

    /// In the order of arrival; grows at its end only, until Clear.
    const std::vector<SSearchResult>& Results() const { return m_results; }
    /// Whether the end of the reply has come.
    bool Ended() const { return m_ended; }

private:
    std::vector<SSearchResult> m_results;
    bool m_ended = false;
    bool m_dropped = false;
};

} // namespace vx
