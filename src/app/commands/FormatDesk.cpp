#include "app/commands/FormatDesk.h"

#include "app/commands/Commands.h"
#include "app/shell/MainFrame.h"
#include "watchlist/dialogs/FormatDlgs.h"
#include "watchlist/dialogs/NoteDlg.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

namespace vx {

CFormatDesk::CFormatDesk(CMainFrame& frame, CCommands& commands) : QObject(&frame), m_frame(frame) {
    commands.Bind(ECommand::FormatCells, [this] { EditCells(); });
    commands.Bind(ECommand::FormatGrid, [this] { CGridSettingsDlg(m_frame.Document(), &m_frame).exec(); });
    commands.Bind(ECommand::FormatClear, [this] { ClearFormats(m_frame.Document(), Selection()); });
    commands.Bind(ECommand::EditNote, [this] { EditNote(); });
}

SFormatRange CFormatDesk::Selection() const {
    const SGridRange range = m_frame.View().Grid().SelectedRange();
    return {range.firstRow, range.lastRow, range.firstColumn, range.lastColumn};
}

void CFormatDesk::EditCells() {
    const SGridCell focus = m_frame.View().Grid().FocusCell();
    CCellSettingsDlg(m_frame.Document(), Selection(), focus.row, focus.column, &m_frame).exec();
}

void CFormatDesk::EditNote() { CNoteDlg(m_frame.Document(), &m_frame).Edit(m_frame.View().Grid().FocusCell().row); }

} // namespace vx
