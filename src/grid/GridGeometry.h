// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QSize>
#include <vector>

namespace vx {

/// Where the cells of a grid are in its viewport: the header row and the row-number column at the top and left edge,
/// then the locked columns, then the columns that scroll, of which one may be sticky.
///
/// Shape   row 0 is the header row, column 0 the row-number column; rows are all of one height but hidden ones, which
///         keep their numbers and have none; a column of width 0 is hidden. Rows are found by division, and by binary
///         search among the hidden ones, columns by binary search over the sums of the widths: no cost grows with the
///         number of rows
/// Units   logical pixels; viewport coordinates, (0,0) at the top left
/// Errors  values out of range are clamped; a place without a cell is column -1 or row -1
class CGridGeometry {
public:
    static constexpr int kMaxRows = 1'000'000;
    static constexpr int kMaxColumnWidth = 6000;
    static constexpr int kMaxRowHeight = 600;

    CGridGeometry();

    void SetRowCount(int rows);
    int RowCount() const { return m_rowCount; }
    /// rising: row numbers, each once, rising; those that there are not have no effect until there are.
    void SetHiddenRows(std::vector<int> rising);
    const std::vector<int>& HiddenRows() const { return m_hidden; }
    bool IsRowHidden(int row) const;
    /// Rows that are not hidden.
    int ShownRowCount() const { return m_shownRows; }
    /// Where a row stands among the shown ones, from 1; a hidden row has the place of the next shown one below it.
    int ShownIndexOf(int row) const { return m_hidden.empty() ? row : row - HiddenBefore(row); }
    /// The shown row at a place; after the last one RowCount() + 1 and further.
    int ShownRowAt(int place) const;
    /// The row itself when it is shown, else the next shown one below it, RowCount() + 1 when there is none.
    int NextShownRow(int row) const { return ShownRowAt(ShownIndexOf(row)); }
    /// The shown row so many shown rows below a row (above it for less than 0), as far as there are any; with 0 steps
    /// the row itself or the shown one nearest to it. The row itself again when all are hidden.
    int RowAway(int row, int steps) const;
    /// How many rows from the first to the last are shown.
    int ShownRowsIn(int firstRow, int lastRow) const { return ShownIndexOf(lastRow + 1) - ShownIndexOf(firstRow); }
    void SetRowHeights(int header, int row);
    int RowHeight() const { return m_rowHeight; }
    int HeaderHeight() const { return m_headerHeight; }

    /// Columns 1..columns; those that are added get the given width.
    void SetColumnCount(int columns, int width);
    int ColumnCount() const { return static_cast<int>(m_widths.size()) - 1; }
    /// Returns whether the width is another one than before.
    bool SetColumnWidth(int column, int width);
    int ColumnWidth(int column) const;
    /// The first columns (not counting the row numbers) that stay while the others scroll.
    void SetLockedColumns(int columns);
    int LockedColumns() const { return m_locked; }
    /// The locked columns that a narrow viewport has room for; the rest scroll until it is wider.
    int ShownLockedColumns() const { return m_shownLocked; }
    /// A column that does not scroll out at the left: it stops at the edge of the fixed part, and the others scroll on
    /// under it. 0 for none; a locked or hidden one has no effect, nor has one for which a narrow viewport has no room.
    void SetStickyColumn(int column);
    /// The sticky column while it is held at that edge, else 0.
    int StuckColumn() const { return m_stuck; }
    /// The one at the right edge of the fixed part, 0 when that is the row numbers.
    int LastFixedColumn() const { return m_stuck > 0 ? m_stuck : m_shownLocked; }
    /// Whether a column stays where it is while the others scroll: row numbers, locked ones, the stuck one.
    bool IsFixed(int column) const { return column <= m_shownLocked || column == m_stuck; }

    void SetViewport(const QSize& size);
    QSize Viewport() const { return m_viewport; }
    void SetScroll(int x, int y);
    int ScrollX() const { return m_scrollX; }
    int ScrollY() const { return m_scrollY; }
    int MaxScrollX() const;
    int MaxScrollY() const;
    /// The part of the viewport in which columns scroll, and rows.
    int ScrolledWidth() const { return m_viewport.width() - FixedWidth(); }
    int ScrolledHeight() const { return m_viewport.height() - m_headerHeight; }

    /// Right edge of the row-number column, the locked columns and the stuck one.
    int FixedWidth() const { return LockedRight() + (m_stuck > 0 ? ColumnWidth(m_stuck) : 0); }
    /// Left edge of the last column's right neighbour, were there one.
    int ContentRight() const;
    int ContentBottom() const;
    /// The width of all columns together, the row numbers included.
    int ContentWidth() const { return m_left.back(); }

    int ColumnLeft(int column) const;
    int RowTop(int row) const;
    /// The whole cell, whether or not it can be seen. Row or column 0 gives header cells.
    QRect CellRect(int row, int column) const;
    /// The part of a cell that the fixed parts and the viewport's edges leave to be seen.
    QRect VisibleCellRect(int row, int column) const;

    int ColumnAt(int x) const;
    int RowAt(int y) const;
    /// The column (row) before which something dropped at a place would be inserted; count + 1 after the last one.
    int ColumnBoundaryAt(int x) const;
    int RowBoundaryAt(int y) const;

    /// First and last row (1..) that can be seen, even in part; first > last when there is none. Hidden rows may lie
    /// between them.
    int FirstVisibleRow() const { return ShownRowAt(m_scrollY / m_rowHeight + 1); }
    int LastVisibleRow() const;
    /// First and last of the columns beyond the fixed ones that can be seen; first > last when there is none.
    int FirstScrolledColumn() const;
    int LastScrolledColumn() const;

    /// The scroll position, next to the present one, at which a cell is seen whole (or its beginning, if it is larger
    /// than the place for it).
    QPoint ScrollToShow(int row, int column) const;

private:
    int HiddenBefore(int row) const;
    void Relayout();
    void Stick();
    int LockedRight() const { return m_left[static_cast<size_t>(m_shownLocked) + 1]; }
    int StickyWidth() const;
    int ColumnAtContent(int x) const;

    std::vector<int> m_widths; // [0] is the row-number column
    std::vector<int> m_left;   // sums of the widths; one more than columns
    std::vector<int> m_hidden; // rising
    int m_rowCount = 0;
    int m_shownRows = 0;
    int m_rowHeight = 20;
    int m_headerHeight = 24;
    int m_locked = 0;
    int m_shownLocked = 0;
    int m_sticky = 0;
    int m_stuck = 0;
    int m_scrollX = 0;
    int m_scrollY = 0;
    QSize m_viewport;
};

} // namespace vx
