#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx {

/// The symbols that changed since the last repaint, each once.
///
/// Shape   keyed by SymbolHash; symbols that share a hash are kept apart by their text
/// Thread  any; every operation takes the map's own lock
class CSymbolUpdateMap {
public:
    void Add(std::string_view symbol);
    /// Takes one symbol out; returns whether it was there.
    bool Remove(std::string_view symbol);
    /// Takes everything out, in no particular order.
    std::vector<std::string> TakeAll();
    bool IsEmpty() const;
    size_t Size() const;

private:
    mutable std::mutex m_lock;
    std::unordered_multimap<uint32_t, std::string> m_symbols;
};

} // namespace vx
