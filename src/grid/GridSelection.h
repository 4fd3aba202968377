// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

#include <algorithm>
#include <vector>

namespace vx {

class CGridCtrl;

/// A grid cell; row 0 is the header row, column 0 the row-number column.
struct SGridCell {
    int row = 1;
    int column = 1;

    bool operator==(const SGridCell&) const = default;
};

/// A range of cells, first to last, both included.
struct SGridRange {
    int firstRow = 1;
    int lastRow = 1;
    int firstColumn = 1;
    int lastColumn = 1;

    bool operator==(const SGridRange&) const = default;
    bool HasRow(int row) const { return row >= firstRow && row <= lastRow; }
    bool HasColumn(int column) const { return column >= firstColumn && column <= lastColumn; }
    bool Has(int row, int column) const { return HasRow(row) && HasColumn(column); }
    bool IsOneCell() const { return firstRow == lastRow && firstColumn == lastColumn; }
};

/// The focus cell and the one selected range, which stretches between an anchor and the cell last reached.
///
/// Shape   the focus cell is the anchor unless a move keeps it; all cells are real ones (1..)
struct SGridSelection {
    SGridCell focus;
    SGridCell anchor;
    SGridCell reach;

    SGridRange Range() const {
        return {std::min(anchor.row, reach.row), std::max(anchor.row, reach.row), std::min(anchor.column, reach.column),
                std::max(anchor.column, reach.column)};
    }
    bool operator==(const SGridSelection&) const = default;
};

/// Moves the focus cell and the selected range of a grid, keeps them on shown cells, and announces and signals what
/// changed.
class CGridSelector {
public:
    explicit CGridSelector(CGridCtrl& grid) : m_grid(grid) {}

    const SGridSelection& State() const { return m_state; }
    SGridRange Range() const { return m_state.Range(); }

    /// Takes a selection, clamped to the grid.
    void Update(const SGridSelection& next);
    /// The grid's layout is another: what was hidden or cut off is no longer selected.
    void KeepInside();
    /// The selection after a move of rows; newRowOf as CGridCtrl::MoveRows takes it. A row that was not selected never
    /// becomes so.
    SGridSelection WithItsRows(const std::vector<int>& newRowOf) const;

    /// As CGridCtrl::SetFocusCell.
    void FocusOn(int row, int column);
    /// Moves the focus there, or stretches the range to there, and scrolls it into sight.
    void MoveTo(SGridCell cell, bool extend);
    /// One cell on or back, from row to row; false at the end.
    bool StepInRow(int step);
    /// Selects what was clicked on for a menu, unless it is selected already.
    void SelectUnder(const SGridCell& at);
    void SelectRow(int row);
    void SelectColumn(int column);
    bool WholeColumns() const;
    bool WholeRows() const;
    int RowsPerPage() const;

    /// The rows of a range, as wide as the viewport.
    QRect RangeRect(const SGridRange& range) const;
    /// Tells assistive technology where the focus is.
    void Announce();

private:
    SGridSelection Clamped(SGridSelection selection) const;

    CGridCtrl& m_grid;
    SGridSelection m_state;
};

/// Where a row is after a move of rows; newRowOf as CGridCtrl::MoveRows takes it.
inline int RowAfterMove(const std::vector<int>& newRowOf, int row) {
    return static_cast<size_t>(row) < newRowOf.size() ? newRowOf[static_cast<size_t>(row)] : row;
}

} // namespace vx
