// SPDX-License-Identifier: MIT
#include "app/commands/FormatDialogs.h"

#include "app/commands/Commands.h"
#include "app/commands/FrameContext.h"
#include "watchlist/dialogs/FormatDlgs.h"
#include "watchlist/dialogs/NoteDlg.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

namespace vx {

CFormatDialogs::CFormatDialogs(const SFrameContext& context) : QObject(&context.window), m_context(context) {
    context.commands.Bind(ECommand::FormatCells, [this] { EditCells(); });
    context.commands.Bind(ECommand::FormatGrid, [this] { CGridSettingsDlg(m_context.doc, &m_context.window).exec(); });
    context.commands.Bind(ECommand::FormatClear, [this] { ClearFormats(m_context.doc, Selection()); });
    context.commands.Bind(ECommand::EditNote, [this] { EditNote(); });
}

SFormatRange CFormatDialogs::Selection() const {
    const SGridRange range = m_context.view.Grid().SelectedRange();
    return {range.firstRow, range.lastRow, range.firstColumn, range.lastColumn};
}

void CFormatDialogs::EditCells() {
    const SGridCell focus = m_context.view.Grid().FocusCell();
    CCellSettingsDlg(m_context.doc, Selection(), focus.row, focus.column, &m_context.window).exec();
}

void CFormatDialogs::EditNote() {
    CNoteDlg(m_context.doc, &m_context.window).Edit(m_context.view.Grid().FocusCell().row);
}

} // namespace vx
