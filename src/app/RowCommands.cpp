#include "app/RowCommands.h"

#include "base/MessageBox.h"
#include "watchlist/SortCommands.h"
#include "watchlist/UndoStep.h"
#include "watchlist/WatchlistDoc.h"
#include "watchlist/WatchlistGrid.h"
#include "watchlist/WatchlistView.h"

#include <fmt/format.h>

namespace vx {

CRowCommands::CRowCommands(const SBoardSeat& seat) : CBoardCommands(seat) {
    CCommands& commands = seat.commands;
    commands.Bind(ECommand::RowInsert, [this] { Insert(); });
    commands.Bind(ECommand::RowDelete, [this] { Delete(); });
    commands.Bind(
        ECommand::RowMoveUp, [this] { MoveBy(-1); },
        [this](SCommandState& state) { state.enabled = Region().range.firstRow > 1; });
    commands.Bind(
        ECommand::RowMoveDown, [this] { MoveBy(1); },
        [this](SCommandState& state) { state.enabled = Region().range.lastRow < Doc().RowCount(); });
    connect(&Grid(), &CGridCtrl::RowsDragged, this, &CRowCommands::MoveBefore);
}

void CRowCommands::Insert() {
    const SGridRegion region = Region();
    if (Doc().InsertRows(region.range.firstRow, region.Rows())) return;
    ShowMessageBox({fmt::format("{} cannot be inserted: a watchlist has at most {} rows.",
                                Counted(region.Rows(), "row"), CRowTable::kMaxRow),
                    {},
                    EBoxButtons::Ok,
                    EBoxIcon::Exclamation});
}

void CRowCommands::Delete() {
    if (!MayDeleteSelection(Doc())) return;
    const SGridRegion region = Region();
    Doc().DeleteRows(region.range.firstRow, region.Rows());
    View().ApplySortRecord(); // The question may have switched auto sort off.
    Grid().SetFocusCell(region.range.firstRow, region.focus.column);
}

void CRowCommands::MoveBy(int step) {
    const SGridRange range = Region().range;
    MoveBefore(range.firstRow, range.lastRow, step < 0 ? range.firstRow - 1 : range.lastRow + 2);
}

void CRowCommands::MoveBefore(int first, int last, int before) {
    SGridRange range = Region().range;
    const SGridCell focus = Grid().FocusCell();
    Doc().MoveRows(first, last - first + 1, before);
    Doc().RebuildGrid(); // The last used row may be another.
    const int moved = before > last ? before - 1 - last : before - first;
    range.firstRow += moved;
    range.lastRow += moved;
    Grid().SelectRange(range);
    Grid().EnsureVisible(moved > 0 ? range.lastRow : range.firstRow, focus.column);
}

} // namespace vx
