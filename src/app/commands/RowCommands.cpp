// SPDX-License-Identifier: MIT
#include "app/commands/RowCommands.h"

#include "app/commands/FrameContext.h"
#include "base/MessageBox.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/SortCommands.h"
#include "watchlist/edit/SortRows.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <vector>

namespace vx {

CRowCommands::CRowCommands(const SFrameContext& context, QObject* parent) : CCommandGroup(context, parent) {
    CCommands& commands = context.commands;
    commands.Bind(ECommand::RowInsert, [this] { Insert(); });
    commands.Bind(ECommand::RowDelete, [this] { Delete(); });
    commands.Bind(
        ECommand::RowHide, [this] { Hide(); }, [this](SCommandState& state) { state.enabled = IsOneLeft(); });
    commands.Bind(
        ECommand::RowShow, [this] { ShowHidden(); },
        [this](SCommandState& state) { state.enabled = !Grid().Geometry().HiddenRows().empty(); });
    commands.Bind(
        ECommand::RowMoveUp, [this] { MoveBy(-1); },
        [this](SCommandState& state) { state.enabled = Neighbour(Region().range.firstRow, -1) > 0; });
    commands.Bind(
        ECommand::RowMoveDown, [this] { MoveBy(1); },
        [this](SCommandState& state) { state.enabled = Neighbour(Region().range.lastRow, 1) > 0; });
    const auto bindGroup = [&](ECommand command, int step) {
        commands.Bind(
            command, [this, step] { MoveGroup(step); },
            [this, step](SCommandState& state) { state.enabled = GroupBeside(step).first > 0; });
    };
    bindGroup(ECommand::RowMoveGroupUp, -1);
    bindGroup(ECommand::RowMoveGroupDown, 1);
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
    Grid().SetFocusCell(region.range.firstRow, region.focus.column);
}

// What is left when the selected rows are hidden must still be a grid, and not all of it was hidden before.
bool CRowCommands::IsOneLeft() const {
    const SGridRange range = Region().range;
    const CGridGeometry& geometry = Grid().Geometry();
    const int selected = geometry.ShownRowsIn(range.firstRow, range.lastRow);
    return selected > 0 && selected < geometry.ShownRowCount();
}

void CRowCommands::Hide() {
    if (!IsOneLeft()) return;
    const SGridRange range = Region().range;
    std::vector<int> rows(static_cast<size_t>(range.lastRow - range.firstRow) + 1);
    std::iota(rows.begin(), rows.end(), range.firstRow);
    Doc().SetRowsHidden(rows, true);
    const SGridCell focus = Grid().FocusCell(); // The grid has moved it to a row that is left.
    Grid().EnsureVisible(focus.row, focus.column);
}

// Those in the selection or at its edges; all of them when there is none.
void CRowCommands::ShowHidden() {
    const SGridRange range = Region().range;
    int first = range.firstRow;
    int last = range.lastRow;
    while (Doc().IsRowHidden(first - 1)) --first;
    while (Doc().IsRowHidden(last + 1)) ++last;
    const std::vector<int> all = Doc().HiddenRows();
    std::vector<int> rows(std::lower_bound(all.begin(), all.end(), first),
                          std::upper_bound(all.begin(), all.end(), last));
    Doc().SetRowsHidden(rows.empty() ? all : rows, false);
}

// The shown row before or behind a row; 0 when there is none.
int CRowCommands::Neighbour(int row, int step) const {
    const CGridGeometry& geometry = Grid().Geometry();
    const int found = geometry.RowAway(row, step);
    return step < 0 ? (found < row ? found : 0) : (found > row ? found : 0);
}

void CRowCommands::MoveBy(int step) {
    const SGridRange range = Region().range;
    const int beside = Neighbour(step < 0 ? range.firstRow : range.lastRow, step);
    if (beside > 0) MoveBefore(range.firstRow, range.lastRow, step < 0 ? beside : beside + 1);
}

// The group before or behind that of the focus.
SRowGroup CRowCommands::GroupBeside(int step) const {
    const SRowGroup own = GroupOf(Doc(), Grid().FocusCell().row);
    return own.first > 0 ? GroupOf(Doc(), step < 0 ? own.first - 1 : own.last + 1) : own;
}

void CRowCommands::MoveGroup(int step) {
    const SGridCell focus = Grid().FocusCell();
    const SRowGroup own = GroupOf(Doc(), focus.row);
    const SRowGroup beside = GroupBeside(step);
    if (beside.first < 1) return;
    const int down = step < 0 ? SwapGroups(Doc(), beside, own) : SwapGroups(Doc(), own, beside);
    const int row = std::min(focus.row, own.lastFilled) + (step < 0 ? beside.first - own.first : down);
    Grid().SetFocusCell(row, focus.column);
    Grid().EnsureVisible(row, focus.column);
}

void CRowCommands::MoveBefore(int first, int last, int before) {
    Doc().MoveRows(first, last - first + 1, before);
    const SGridRange range = Region().range;
    Grid().EnsureVisible(before > last ? range.lastRow : range.firstRow, Grid().FocusCell().column);
}

} // namespace vx
