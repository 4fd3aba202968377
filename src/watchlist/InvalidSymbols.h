#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// The symbols of a watchlist that the feed rejected, each with the rows where its message is shown.
///
/// Shape   symbol, exact case -> grid rows in rising order; a symbol that stands at no row is kept until Clear, so
///         that a later rejection of it is recognised
/// Thread  GUI thread only
class CInvalidSymbols {
public:
    void Add(std::string_view symbol, const std::vector<uint32_t>& rows);
    /// Takes a row from whatever symbol is shown there: it was overwritten.
    void RemoveRow(uint32_t row);
    void Clear() { m_rows.clear(); }

    bool Has(std::string_view symbol) const { return m_rows.find(symbol) != m_rows.end(); }
    /// The symbol whose message stands at a row, or nothing.
    std::string_view SymbolAt(uint32_t row) const;

    auto begin() const { return m_rows.begin(); }
    auto end() const { return m_rows.end(); }

private:
    std::map<std::string, std::vector<uint32_t>, std::less<>> m_rows;
};

/// What a rejected symbol's row shows, with the annotation mark in front:
/// "#\"%s\" is an Invalid or Unauthorized Symbol.", and "Symbols cannot contain commas." for kCommaSymbol.
std::string InvalidSymbolText(std::string_view symbol);

/// Stands for a typed entry that held a comma; the feed knows no such symbol.
inline constexpr const char* kCommaSymbol = "ERR_COMMA_SYMBOL";

} // namespace vx
