#pragma once

#include "watchlist/document/RowList.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// One symbol of a document and the rows where it stands.
struct SYMBOL_DATA {
    std::string symbol; ///< Without blanks around it, at least one character.
    CRowList rows;      ///< Grid row numbers; at least one.
    uint32_t flag = 0;  ///< As given when the symbol was last added; 1 when a file put it there.
};

/// The symbols that share one hash, in no particular order. Mostly there is one of them; a file can be made to have
/// all of its symbols here, and then a list of their places is kept beside them.
///
/// Thread  any, as a std::vector
class CSymbolRecArray {
public:
    /// Up to here a walk over the symbols is faster than anything else.
    static constexpr size_t kMostWalked = 16;

    /// Null when the symbol is not among them. Good until the next Add or Remove.
    SYMBOL_DATA* Find(std::string_view symbol);
    /// The symbol may not be among them yet.
    SYMBOL_DATA& Add(SYMBOL_DATA data);
    /// The last one takes its place.
    void Remove(std::string_view symbol);

    bool empty() const { return m_symbols.empty(); }
    size_t size() const { return m_symbols.size(); }
    auto begin() { return m_symbols.begin(); }
    auto end() { return m_symbols.end(); }
    auto begin() const { return m_symbols.begin(); }
    auto end() const { return m_symbols.end(); }

private:
    using CPlaces = std::map<std::string, size_t, std::less<>>;

    std::vector<SYMBOL_DATA> m_symbols;
    std::unique_ptr<CPlaces> m_places; ///< From the moment there are more than kMostWalked.
};

} // namespace vx
