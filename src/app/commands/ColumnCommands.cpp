// SPDX-License-Identifier: MIT
#include "app/commands/ColumnCommands.h"

#include "app/commands/FrameContext.h"
#include "settings/Settings.h"
#include "watchlist/dialogs/InsertColumns.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/ColumnMoves.h"
#include "watchlist/view/WatchlistGrid.h"

#include <fmt/format.h>

#include <algorithm>

namespace vx {

CColumnCommands::CColumnCommands(const SFrameContext& context, QObject* parent) : CCommandGroup(context, parent) {
    CCommands& commands = context.commands;
    commands.Bind(ECommand::ColumnInsert, [this] { Insert(); });
    commands.Bind(
        ECommand::ColumnDelete, [this] { Delete(); }, [this](SCommandState& state) { state.enabled = IsOneLeft(); });
    commands.Bind(
        ECommand::ColumnHide, [this] { Hide(); }, [this](SCommandState& state) { state.enabled = IsOneLeft(); });
    commands.Bind(
        ECommand::ColumnShow, [this] { ShowHidden(); },
        [this](SCommandState& state) { state.enabled = !Hidden().empty(); });
    commands.Bind(ECommand::ColumnFit, [this] { Fit(); });
    commands.Bind(
        ECommand::ColumnMoveLeft, [this] { MoveBy(-1); },
        [this](SCommandState& state) { state.enabled = Neighbour(Region().range.firstColumn, -1) > 0; });
    commands.Bind(
        ECommand::ColumnMoveRight, [this] { MoveBy(1); },
        [this](SCommandState& state) { state.enabled = Neighbour(Region().range.lastColumn, 1) > 0; });
    commands.Bind(
        ECommand::ColumnLock, [this] { Lock(); },
        [this](SCommandState& state) { state.enabled = Doc().Options().lockedColumns != Region().focus.column; });
    commands.Bind(
        ECommand::ColumnUnlock, [this] { SetLocked(0, "unlock columns"); },
        [this](SCommandState& state) { state.enabled = Doc().Options().lockedColumns > 0; });
    commands.Bind(ECommand::ColumnDefault, [this] { MakeDefault(); });
    connect(&Grid(), &CGridCtrl::ColumnsDragged, this, &CColumnCommands::MoveBefore);
}

// Insert and delete

void CColumnCommands::Insert() {
    CInsertColumns dialog(Doc().Columns(), &Window());
    if (dialog.exec() == QDialog::Accepted) Place(dialog.Chosen());
}

void CColumnCommands::Place(const std::vector<std::string>& names) {
    if (names.empty()) return;
    const int first = std::clamp(Region().focus.column, 1, Doc().Columns().Count());
    const int count = static_cast<int>(names.size());
    const std::string what = count == 1 ? fmt::format("column {}", names.front()) : Counted(count, "column");
    const int row = Region().focus.row;
    int before = first;
    Doc().Edit("insert " + what, [&](CWatchlistEdit& edit) {
        for (const std::string& name : names) {
            // A hidden column comes back, and here.
            if (const int hidden = Doc().Columns().PositionOf(name); hidden >= 1) {
                if (hidden < before) --before;
                int& locked = edit.Options().lockedColumns;
                if (hidden <= locked) --locked;
                if (before <= locked) ++locked;
                MoveColumn(Doc(), hidden, before);
                Show(before);
            } else {
                InsertColumn(Doc(), before, name);
            }
            ++before;
        }
    });
    const int shown = std::max(1, before - static_cast<int>(names.size()));
    Grid().SetFocusCell(row, shown);
    Grid().EnsureVisible(row, before - 1);
}

void CColumnCommands::Delete() {
    if (!IsOneLeft()) return Say("A watchlist keeps at least one column.");
    const SGridRegion region = Region();
    const std::string name = ColumnsName("delete");
    Doc().Edit(name, [&](CWatchlistEdit&) {
        for (int column = region.range.lastColumn; column >= region.range.firstColumn; --column)
            RemoveColumn(Doc(), column);
    });
    const int next = Neighbour(region.range.firstColumn - 1, 1);
    Grid().SetFocusCell(region.focus.row, next > 0 ? next : Neighbour(region.range.firstColumn, -1));
}

std::string CColumnCommands::ColumnsName(const char* verb) const {
    const SGridRegion region = Region();
    const bool one = region.Columns() == 1;
    return one ? fmt::format("{} column {}", verb, Doc().Columns().At(region.range.firstColumn).name)
               : fmt::format("{} {}", verb, Counted(region.Columns(), "column"));
}

// What is left when the selected columns are gone must still be a grid.
bool CColumnCommands::IsOneLeft() const {
    const SGridRange range = Region().range;
    for (int column = 1; column < Doc().Columns().Count(); ++column)
        if (!range.HasColumn(column) && Doc().Columns().At(column).width > 0) return true;
    return false;
}

// Hide, show and fit

std::vector<int> CColumnCommands::HiddenIn(int first, int last) const {
    std::vector<int> out;
    for (int column = std::max(1, first); column <= std::min(last, Doc().Columns().Count() - 1); ++column)
        if (Doc().Columns().At(column).width < 1) out.push_back(column);
    return out;
}

std::vector<int> CColumnCommands::Hidden() const { return HiddenIn(1, Doc().Columns().Count() - 1); }

void CColumnCommands::Hide() {
    const SGridRegion region = Region();
    Doc().Edit(ColumnsName("hide"), [&](CWatchlistEdit&) {
        for (int column = region.range.firstColumn; column <= region.range.lastColumn; ++column) {
            const sColumnInfo& info = Doc().Columns().At(column);
            if (info.width > 0) m_widths[info.name] = info.width;
            SetColumnWidth(Doc(), column, 0);
        }
    });
}

void CColumnCommands::Show(int position) {
    if (position < 1 || position >= Doc().Columns().Count()) return;
    const auto known = m_widths.find(Doc().Columns().At(position).name);
    SetColumnWidth(Doc(), position, known == m_widths.end() ? kDefaultColumnWidthPx : known->second);
}

// Those in the selection or at its edges; all of them when there is none.
void CColumnCommands::ShowHidden() {
    const SGridRange range = Region().range;
    int first = range.firstColumn;
    int last = range.lastColumn;
    while (first > 1 && Doc().Columns().At(first - 1).width < 1) --first;
    while (last + 1 < Doc().Columns().Count() && Doc().Columns().At(last + 1).width < 1) ++last;
    std::vector<int> columns = HiddenIn(first, last);
    if (columns.empty()) columns = Hidden();
    const std::string what =
        columns.size() == 1 ? "column " + Doc().Columns().At(columns.front()).name : "hidden columns";
    Doc().Edit("show " + what, [&](CWatchlistEdit&) {
        for (const int column : columns) Show(column);
    });
}

void CColumnCommands::Fit() {
    const SGridRange range = Region().range;
    Doc().Edit(ColumnsName("fit"), [&](CWatchlistEdit&) {
        for (int column = range.firstColumn; column <= range.lastColumn; ++column)
            if (Doc().Columns().At(column).width > 0) SetColumnWidth(Doc(), column, Grid().FitWidth(column));
    });
}

// Move

int CColumnCommands::Neighbour(int column, int step) const {
    for (column += step; column >= 1 && column < Doc().Columns().Count(); column += step)
        if (Doc().Columns().At(column).width > 0) return column;
    return 0;
}

void CColumnCommands::MoveBy(int step) {
    const SGridRange range = Region().range;
    const int beside = Neighbour(step < 0 ? range.firstColumn : range.lastColumn, step);
    if (beside > 0) MoveBefore(range.firstColumn, range.lastColumn, step < 0 ? beside : beside + 1);
}

void CColumnCommands::MoveBefore(int first, int last, int before) {
    SGridRange range = Region().range;
    const int row = Region().focus.row;
    const int count = last - first + 1;
    const std::string what = count == 1 ? "column " + Doc().Columns().At(first).name : Counted(count, "column");
    Doc().Edit("move " + what, [&](CWatchlistEdit&) {
        for (int i = 0; i < count; ++i) {
            if (before > last)
                MoveColumn(Doc(), first, before - 1);
            else
                MoveColumn(Doc(), first + i, before + i);
        }
    });
    const int moved = before > last ? before - 1 - last : before - first;
    range.firstColumn += moved;
    range.lastColumn += moved;
    Grid().SelectRange(range);
    Grid().EnsureVisible(row, moved > 0 ? range.lastColumn : range.firstColumn);
}

// Lock and default

void CColumnCommands::Lock() { SetLocked(Region().focus.column, "lock columns"); }

void CColumnCommands::SetLocked(int columns, const char* name) {
    Doc().Edit(name, [=](CWatchlistEdit& edit) { edit.Options().lockedColumns = columns; });
}

void CColumnCommands::MakeDefault() {
    std::string names;
    int count = 0;
    for (int column = 1; column < Doc().Columns().Count(); ++column)
        if (const sColumnInfo& info = Doc().Columns().At(column); info.width > 0) {
            names += info.name + ';';
            ++count;
        }
    const std::string which = count == 1 ? std::string("this column") : fmt::format("these {} columns", count);
    if (Settings().ReadTextOrDefault(kDefaultColumnNames) == names)
        return Say(fmt::format("New watchlists start with {} already.", which));
    const bool written = Doc().Edit("use these columns as default", [&](CWatchlistEdit& edit) {
        edit.CoverSetting(kDefaultColumnNames);
        if (Settings().WriteText(kDefaultColumnNames, names)) return true;
        edit.Cancel();
        return false;
    });
    if (written)
        Say(fmt::format("New watchlists start with {} now. Undo takes it back.", which));
    else
        Say("The settings cannot be written: new watchlists start as before.");
}

} // namespace vx
