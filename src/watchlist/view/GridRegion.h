#pragma once

#include "grid/GridSelection.h"

namespace vx {

class CGridCtrl;

/// What a selection says of itself.
enum class ERegion {
    Cell,    ///< One cell.
    Rows,    ///< Whole rows, and not the whole grid.
    Columns, ///< Whole columns, and not the whole grid.
    Block    ///< Neither: rows or columns may be meant.
};

/// What is selected in a grid, and what that is.
struct SGridRegion {
    SGridRange range;
    SGridCell focus;
    ERegion kind = ERegion::Cell;

    int Rows() const { return range.lastRow - range.firstRow + 1; }
    int Columns() const { return range.lastColumn - range.firstColumn + 1; }
};

SGridRegion SelectedRegion(const CGridCtrl& grid);

} // namespace vx
