#pragma once

#include "watchlist/document/RowList.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vx {

/// The symbols of a watchlist that the feed rejected, each with the rows where its message is shown.
///
/// Shape   symbol, exact case -> grid rows; a row shows the message of one symbol; a symbol that stands at no row is
///         kept until Clear, so that a later rejection of it is recognised
/// Thread  GUI thread only
class CInvalidSymbols {
public:
    void Add(std::string_view symbol, const CRowList& rows);
    /// Takes a row from whatever symbol is shown there: it was overwritten.
    void RemoveRow(uint32_t row);
    void Clear();

    /// Gives every row the number newRow(row), 0 to drop it; no two rows may get the same one.
    template <typename NewRow> void Renumber(NewRow&& newRow) {
        for (auto& [symbol, rows] : m_rows) rows.Renumber(newRow);
        FindPlaces();
    }

    bool Has(std::string_view symbol) const { return m_rows.find(symbol) != m_rows.end(); }
    /// The symbol whose message stands at a row, or nothing.
    std::string_view SymbolAt(uint32_t row) const;

    auto begin() const { return m_rows.begin(); }
    auto end() const { return m_rows.end(); }

private:
    using CMap = std::map<std::string, CRowList, std::less<>>;

    void FindPlaces();

    CMap m_rows;
    std::unordered_map<uint32_t, CMap::iterator> m_places; ///< Row -> the symbol shown there.
};

/// What a rejected symbol's row shows, with the annotation mark in front:
/// "#\"%s\" is an Invalid or Unauthorized Symbol.", and "Symbols cannot contain commas." for kCommaSymbol.
std::string InvalidSymbolText(std::string_view symbol);

/// Stands for a typed entry that held a comma; the feed knows no such symbol.
inline constexpr const char* kCommaSymbol = "ERR_COMMA_SYMBOL";

} // namespace vx
