#pragma once

#include "data/store/SymbolKeyed.h"

#include <deque>
#include <list>
#include <string>
#include <string_view>

namespace vx {

/// Symbols in the order in which they came, one of them any number of times. Taking all of one symbol out costs the
/// same however many others there are.
class CSymbolQueue {
public:
    CSymbolQueue() = default;
    CSymbolQueue(const CSymbolQueue&) = delete;
    CSymbolQueue& operator=(const CSymbolQueue&) = delete;
    CSymbolQueue(CSymbolQueue&&) = default;
    CSymbolQueue& operator=(CSymbolQueue&&) = default;

    void Append(std::string_view symbol) {
        m_places[std::string(symbol)].push_back(m_order.insert(m_order.end(), std::string(symbol)));
    }
    /// There must be one.
    void RemoveFirst() {
        const auto place = m_places.find(m_order.front());
        place->second.pop_front();
        if (place->second.empty()) m_places.erase(place);
        m_order.pop_front();
    }
    /// Takes a symbol out as often as it is there.
    void Remove(std::string_view symbol) {
        const auto place = m_places.find(symbol);
        if (place == m_places.end()) return;
        const auto gone = m_places.extract(place); // Keeps the text that `symbol` may point into until the end.
        std::list<std::string> removed;
        for (const auto at : gone.mapped()) removed.splice(removed.end(), m_order, at);
    }

    /// How often a symbol is in it.
    size_t Count(std::string_view symbol) const {
        const auto place = m_places.find(symbol);
        return place == m_places.end() ? 0 : place->second.size();
    }

    const std::list<std::string>& Order() const { return m_order; }

private:
    std::list<std::string> m_order;
    CSymbolKeyed<std::deque<std::list<std::string>::iterator>> m_places; ///< Of each symbol, in its order.
};

} // namespace vx
