// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/CellFormat.h"
#include "watchlist/document/RowTable.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace vx {

struct SFieldEntry;

/// The formats of one watchlist's cells.
///
/// A cell looks as its own record says, else as its column's (row 0), else as the grid's (row 0, column 0), which is
/// always there. Every record is a whole format.
///
/// Owns    nothing: a view of the rows, which keep the records; or rows of its own, when it is made without any
/// Shape   keyed by grid row and grid column, 0 and up; only cells that were given a format have a record
/// Units   rows up to kMostRow, columns up to kMostColumn, kMostRecords records in all; nothing beyond is kept
/// Errors  rows and columns outside are ignored
/// Thread  GUI thread only
/// Source  docs/file-format.md, "Formatting", for the text
class CCellFormatStore {
public:
    static constexpr int kMostRow = 100000;
    static constexpr int kMostColumn = 1000;
    static constexpr size_t kMostRecords = 500'000;

    CCellFormatStore() : m_own(std::make_unique<CRowTable>()), m_rows(m_own.get()) {}
    explicit CCellFormatStore(CRowTable& rows) : m_rows(&rows) {}

    /// No records are left, and the grid has the default format.
    void Clear();

    /// The format in which a cell is drawn. Good until the next change.
    const SCellFormat& Effective(int row, int column) const;
    /// The format of a column's cells that have none of their own.
    const SCellFormat& ColumnFormat(int column) const;
    const SCellFormat& GridFormat() const;
    /// The cell's own record, null when it has none.
    const SCellFormat* Find(int row, int column) const;

    /// Decimals of a cell; with grid precision those of the grid's format.
    int Decimals(int row, int column, bool useGridPrecision) const;
    /// Alignment of a cell; with default alignment numbers are right aligned and all else left. entry: the column's,
    /// null for a column that the catalogue does not hold.
    ECellAlign Alignment(int row, int column, const SFieldEntry* entry, bool useDefaultAlignment) const;

    /// Gives a cell, a column (row 0) or the grid (row 0, column 0) a format.
    ///
    /// Errors  false, and nothing changes, outside the limits and for a font that cannot be written
    bool Set(int row, int column, SCellFormat format);
    /// The cell's content changed by the user's hand: its record goes. The grid's becomes the default.
    void Reset(int row, int column);
    /// A column of a name was put at a place where none was: its format is the grid's, with the decimals that its name
    /// stands for. Not for columns whose formats a file brings.
    void SetNewColumn(int column, std::string_view name);

    // Columns that move; column 0 stays, and what would leave the limits is dropped. Rows move in the row table.

    void InsertColumn(int column);
    void RemoveColumn(int column);
    void MoveColumn(int from, int to);

    /// The greatest row that a cell has a record in, 0 when there is none. Looks at every row.
    int LastRow() const;
    /// Calls visit(row, column) for every record but the grid's, row by row.
    template <typename Visit> void ForEach(Visit&& visit) const {
        for (int row = 0; row <= m_rows->Size(); ++row)
            for (const SRowFormat& cell : m_rows->Row(row).Extras().formats)
                if (row != 0 || cell.column != 0) visit(row, cell.column);
    }

    /// Calls visit(row, column, format, base) for the grid's format and every other record, row by row. base: the
    /// cell's default, null for the grid.
    template <typename Visit> void ForEachRecord(Visit&& visit) const {
        const SCellFormat& grid = GridFormat();
        visit(0, 0, grid, nullptr);
        for (int row = 0; row <= m_rows->Size(); ++row)
            for (const auto& [column, format] : m_rows->Row(row).Extras().formats)
                if (row != 0 || column != 0) visit(row, column, format, row == 0 ? &grid : &ColumnFormat(column));
    }

    /// Records, the grid's not among them.
    size_t Size() const { return m_rows->FormatCount() - (m_rows->FindFormat(0, 0) ? 1 : 0); }

    // Text.

    /// Appends all records as one line of text without a line end, row by row. Fields that equal those of the cell's
    /// default (its column's format; the grid's for a column) are left empty. A record that equals its default is left
    /// out unless it is in column 0; the grid's is there whole.
    void Write(std::string& out) const;
    std::string Write() const {
        std::string out;
        Write(out);
        return out;
    }
    /// Whether the text has a record of this column, format and default.
    static bool IsWritten(int column, const SCellFormat& format, const SCellFormat* base) {
        return !base || column == 0 || !HaveSameFields(format, *base);
    }
    /// Replaces all records by those that a text describes; an empty text changes nothing.
    ///
    /// Returns how many pieces of it were left out: negative or too great a row or column, no "," or ":"
    size_t Read(std::string_view text);

private:
    static constexpr int kNone = -1;

    static bool IsInside(int row, int column) {
        return row >= 0 && row <= kMostRow && column >= 0 && column <= kMostColumn;
    }
    bool ReadPiece(std::string_view piece);

    std::unique_ptr<CRowTable> m_own; ///< Null for a document's.
    CRowTable* m_rows;
};

} // namespace vx
