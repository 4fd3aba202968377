#include "watchlist/view/GridRegion.h"

#include "grid/GridCtrl.h"

namespace vx {

SGridRegion SelectedRegion(const CGridCtrl& grid) {
    SGridRegion out{grid.SelectedRange(), grid.FocusCell(), ERegion::Block};
    if (out.Rows() == 1 && out.Columns() == 1) {
        out.kind = ERegion::Cell;
        return out;
    }
    const bool rows = out.range.firstColumn <= 1 && out.range.lastColumn >= grid.ColumnCount();
    const bool columns = out.range.firstRow <= 1 && out.range.lastRow >= grid.RowCount();
    if (rows != columns) out.kind = rows ? ERegion::Rows : ERegion::Columns;
    return out;
}

} // namespace vx
