#include "watchlist/document/SymbolRecArray.h"

#include <algorithm>
#include <utility>

namespace vx {

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
