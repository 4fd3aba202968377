#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx {

/// One symbol of a document and the rows where it stands.
struct SYMBOL_DATA {
    std::string symbol;         ///< Without blanks around it, at least one character.
    std::vector<uint32_t> rows; ///< Grid row numbers in the order in which they were added, each once.
    uint32_t flag = 0;          ///< As given when the symbol was last added; 1 when a file put it there.
};

/// The symbols that share one hash.
using CSymbolRecArray = std::vector<SYMBOL_DATA>;

/// Finds the grid rows of a symbol, and the symbol of a row.
///
/// Shape   keyed by SymbolHash; symbols are compared exactly, case included; a row holds at most one symbol
/// Owns    copies of the symbols
/// Thread  GUI thread only
class CSymbolMap {
public:
    /// Puts a symbol on a row. Blanks around it go, an empty symbol is ignored; a symbol that stood on the row before
    /// leaves it.
    void Add(std::string_view symbol, uint32_t row, uint32_t flag = 0);
    /// Takes whatever symbol stands on a row off it, and returns that symbol; empty when there was none.
    std::string RemoveRow(uint32_t row);
    /// Takes a symbol off all its rows and returns them.
    std::vector<uint32_t> RemoveSymbol(std::string_view symbol);
    void Clear();

    /// Null when the symbol stands nowhere.
    const SYMBOL_DATA* Find(std::string_view symbol) const;
    /// The symbols of one hash, null when there are none.
    const CSymbolRecArray* FindHash(uint32_t hash) const;
    /// The symbol on a row, empty when there is none. Good until the next change.
    std::string_view SymbolAt(uint32_t row) const;

    /// Number of distinct symbols.
    int Count() const { return m_count; }

    /// Gives every row a new number: newRow(old row) for each row that holds a symbol. Two rows may not get the same
    /// number. For rows that were inserted, deleted (take their symbols off first), moved or sorted.
    template <typename NewRow> void RenumberRows(NewRow&& newRow) {
        m_rows.clear();
        for (auto& [hash, symbols] : m_arrays)
            for (SYMBOL_DATA& data : symbols)
                for (uint32_t& row : data.rows) {
                    row = newRow(row);
                    m_rows[row] = data.symbol;
                }
    }

    /// Calls visit(const SYMBOL_DATA&) for every symbol, in no particular order; the map may not change meanwhile.
    template <typename Visit> void ForEach(Visit&& visit) const {
        for (const auto& [hash, symbols] : m_arrays)
            for (const SYMBOL_DATA& data : symbols) visit(data);
    }

private:
    void Erase(std::string_view symbol);

    std::unordered_map<uint32_t, CSymbolRecArray> m_arrays;
    std::unordered_map<uint32_t, std::string> m_rows;
    int m_count = 0;
};

} // namespace vx
