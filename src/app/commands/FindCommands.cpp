// SPDX-License-Identifier: MIT
#include "app/commands/FindCommands.h"

#include "app/commands/Commands.h"
#include "app/commands/FrameContext.h"
#include "watchlist/dialogs/FindBar.h"
#include "watchlist/dialogs/GoToSymbolDlg.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QLayout>

namespace vx {

CFindCommands::CFindCommands(const SFrameContext& context)
    : QObject(&context.window), m_context(context),
      m_bar(new CFindBar(context.doc, context.view.Grid(), &context.view)) {
    m_context.view.layout()->addWidget(m_bar);
    context.commands.Bind(ECommand::EditFind, [this] { m_bar->Open(); });
    context.commands.Bind(ECommand::EditFindNext, [this] { m_bar->Next(); });
    context.commands.Bind(ECommand::EditFindPrevious, [this] { m_bar->Previous(); });
    context.commands.Bind(ECommand::EditGoToSymbol, [this] { GoTo(); });
}

void CFindCommands::ForgetAnswer() { m_bar->ForgetAnswer(); }

void CFindCommands::GoTo() {
    CGoToSymbolDlg dialog(m_context.doc, &m_context.window);
    if (dialog.exec() != QDialog::Accepted) return;
    m_context.doc.RevealRows(dialog.Row(), dialog.Row());
    m_context.view.Grid().SetFocusCell(dialog.Row(), m_context.view.Grid().FocusCell().column);
    m_context.view.Grid().setFocus();
}

} // namespace vx
