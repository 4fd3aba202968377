#include "app/commands/FindDesk.h"

#include "app/commands/Commands.h"
#include "app/files/FileDesk.h"
#include "app/shell/MainFrame.h"
#include "watchlist/dialogs/FindBar.h"
#include "watchlist/dialogs/GoToSymbolDlg.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QLayout>

namespace vx {

CFindDesk::CFindDesk(CMainFrame& frame, CCommands& commands)
    : QObject(&frame), m_frame(frame), m_bar(new CFindBar(frame.Document(), frame.View().Grid(), &frame.View())) {
    m_frame.View().layout()->addWidget(m_bar);
    connect(&frame.Files(), &CFileDesk::Changed, m_bar, &CFindBar::ForgetAnswer);
    commands.Bind(ECommand::EditFind, [this] { m_bar->Open(); });
    commands.Bind(ECommand::EditFindNext, [this] { m_bar->Next(); });
    commands.Bind(ECommand::EditFindPrevious, [this] { m_bar->Previous(); });
    commands.Bind(ECommand::EditGoToSymbol, [this] { GoTo(); });
}

void CFindDesk::GoTo() {
    CGoToSymbolDlg dialog(m_frame.Document(), &m_frame);
    if (dialog.exec() != QDialog::Accepted) return;
    m_frame.Document().RevealRows(dialog.Row(), dialog.Row());
    m_frame.View().Grid().SetFocusCell(dialog.Row(), m_frame.View().Grid().FocusCell().column);
    m_frame.View().Grid().setFocus();
}

} // namespace vx
