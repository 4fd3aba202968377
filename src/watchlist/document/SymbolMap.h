// SPDX-License-Identifier: MIT
#pragma once

#include "base/Hash.h"
#include "watchlist/document/RowList.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// One symbol of a document and the rows where it is.
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

    bool empty() const { return size() == 0; }
    size_t size() const { return m_many ? m_many->symbols.size() : size_t{!m_one.symbol.empty()}; }
    SYMBOL_DATA* begin() { return m_many ? m_many->symbols.data() : &m_one; }
    SYMBOL_DATA* end() { return begin() + size(); }
    const SYMBOL_DATA* begin() const { return m_many ? m_many->symbols.data() : &m_one; }
    const SYMBOL_DATA* end() const { return begin() + size(); }

private:
    struct SMany {
        std::vector<SYMBOL_DATA> symbols;
        std::map<std::string, size_t, std::less<>> places; ///< From the moment there are more than kMostWalked.
    };

    SYMBOL_DATA m_one;             ///< The only one; without a symbol when there is none.
    std::unique_ptr<SMany> m_many; ///< From the second one on.
};

/// Finds the grid rows of a symbol. Which symbol is in a row is the document's own knowledge.
///
/// Shape   keyed by SymbolHash; symbols are compared exactly, case included. Open addressing
/// Owns    copies of the symbols
/// Thread  GUI thread only
class CSymbolMap {
public:
    CSymbolMap() { Clear(); }

    /// Adds a row to a symbol. Blanks around it go, an empty symbol is ignored, a row that it has already stays one.
    void Add(std::string_view symbol, uint32_t row, uint32_t flag = 0);
    /// Takes a row from a symbol, and the symbol with its last row; false when it was not there.
    bool Remove(std::string_view symbol, uint32_t row);
    /// Takes a symbol off all its rows and returns them.
    CRowList RemoveSymbol(std::string_view symbol);
    void Clear();

    /// Gives every row the number newRow(row), 0 to drop it; no two rows may get the same one.
    ///
    /// Returns the symbols that are in no row any more, in no particular order
    template <typename NewRow> std::vector<std::string> Renumber(NewRow&& newRow) {
        std::vector<std::string> gone;
        for (SHashed& array : m_arrays)
            for (SYMBOL_DATA& data : array.symbols) {
                data.rows.Renumber(newRow);
                if (data.rows.empty()) gone.push_back(data.symbol);
            }
        for (const std::string& symbol : gone) Erase(symbol);
        return gone;
    }

    /// Null when the symbol is in no row.
    const SYMBOL_DATA* Find(std::string_view symbol) const;
    /// The symbols of one hash, null when there are none.
    const CSymbolRecArray* FindHash(uint32_t hash) const;

    /// Number of distinct symbols.
    int Count() const { return m_count; }

    /// Calls visit(const SYMBOL_DATA&) for every symbol, in no particular order; the map may not change meanwhile.
    template <typename Visit> void ForEach(Visit&& visit) const {
        for (const SHashed& array : m_arrays)
            for (const SYMBOL_DATA& data : array.symbols) visit(data);
    }

private:
    struct SHashed {
        uint32_t hash;
        CSymbolRecArray symbols;
    };
    struct SSlot {
        uint32_t hash = 0;
        uint32_t place = kFree; ///< In m_arrays.
    };
    static constexpr uint32_t kFree = UINT32_MAX;

    /// The slot of a hash, or the free one where it would be.
    size_t SlotOf(uint32_t hash) const {
        size_t slot = HomeOf(hash);
        while (m_slots[slot].place != kFree && m_slots[slot].hash != hash) slot = Next(slot);
        return slot;
    }
    size_t HomeOf(uint32_t hash) const { return CSeededHash::Fold(hash, m_spread) & (m_slots.size() - 1); }
    size_t Next(size_t slot) const { return (slot + 1) & (m_slots.size() - 1); }
    void FreeSlot(size_t slot);
    void Grow();
    SYMBOL_DATA* Entry(std::string_view symbol);
    void Erase(std::string_view symbol);

    std::vector<SHashed> m_arrays; ///< Side by side: all of them are walked over quickly.
    std::vector<SSlot> m_slots;    ///< Size is a power of two, at most half full.
    uint64_t m_spread = CSeededHash::Seed();
    int m_count = 0;
};

} // namespace vx
