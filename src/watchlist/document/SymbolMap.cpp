#include "watchlist/document/SymbolMap.h"

#include "base/Text.h"
#include "data/record/SymbolKey.h"

namespace vx {

void CSymbolMap::Add(std::string_view symbol, uint32_t row, uint32_t flag) {
    symbol = TrimBlanks(symbol);
    if (symbol.empty()) return;
    CSymbolRecArray& symbols = m_arrays[SymbolHash(symbol)];
    SYMBOL_DATA* data = symbols.Find(symbol);
    if (!data) {
        data = &symbols.Add({std::string(symbol), {}, flag});
        ++m_count;
    }
    data->flag = flag;
    data->rows.Insert(row);
}

bool CSymbolMap::Remove(std::string_view symbol, uint32_t row) {
    SYMBOL_DATA* data = Entry(symbol);
    if (!data || !data->rows.Erase(row)) return false;
    if (data->rows.empty()) Erase(symbol);
    return true;
}

CRowList CSymbolMap::RemoveSymbol(std::string_view symbol) {
    SYMBOL_DATA* data = Entry(symbol);
    if (!data) return {};
    CRowList rows;
    std::swap(rows, data->rows);
    Erase(symbol);
    return rows;
}

void CSymbolMap::Clear() {
    m_arrays.clear();
    m_count = 0;
}

const SYMBOL_DATA* CSymbolMap::Find(std::string_view symbol) const {
    return const_cast<CSymbolMap*>(this)->Entry(symbol);
}

const CSymbolRecArray* CSymbolMap::FindHash(uint32_t hash) const {
    const auto found = m_arrays.find(hash);
    return found == m_arrays.end() ? nullptr : &found->second;
}

SYMBOL_DATA* CSymbolMap::Entry(std::string_view symbol) {
    const auto found = m_arrays.find(SymbolHash(symbol));
    return found == m_arrays.end() ? nullptr : found->second.Find(symbol);
}

void CSymbolMap::Erase(std::string_view symbol) {
    const auto array = m_arrays.find(SymbolHash(symbol));
    array->second.Remove(symbol);
    if (array->second.empty()) m_arrays.erase(array);
    --m_count;
}

} // namespace vx
