// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/RowList.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace vx {

/// Takes the place of a typed entry that held a comma; the feed knows no such symbol.
inline constexpr const char* kCommaSymbol = "ERR_COMMA_SYMBOL";

/// The symbols of a watchlist that the feed rejected, each with the rows where its message is shown. Which symbol's
/// message is in a row, the row says itself (SRowExtras::rejected).
///
/// Shape   symbol, exact case -> grid rows; a symbol that is in no row is kept until Clear, so that a later
///         rejection of it is recognised
/// Thread  GUI thread only
class CInvalidSymbols {
public:
    void Add(std::string_view symbol, const CRowList& rows) {
        CRowList& kept = m_rows.try_emplace(std::string(symbol)).first->second;
        for (const uint32_t row : rows) kept.Insert(row);
    }
    void RemoveRow(std::string_view symbol, uint32_t row) {
        if (const auto found = m_rows.find(symbol); found != m_rows.end()) found->second.Erase(row);
    }
    void Clear() { m_rows.clear(); }

    /// Gives every row the number newRow(row), 0 to drop it; no two rows may get the same one.
    template <typename NewRow> void Renumber(NewRow&& newRow) {
        for (auto& [symbol, rows] : m_rows) rows.Renumber(newRow);
    }

    bool Has(std::string_view symbol) const { return m_rows.contains(symbol); }
    auto begin() const { return m_rows.begin(); }
    auto end() const { return m_rows.end(); }

private:
    std::map<std::string, CRowList, std::less<>> m_rows;
};

/// What a rejected symbol's row shows, with the annotation mark in front:
/// "#\"%s\" is an Invalid or Unauthorized Symbol.", and "Symbols cannot contain commas." for kCommaSymbol.
inline std::string InvalidSymbolText(std::string_view symbol) {
    if (symbol == kCommaSymbol) return "#Symbols cannot contain commas.";
    return "#\"" + std::string(symbol) + "\" is an Invalid or Unauthorized Symbol.";
}

} // namespace vx
