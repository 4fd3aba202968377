#include "data/SymbolUpdateMap.h"

#include "data/SymbolHash.h"

#include <algorithm>

namespace vx {

namespace {

template <typename Map> auto Find(Map& symbols, std::string_view symbol) {
    const auto [first, last] = symbols.equal_range(SymbolHash(symbol));
    const auto found = std::find_if(first, last, [&](const auto& entry) { return entry.second == symbol; });
    return found == last ? symbols.end() : found;
}

} // namespace

void CSymbolUpdateMap::Add(std::string_view symbol) {
    const std::scoped_lock lock(m_lock);
    if (Find(m_symbols, symbol) == m_symbols.end()) m_symbols.emplace(SymbolHash(symbol), symbol);
}

bool CSymbolUpdateMap::Remove(std::string_view symbol) {
    const std::scoped_lock lock(m_lock);
    const auto found = Find(m_symbols, symbol);
    if (found == m_symbols.end()) return false;
    m_symbols.erase(found);
    return true;
}

std::vector<std::string> CSymbolUpdateMap::TakeAll() {
    const std::scoped_lock lock(m_lock);
    std::vector<std::string> taken;
    taken.reserve(m_symbols.size());
    for (auto& [hash, symbol] : m_symbols) taken.push_back(std::move(symbol));
    m_symbols.clear();
    return taken;
}

bool CSymbolUpdateMap::IsEmpty() const { return Size() == 0; }

size_t CSymbolUpdateMap::Size() const {
    const std::scoped_lock lock(m_lock);
    return m_symbols.size();
}

} // namespace vx
