#include "watchlist/document/InvalidSymbols.h"

namespace vx {

void CInvalidSymbols::Add(std::string_view symbol, const CRowList& rows) {
    const auto entry = m_rows.try_emplace(std::string(symbol)).first;
    for (const uint32_t row : rows) {
        RemoveRow(row);
        entry->second.Insert(row);
        m_places[row] = entry;
    }
}

void CInvalidSymbols::RemoveRow(uint32_t row) {
    const auto place = m_places.find(row);
    if (place == m_places.end()) return;
    place->second->second.Erase(row);
    m_places.erase(place);
}

void CInvalidSymbols::Clear() {
    m_places.clear();
    m_rows.clear();
}

std::string_view CInvalidSymbols::SymbolAt(uint32_t row) const {
    const auto place = m_places.find(row);
    return place == m_places.end() ? std::string_view{} : std::string_view{place->second->first};
}

void CInvalidSymbols::FindPlaces() {
    m_places.clear();
    for (auto entry = m_rows.begin(); entry != m_rows.end(); ++entry)
        for (const uint32_t row : entry->second) m_places[row] = entry;
}

std::string InvalidSymbolText(std::string_view symbol) {
    if (symbol == kCommaSymbol) return "#Symbols cannot contain commas.";
    return "#\"" + std::string(symbol) + "\" is an Invalid or Unauthorized Symbol.";
}

} // namespace vx
