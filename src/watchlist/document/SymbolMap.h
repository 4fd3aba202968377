#pragma once

#include "base/Hash.h"
#include "watchlist/document/SymbolRecArray.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx {

/// Finds the grid rows of a symbol. Which symbol stands in a row is the document's own knowledge.
///
/// Shape   keyed by SymbolHash; symbols are compared exactly, case included
/// Owns    copies of the symbols
/// Thread  GUI thread only
class CSymbolMap {
public:
    /// Adds a row to a symbol. Blanks around it go, an empty symbol is ignored, a row that it has already stays one.
    void Add(std::string_view symbol, uint32_t row, uint32_t flag = 0);
    /// Takes a row from a symbol, and the symbol with its last row; false when it did not stand there.
    bool Remove(std::string_view symbol, uint32_t row);
    /// Takes a symbol off all its rows and returns them.
    CRowList RemoveSymbol(std::string_view symbol);
    void Clear();

    /// Gives every row the number newRow(row), 0 to drop it; no two rows may get the same one.
    ///
    /// Returns the symbols that stand nowhere any more, in no particular order
    template <typename NewRow> std::vector<std::string> Renumber(NewRow&& newRow) {
        std::vector<std::string> gone;
        for (auto& [hash, symbols] : m_arrays)
            for (SYMBOL_DATA& data : symbols) {
                data.rows.Renumber(newRow);
                if (data.rows.empty()) gone.push_back(data.symbol);
            }
        for (const std::string& symbol : gone) Erase(symbol);
        return gone;
    }

    /// Null when the symbol stands nowhere.
    const SYMBOL_DATA* Find(std::string_view symbol) const;
    /// The symbols of one hash, null when there are none.
    const CSymbolRecArray* FindHash(uint32_t hash) const;

    /// Number of distinct symbols.
    int Count() const { return m_count; }

    /// Calls visit(const SYMBOL_DATA&) for every symbol, in no particular order; the map may not change meanwhile.
    template <typename Visit> void ForEach(Visit&& visit) const {
        for (const auto& [hash, symbols] : m_arrays)
            for (const SYMBOL_DATA& data : symbols) visit(data);
    }

private:
    struct SKeyHash {
        CSeededHash hash;
        size_t operator()(uint32_t key) const { return hash(uint64_t{key}); }
    };

    SYMBOL_DATA* Entry(std::string_view symbol);
    void Erase(std::string_view symbol);

    std::unordered_map<uint32_t, CSymbolRecArray, SKeyHash> m_arrays;
    int m_count = 0;
};

} // namespace vx
