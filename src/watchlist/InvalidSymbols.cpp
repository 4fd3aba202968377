#include "watchlist/InvalidSymbols.h"

#include <algorithm>

namespace vx {

void CInvalidSymbols::Add(std::string_view symbol, const std::vector<uint32_t>& rows) {
    std::vector<uint32_t>& kept = m_rows[std::string(symbol)];
    kept.insert(kept.end(), rows.begin(), rows.end());
    std::sort(kept.begin(), kept.end());
    kept.erase(std::unique(kept.begin(), kept.end()), kept.end());
}

void CInvalidSymbols::RemoveRow(uint32_t row) {
    for (auto& [symbol, rows] : m_rows) rows.erase(std::remove(rows.begin(), rows.end(), row), rows.end());
}

std::string_view CInvalidSymbols::SymbolAt(uint32_t row) const {
    for (const auto& [symbol, rows] : m_rows)
        if (std::binary_search(rows.begin(), rows.end(), row)) return symbol;
    return {};
}

std::string InvalidSymbolText(std::string_view symbol) {
    if (symbol == kCommaSymbol) return "#Symbols cannot contain commas.";
    return "#\"" + std::string(symbol) + "\" is an Invalid or Unauthorized Symbol.";
}

} // namespace vx
