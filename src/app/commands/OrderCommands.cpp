// SPDX-License-Identifier: MIT
#include "app/commands/OrderCommands.h"

#include "app/commands/FrameContext.h"
#include "app/frame/StatusPanes.h"
#include "watchlist/dialogs/SortDlg.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/SortCommands.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QAction>
#include <QToolButton>

namespace vx {

COrderCommands::COrderCommands(const SFrameContext& context, QObject* parent)
    : CCommandGroup(context, parent), m_held(new QToolButton) {
    context.commands.Bind(ECommand::SortNow, [this] { ManualSort(Doc(), View().SortSelection()); });
    context.commands.Bind(ECommand::SortDialog, [this] {
        CSort dialog(Doc(), Grid().FocusCell().column, &Window());
        dialog.exec();
    });
    context.commands.Bind(
        ECommand::SortAcrossHeadings, [this] { SwitchAcross(); },
        [this](SCommandState& state) { state.checked = Doc().Options().sortAcrossHeadings; });
    BindHold();
}

void COrderCommands::BindHold() {
    Commands().Bind(
        ECommand::SortHold, [this] { View().HoldOrder(!View().IsOrderHeld()); },
        [this](SCommandState& state) {
            state.enabled = Doc().Options().sort.autoSort;
            state.checked = View().IsOrderHeld();
        });
    QAction& hold = Commands().Action(ECommand::SortHold);
    m_held->setObjectName(QStringLiteral("orderHeld"));
    m_held->setText(QStringLiteral("Order held"));
    m_held->setToolTip(QStringLiteral("Auto sort waits. Click to let it sort (%1)")
                           .arg(hold.shortcut().toString(QKeySequence::NativeText)));
    m_held->setAutoRaise(true);
    QFont font = m_held->font(); // As the feed's state when it is one to look at.
    font.setBold(true);
    m_held->setFont(font);
    Status().insertPermanentWidget(1, m_held); // Beside the document's status, which gives it its room.
    m_held->hide();                            // Adding it has shown it.
    connect(m_held, &QToolButton::clicked, &hold, &QAction::trigger);
    connect(&View(), &CWatchlistView::OrderHeldChanged, this, [this](bool held) {
        m_held->setVisible(held);
        Commands().RefreshSoon();
    });
}

void COrderCommands::SwitchAcross() {
    const bool across = Doc().Options().sortAcrossHeadings;
    Doc().Edit(across ? "sort under headings" : "sort across headings",
               [&](CWatchlistEdit& edit) { edit.Options().sortAcrossHeadings = !across; });
}

} // namespace vx
