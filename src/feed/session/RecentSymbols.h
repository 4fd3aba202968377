#pragma once

#include "data/store/SymbolKeyed.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>

namespace vx {

/// The symbols that were noted last: at most kMost, and of kMostBytes together; the oldest are forgotten first.
///
/// Thread  GUI thread only
class CRecentSymbols {
public:
    static constexpr size_t kMost = 10000;
    static constexpr size_t kMostBytes = 1024 * 1024;

    void Note(std::string_view symbol) {
        const auto [place, isNew] = m_symbols.emplace(symbol);
        if (!isNew) return;
        m_order.push_back(&*place);
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
