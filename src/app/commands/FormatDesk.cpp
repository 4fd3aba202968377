#include "app/commands/FormatDesk.h"

#include "app/commands/BoardContext.h"
#include "app/commands/Commands.h"
#include "watchlist/dialogs/FormatDlgs.h"
#include "watchlist/dialogs/NoteDlg.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

namespace vx {

CFormatDesk::CFormatDesk(const SBoardContext& context) : QObject(&context.window), m_context(context) {
    context.commands.Bind(ECommand::FormatCells, [this] { EditCells(); });
    context.commands.Bind(ECommand::FormatGrid, [this] { CGridSettingsDlg(m_context.doc, &m_context.window).exec(); });
    context.commands.Bind(ECommand::FormatClear, [this] { ClearFormats(m_context.doc, Selection()); });
    context.commands.Bind(ECommand::EditNote, [this] { EditNote(); });
}

SFormatRange CFormatDesk::Selection() const {
    const SGridRange range = m_context.view.Grid().SelectedRange();
    return {range.firstRow, range.lastRow, range.firstColumn, range.lastColumn};
}

void CFormatDesk::EditCells() {
    const SGridCell focus = m_context.view.Grid().FocusCell();
    CCellSettingsDlg(m_context.doc, Selection(), focus.row, focus.column, &m_context.window).exec();
}

void CFormatDesk::EditNote() { CNoteDlg(m_context.doc, &m_context.window).Edit(m_context.view.Grid().FocusCell().row); }

} // namespace vx
