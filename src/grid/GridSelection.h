// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <vector>

namespace vx {

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

/// Where a row is after a move of rows; newRowOf as CGridCtrl::MoveRows takes it.
inline int RowAfterMove(const std::vector<int>& newRowOf, int row) {
    return static_cast<size_t>(row) < newRowOf.size() ? newRowOf[static_cast<size_t>(row)] : row;
}

} // namespace vx
