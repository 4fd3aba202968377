#pragma once

#include "data/record/SymbolKey.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vx {

/// What a document keeps of a symbol that it has asked the feed to watch.
struct SWatchEntry {
    uint32_t counter = 0; ///< Reset to 0 when the symbol is watched again.
    std::string text;
};

/// The symbols that a document has asked the feed to watch; regional symbols (with "--") are not listed.
class CWatchTable {
public:
    void Record(std::string_view symbol) { m_entries[std::string(symbol)].counter = 0; }
    void Remove(std::string_view symbol) { m_entries.erase(std::string(symbol)); }
    void Clear() { m_entries.clear(); }
    bool Has(std::string_view symbol) const { return m_entries.find(symbol) != m_entries.end(); }
    size_t Count() const { return m_entries.size(); }

private:
    CSymbolKeyed<SWatchEntry> m_entries;
};

} // namespace vx
