// SPDX-License-Identifier: MIT
#pragma once

#include "data/record/SymbolKey.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <unordered_set>

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
        m_positions[std::string(symbol)].push_back(m_order.insert(m_order.end(), std::string(symbol)));
    }
    /// There must be one.
    void RemoveFirst() {
        const auto found = m_positions.find(m_order.front());
        found->second.pop_front();
        if (found->second.empty()) m_positions.erase(found);
        m_order.pop_front();
    }
    /// Takes a symbol out as often as it is there.
    void Remove(std::string_view symbol) {
        const auto found = m_positions.find(symbol);
        if (found == m_positions.end()) return;
        const auto gone = m_positions.extract(found); // Keeps the text that `symbol` may point into until the end.
        std::list<std::string> removed;
        for (const auto at : gone.mapped()) removed.splice(removed.end(), m_order, at);
    }

    /// How often a symbol is in it.
    size_t Count(std::string_view symbol) const {
        const auto found = m_positions.find(symbol);
        return found == m_positions.end() ? 0 : found->second.size();
    }

    const std::list<std::string>& Order() const { return m_order; }

private:
    std::list<std::string> m_order;
    CSymbolKeyed<std::deque<std::list<std::string>::iterator>> m_positions; ///< Of each symbol, in its order.
};

/// The symbols that were noted last: at most kMost, and of kMostBytes together; the oldest are forgotten first.
class CRecentSymbols {
public:
    static constexpr size_t kMost = 10000;
    static constexpr size_t kMostBytes = 1024 * 1024;

    void Note(std::string_view symbol) {
        const auto [found, isNew] = m_symbols.emplace(symbol);
        if (!isNew) return;
        m_order.push_back(&*found);
        m_bytes += symbol.size();
        while (m_order.size() > kMost || m_bytes > kMostBytes) ForgetOldest();
    }
    bool Has(std::string_view symbol) const { return m_symbols.find(symbol) != m_symbols.end(); }

private:
    void ForgetOldest() {
        m_bytes -= m_order.front()->size();
        m_symbols.erase(m_symbols.find(*m_order.front()));
        m_order.pop_front();
    }

    std::unordered_set<std::string, SSymbolKeyHash, std::equal_to<>> m_symbols;
    std::deque<const std::string*> m_order; ///< Oldest first.
    size_t m_bytes = 0;
};

} // namespace vx
