// SPDX-License-Identifier: MIT
#include "watchlist/document/SymbolMap.h"

#include "base/Text.h"
#include "data/record/SymbolKey.h"

#include <algorithm>
#include <utility>

namespace vx {

void CSymbolMap::Add(std::string_view symbol, uint32_t row, uint32_t flag) {
    symbol = TrimBlanks(symbol);
    if (symbol.empty()) return;
    const uint32_t hash = SymbolHash(symbol);
    const auto [place, isNew] = m_places.try_emplace(hash, static_cast<uint32_t>(m_arrays.size()));
    if (isNew) m_arrays.push_back({hash, {}});
    CSymbolRecArray& symbols = m_arrays[place->second].symbols;
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
    m_places.clear();
    m_count = 0;
}

const SYMBOL_DATA* CSymbolMap::Find(std::string_view symbol) const {
    return const_cast<CSymbolMap*>(this)->Entry(symbol);
}

const CSymbolRecArray* CSymbolMap::FindHash(uint32_t hash) const {
    const auto place = m_places.find(hash);
    return place == m_places.end() ? nullptr : &m_arrays[place->second].symbols;
}

SYMBOL_DATA* CSymbolMap::Entry(std::string_view symbol) {
    const auto place = m_places.find(SymbolHash(symbol));
    return place == m_places.end() ? nullptr : m_arrays[place->second].symbols.Find(symbol);
}

void CSymbolMap::Erase(std::string_view symbol) {
    const auto place = m_places.find(SymbolHash(symbol));
    SHashed& array = m_arrays[place->second];
    array.symbols.Remove(symbol);
    --m_count;
    if (!array.symbols.empty()) return;
    // The last one takes its place.
    if (&array != &m_arrays.back()) {
        array = std::move(m_arrays.back());
        m_places[array.hash] = place->second;
    }
    m_arrays.pop_back();
    m_places.erase(place);
}

SYMBOL_DATA* CSymbolRecArray::Find(std::string_view symbol) {
    if (m_places) {
        const auto place = m_places->find(symbol);
        return place == m_places->end() ? nullptr : &m_symbols[place->second];
    }
    const auto found = std::ranges::find(m_symbols, symbol, &SYMBOL_DATA::symbol);
    return found == m_symbols.end() ? nullptr : &*found;
}

SYMBOL_DATA& CSymbolRecArray::Add(SYMBOL_DATA data) {
    m_symbols.push_back(std::move(data));
    if (m_places) {
        m_places->emplace(m_symbols.back().symbol, m_symbols.size() - 1);
    } else if (m_symbols.size() > kMostWalked) {
        m_places = std::make_unique<CPlaces>();
        for (size_t i = 0; i < m_symbols.size(); ++i) m_places->emplace(m_symbols[i].symbol, i);
    }
    return m_symbols.back();
}

void CSymbolRecArray::Remove(std::string_view symbol) {
    SYMBOL_DATA* data = Find(symbol);
    if (!data) return;
    if (m_places) {
        m_places->erase(m_places->find(symbol));
        if (data != &m_symbols.back())
            (*m_places)[m_symbols.back().symbol] = static_cast<size_t>(data - m_symbols.data());
    }
    if (data != &m_symbols.back()) *data = std::move(m_symbols.back());
    m_symbols.pop_back();
}

} // namespace vx
