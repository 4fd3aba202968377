// SPDX-License-Identifier: MIT
#include "app/commands/EditCommands.h"

#include "app/commands/ColumnCommands.h"
#include "app/commands/FrameContext.h"
#include "app/commands/RowCommands.h"
#include "app/frame/StatusPanes.h"
#include "base/qt/QtText.h"
#include "settings/Settings.h"
#include "watchlist/dialogs/InsertColumns.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/CellEntry.h"
#include "watchlist/edit/PasteText.h"
#include "watchlist/edit/SortCommands.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QApplication>

namespace vx {

namespace {

// "&Undo delete 3 rows"; an "&" of the name is none of the menu's.
QString StepText(const QString& verb, const std::string& name) {
    return name.empty() ? QString()
                        : verb + QLatin1Char(' ') + QtText(name).replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// Shows by the cursor and in the status bar that something is under way which holds the window, when it is so large
/// that it may take longer than a blink.
class CLongWork {
public:
    CLongWork(CWatchlistDoc& doc, CStatusPanes& status, size_t stepBytes, const std::string& text)
        : m_doc(doc), m_isLong(stepBytes >= kLongStepBytes) {
        if (!m_isLong) return;
        QApplication::setOverrideCursor(Qt::WaitCursor);
        m_doc.ShowProgress(text);
        status.repaint();
    }
    ~CLongWork() {
        if (!m_isLong) return;
        m_doc.RestoreStatus();
        QApplication::restoreOverrideCursor();
    }
    CLongWork(const CLongWork&) = delete;
    CLongWork& operator=(const CLongWork&) = delete;

private:
    static constexpr size_t kLongStepBytes = size_t{256} << 10;

    CWatchlistDoc& m_doc;
    bool m_isLong;
};

} // namespace

CEditCommands::CEditCommands(const SFrameContext& context, QObject* parent, CRowCommands& rows,
                             CColumnCommands& columns)
    : CCommandGroup(context, parent), m_rows(rows), m_columns(columns) {
    CCommands& commands = context.commands;
    BindUndo();
    commands.Bind(ECommand::EditDelete, [this] { Clear(); });
    commands.Bind(ECommand::EditCell, [this] {
        const SGridCell focus = Grid().FocusCell();
        Grid().BeginEdit(focus.row, focus.column);
    });
    commands.Bind(ECommand::EditSelectAll, [this] {
        Grid().setFocus();
        Grid().SelectRange({1, Grid().RowCount(), 1, Grid().ColumnCount()});
    });
    commands.Bind(
        ECommand::EditAddCurrentSymbol, [this] { AddCurrentSymbol(Doc(), Settings(), Grid().FocusCell().row); },
        [this](SCommandState& state) {
            const QString current = ShownText(Settings().ReadTextOrDefault(kCurrentSymbol), kMostShownSymbol);
            state.enabled = !current.isEmpty();
            if (state.enabled) state.tip = QStringLiteral("Put %1, the symbol chosen last, into the row").arg(current);
        });
    const auto bind = [&](ECommand command, bool insert) {
        commands.Bind(
            command, [this, insert] { InsertOrDelete(insert); },
            [this, insert](SCommandState& state) { state.text = TextFor(insert); });
    };
    bind(ECommand::SelectionInsert, true);
    bind(ECommand::SelectionDelete, false);
}

void CEditCommands::BindUndo() {
    Commands().Bind(
        ECommand::EditUndo, [this] { Undo(); },
        [this](SCommandState& state) {
            state.enabled = Doc().Undo().CanUndo();
            state.text = StepText(QStringLiteral("&Undo"), Doc().Undo().UndoName());
        });
    Commands().Bind(
        ECommand::EditRedo, [this] { Redo(); },
        [this](SCommandState& state) {
            state.enabled = Doc().Undo().CanRedo();
            state.text = StepText(QStringLiteral("&Redo"), Doc().Undo().RedoName());
        });
}

void CEditCommands::Undo() {
    CUndoStack& stack = Doc().Undo();
    const CLongWork work(Doc(), Status(), stack.UndoBytes(), "Undoing " + stack.UndoName());
    ShowPlace(stack.Undo());
}

void CEditCommands::Redo() {
    CUndoStack& stack = Doc().Undo();
    const CLongWork work(Doc(), Status(), stack.RedoBytes(), "Redoing " + stack.RedoName());
    ShowPlace(stack.Redo());
}

// What was undone is seen: it is selected, and brought into sight.
void CEditCommands::ShowPlace(const SUndoPlace& place) {
    if (!place.done) return;
    View().ApplySortRecord();
    Grid().SetMarkedRange({});
    if (place.firstRow < 1) return;
    const bool led = !place.rows.empty() && Grid().Geometry().ShownRowsIn(place.firstRow, place.lastRow) == 0;
    if (led) Doc().RevealRows(place.firstRow, place.lastRow);
    const bool cells = place.firstColumn >= 1;
    const SGridRange range{place.firstRow, std::max(place.firstRow, std::min(place.lastRow, Grid().RowCount())),
                           cells ? place.firstColumn : 1, cells ? place.lastColumn : Grid().ColumnCount()};
    const int column = cells ? range.firstColumn : Grid().FocusCell().column;
    Grid().SelectRange(range);
    Grid().EnsureVisible(range.lastRow, column);
    Grid().EnsureVisible(range.firstRow, column);
}

void CEditCommands::Clear() {
    if (!MayDeleteSelection(Doc())) return;
    const SGridRegion region = Region();
    if (region.kind == ERegion::Cell)
        EnterCellText(Doc(), region.focus.row, region.focus.column,
                      Grid().EditText(region.focus.row, region.focus.column), {});
    else
        ClearRange(Doc(), CellRange());
    View().ApplySortRecord();
}

// What is not asked is said.
QString CEditCommands::TextFor(bool insert) const {
    const SGridRegion region = Region();
    switch (region.kind) {
    case ERegion::Columns:
        return insert ? QStringLiteral("&Insert Columns...") : QStringLiteral("&Delete Columns");
    case ERegion::Block:
        return {};
    default:
        return region.Rows() == 1 ? (insert ? QStringLiteral("&Insert Row") : QStringLiteral("&Delete Row"))
                                  : (insert ? QStringLiteral("&Insert %1 Rows") : QStringLiteral("&Delete %1 Rows"))
                                        .arg(region.Rows());
    }
}

void CEditCommands::InsertOrDelete(bool insert) {
    const SGridRegion region = Region();
    bool rows = region.kind != ERegion::Columns;
    if (region.kind == ERegion::Block) {
        using EWhat = CInsertDeleteChoiceDlg::EWhat;
        CInsertDeleteChoiceDlg dialog(insert ? EWhat::Insert : EWhat::Delete, region.Rows(), region.Columns(),
                                      &Window());
        if (dialog.exec() != QDialog::Accepted) return;
        rows = dialog.IsRows();
    }
    if (rows)
        insert ? m_rows.Insert() : m_rows.Delete();
    else
        insert ? m_columns.Insert() : m_columns.Delete();
}

} // namespace vx
