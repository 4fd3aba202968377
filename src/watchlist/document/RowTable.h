#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// Which symbol stands in each grid row, the number a row keeps wherever it moves, and whether it is hidden.
///
/// Shape   grid row (1 and up) -> symbol, empty for annotation and empty rows; rows beyond the table are empty
/// Units   rows at most kMaxRow; a greater row is refused
/// Thread  GUI thread only
class CRowTable {
public:
    /// The greatest row that a watchlist can have; what a file asks beyond it is not believed.
    static constexpr int kMaxRow = 100000;

    /// Errors  false for a row outside 1..kMaxRow, and nothing changes
    bool SetSymbol(int row, std::string_view symbol);
    void ClearSymbol(int row);
    std::string_view Symbol(int row) const;
    bool HasSymbol(int row) const { return !Symbol(row).empty(); }

    /// A number that stays with the row when rows move; 0 for a row that nobody asked about yet and that never held a
    /// symbol.
    uint32_t Id(int row) const;
    /// The same, and gives the row a number when it has none.
    ///
    /// Errors  0 for a row outside 1..kMaxRow
    uint32_t MakeId(int row);
    /// The row that has the number now, 0 when there is none. Looks at every row.
    int RowOfId(uint32_t id) const;
    /// The same for many numbers, at the cost of one.
    std::vector<int> RowsOfIds(const std::vector<uint32_t>& ids) const;
    /// Gives a row the number that it had before it was taken out; no other row may have it.
    void SetId(int row, uint32_t id);

    /// Errors  a row outside 1..kMaxRow is ignored
    void SetHidden(int row, bool hidden);
    bool IsHidden(int row) const;
    /// Rising. Looks at every row while there are any.
    std::vector<int> HiddenRows() const;
    bool AnyHidden() const { return m_hiddenCount > 0; }

    /// The greatest row with a symbol, 0 when there is none.
    int LastSymbolRow() const;
    void Clear();

    // Rows that move, with all that is known of them. What would leave the table is dropped.

    void InsertRows(int firstRow, int count);
    void RemoveRows(int firstRow, int count);
    /// newRowOf[r] is where row r went, a permutation of the rows 1.. that it covers, at most kMaxRow; the others stay.
    void Reorder(const std::vector<int>& newRowOf);

private:
    static constexpr int kBlock = 256;

    struct SRow {
        uint32_t id = 0;
        bool hidden = false;
        std::string symbol;
    };

    SRow& At(int row) { return m_rows[static_cast<size_t>(row) - 1]; }
    const SRow* Find(int row) const;
    void GrowTo(int row);
    void Count(int row, int change);
    void CountAll();
    void FindLastSymbolRow(int from);

    std::vector<SRow> m_rows; ///< Index is row - 1.
    /// Symbol rows in each block of kBlock rows, so that the last one is found in few steps wherever it is.
    std::array<uint16_t, kMaxRow / kBlock + 1> m_blocks{};
    uint32_t m_lastId = 0;
    int m_lastSymbolRow = 0;
    int m_hiddenCount = 0;
};

} // namespace vx
