#include "data/SymbolMap.h"

#include "base/Text.h"
#include "data/SymbolHash.h"

#include <algorithm>

namespace vx {

void CSymbolMap::Add(std::string_view symbol, uint32_t row, uint32_t flag) {
    symbol = TrimBlanks(symbol);
    if (symbol.empty()) return;
    if (SymbolAt(row) != symbol) RemoveRow(row);
    CSymbolRecArray& symbols = m_arrays[SymbolHash(symbol)];
    auto entry = std::ranges::find(symbols, symbol, &SYMBOL_DATA::symbol);
    if (entry == symbols.end()) {
        symbols.push_back({std::string(symbol), {}, flag});
        entry = symbols.end() - 1;
        ++m_count;
    }
    entry->flag = flag;
    if (m_rows.try_emplace(row, symbol).second) entry->rows.push_back(row);
}

std::string CSymbolMap::RemoveRow(uint32_t row) {
    const auto place = m_rows.find(row);
    if (place == m_rows.end()) return {};
    std::string symbol = std::move(place->second);
    m_rows.erase(place);
    CSymbolRecArray& symbols = m_arrays[SymbolHash(symbol)];
    const auto entry = std::ranges::find(symbols, symbol, &SYMBOL_DATA::symbol);
    std::erase(entry->rows, row);
    if (entry->rows.empty()) Erase(symbol);
    return symbol;
}

std::vector<uint32_t> CSymbolMap::RemoveSymbol(std::string_view symbol) {
    const SYMBOL_DATA* data = Find(symbol);
    if (!data) return {};
    std::vector<uint32_t> rows = data->rows;
    for (const uint32_t row : rows) m_rows.erase(row);
    Erase(symbol);
    return rows;
}

void CSymbolMap::Clear() {
    m_arrays.clear();
    m_rows.clear();
    m_count = 0;
}

const SYMBOL_DATA* CSymbolMap::Find(std::string_view symbol) const {
    const CSymbolRecArray* symbols = FindHash(SymbolHash(symbol));
    if (!symbols) return nullptr;
    const auto entry = std::ranges::find(*symbols, symbol, &SYMBOL_DATA::symbol);
    return entry == symbols->end() ? nullptr : &*entry;
}

const CSymbolRecArray* CSymbolMap::FindHash(uint32_t hash) const {
    const auto found = m_arrays.find(hash);
    return found == m_arrays.end() ? nullptr : &found->second;
}

std::string_view CSymbolMap::SymbolAt(uint32_t row) const {
    const auto place = m_rows.find(row);
    return place == m_rows.end() ? std::string_view{} : place->second;
}

void CSymbolMap::Erase(std::string_view symbol) {
    const auto array = m_arrays.find(SymbolHash(symbol));
    std::erase_if(array->second, [&](const SYMBOL_DATA& data) { return data.symbol == symbol; });
    if (array->second.empty()) m_arrays.erase(array);
    --m_count;
}

} // namespace vx
