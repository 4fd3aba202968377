// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/InvalidSymbols.h"
#include "watchlist/document/Row.h"
#include "watchlist/document/SymbolMap.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vx {

/// A row outside of its table, and the grid row that it is to have, or had, in it.
struct SPlacedRow {
    int place = 0;
    SRow row;
};

/// Hears of every change of a row table before it happens, so that it can be undone.
///
/// Thread  GUI thread only
class CRowRecorder {
public:
    virtual ~CRowRecorder() = default;
    /// Something in a row is about to change: its texts, its formats, whether it is hidden.
    virtual void BeforeRow(int row) = 0;
    /// Rows are about to come, go or change places.
    virtual void BeforeRowsMove() = 0;
    virtual void RowsInserted(int firstRow, int count) = 0;
    /// These were taken out.
    virtual void RowsRemoved(const std::vector<SPlacedRow>& rows) = 0;
};

/// The rows of a watchlist, the only place where anything is kept by row. CRowTextMap, CNoteStore and CCellFormatStore
/// are views of it; CSymbolMap and CInvalidSymbols find rows by symbol, and it keeps them right.
///
/// Shape   grid row (1 and up) -> SRow; rows beyond the last one that was set are blank
/// Units   rows at most kMaxRow; a greater one is ignored, and what would leave the table is dropped
/// Cost    rows that come, go or move take time that grows with all rows; everything else does not
/// Thread  GUI thread only
class CRowTable {
public:
    /// The greatest row that a watchlist can have; what a file asks beyond it is not believed.
    static constexpr int kMaxRow = 100000;
    using RowText = std::string SRowExtras::*;

    /// Null, as at first, is nobody.
    void SetRecorder(CRowRecorder* recorder) { m_recorder = recorder; }

    const SRow& Row(int row) const { return IsThere(row) ? m_rows[static_cast<size_t>(row)] : kBlank; }
    std::string_view Symbol(int row) const { return Row(row).symbol; }
    std::string_view Text(int row, RowText text) const { return Row(row).Extras().*text; }
    /// Rows that exist; those beyond are blank.
    int Size() const { return static_cast<int>(m_rows.size()) - 1; }

    /// Puts a symbol into a row that has none.
    ///
    /// flag: see SYMBOL_DATA
    /// Errors  false for a row outside 1..kMaxRow, and nothing changes
    bool SetSymbol(int row, std::string_view symbol, uint32_t flag);
    void ClearSymbol(int row);
    /// Takes a symbol off all its rows and returns them.
    CRowList RemoveSymbol(std::string_view symbol);
    /// An empty text removes what was there.
    void SetText(int row, RowText text, std::string_view value);
    void SetHidden(int row, bool hidden);

    const SCellFormat* FindFormat(int row, int column) const;
    /// nullopt removes it.
    void SetFormat(int row, int column, std::optional<SCellFormat> format);
    /// All of a row.
    void SetFormats(int row, std::vector<SRowFormat> formats);
    size_t FormatCount() const { return m_formatCount; }
    /// Gives all formats new columns, below 0 to drop them; no two of a row may get the same one.
    template <typename NewColumn> void RenumberColumns(NewColumn&& newColumn) {
        for (int row = 0; row <= Size(); ++row) {
            std::vector<SRowFormat> formats = Row(row).Extras().formats;
            bool moves = false;
            for (SRowFormat& cell : formats) {
                const int column = newColumn(cell.column);
                moves = moves || column != cell.column;
                cell.column = column;
            }
            if (moves) SetFormats(row, std::move(formats));
        }
    }

    /// The number that stays with a row; the row comes to exist.
    ///
    /// Errors  0 for a row outside 1..kMaxRow
    uint32_t MakeId(int row);
    /// The greatest number that was given.
    uint32_t LastId() const { return m_lastId; }
    /// The row that has the number now, 0 when there is none. Looks at every row.
    int RowOfId(uint32_t id) const;
    /// For every number the row that has it, 0 for those that no row has. Index is the number.
    std::vector<int> RowsOfIds() const;

    /// The greatest row with a symbol; 0 when there is none.
    int LastSymbolRow() const { return m_symbolRows.last; }
    /// The greatest row with an annotation or a note, and how many there are.
    int LastTextRow(RowText text) const { return TallyOf(text)->last; }
    int TextCount(RowText text) const { return TallyOf(text)->count; }
    /// The greatest row in which there is anything; 0 when there is none. Looks at rows.
    int LastKeptRow() const;
    bool AnyHidden() const { return m_hiddenCount > 0; }
    /// Rising. Looks at every row while there are any.
    std::vector<int> HiddenRows() const;

    /// Blank rows come before firstRow.
    void InsertRows(int firstRow, int count);
    /// Takes out rows, given in rising order. Returns them; gone: the symbols that are in no row any more.
    std::vector<SPlacedRow> RemoveRows(const std::vector<int>& rows, std::vector<std::string>& gone);
    /// Puts rows, in rising order, where they are to be. Returns the symbols that were in no row before.
    std::vector<std::string> PutRows(std::vector<SPlacedRow> rows);
    /// newRowOf[r] is where row r goes, a permutation of the rows 1.. that it covers, at most kMaxRow; the others stay.
    void Reorder(const std::vector<int>& newRowOf);

    const CSymbolMap& Symbols() const { return m_symbols; }
    const CInvalidSymbols& Rejected() const { return m_rejected; }
    /// Nothing is left, and nobody hears of it. Numbers that rows had are not given again.
    void Clear();

private:
    /// How many rows have something, and the greatest of them.
    struct STally {
        int count = 0;
        int last = 0;
    };

    static const SRow kBlank;

    bool IsThere(int row) const { return row >= 0 && static_cast<size_t>(row) < m_rows.size(); }
    static bool IsInside(int row) { return row >= 0 && row <= kMaxRow; }
    SRow& Make(int row);
    SRow Blank();
    void Before(int row);
    const STally* TallyOf(RowText text) const;
    STally* TallyOf(RowText text) { return const_cast<STally*>(std::as_const(*this).TallyOf(text)); }
    template <typename Has> static void Count(STally& tally, int row, bool comes, Has&& has);
    template <typename Has> static void FindLast(STally& tally, int from, Has&& has);
    void CountRow(int row);
    void CountAll();
    template <typename NewRow> std::vector<std::string> Renumber(NewRow&& newRow);

    CRowRecorder* m_recorder = nullptr;
    std::vector<SRow> m_rows{1}; ///< Index is the grid row; row 0 is always there.
    CSymbolMap m_symbols;
    CInvalidSymbols m_rejected;
    STally m_symbolRows;
    STally m_annotationRows;
    STally m_noteRows;
    uint32_t m_lastId = 0;
    int m_hiddenCount = 0;
    size_t m_formatCount = 0;
};

/// The permutation that moves the rows firstRow to firstRow + count - 1 so that they are before the row that is
/// `before` now; empty when nothing would move.
std::vector<int> MoveOfBlock(int firstRow, int count, int before);

/// The permutation that brings rows into an order: order[i] is the row that goes where rows[i], rising, was.
std::vector<int> OrderOfRows(const std::vector<int>& rows, const std::vector<int>& order);

/// One text of the rows: those that have it, in rising order, as pairs of row and text.
///
///     for (const auto& [row, text] : notes) ...
///
/// Owns    nothing; the table outlives it. A change of the table ends an iteration
template <CRowTable::RowText kText> class CRowTexts {
public:
    class CIterator {
    public:
        CIterator(const CRowTable& table, int row) : m_table(&table), m_row(row) { Find(); }
        std::pair<int, std::string_view> operator*() const { return {m_row, m_table->Text(m_row, kText)}; }
        CIterator& operator++() {
            ++m_row;
            Find();
            return *this;
        }
        bool operator==(const CIterator& other) const { return m_row == other.m_row; }

    private:
        void Find() {
            while (m_row <= m_table->LastTextRow(kText) && m_table->Text(m_row, kText).empty()) ++m_row;
        }
        const CRowTable* m_table;
        int m_row;
    };

    explicit CRowTexts(CRowTable& table) : m_table(table) {}

    /// The text of a row, or nothing (an empty text).
    std::string_view Get(int row) const { return m_table.Text(row, kText); }
    bool Has(int row) const { return !Get(row).empty(); }
    void Remove(int row) { m_table.SetText(row, kText, {}); }
    /// The greatest row that has a text, 0 when there is none.
    int LastRow() const { return m_table.LastTextRow(kText); }
    int Count() const { return m_table.TextCount(kText); }

    CIterator begin() const { return {m_table, 1}; }
    CIterator end() const { return {m_table, LastRow() + 1}; }

protected:
    CRowTable& m_table;
};

} // namespace vx
