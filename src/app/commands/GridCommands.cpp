// SPDX-License-Identifier: MIT
#include "app/commands/GridCommands.h"

#include "app/commands/ClipboardCommands.h"
#include "app/commands/ColumnCommands.h"
#include "app/commands/ColumnLookCommands.h"
#include "app/commands/EditCommands.h"
#include "app/commands/FrameContext.h"
#include "app/commands/GridMenus.h"
#include "app/commands/OrderCommands.h"
#include "app/commands/RowCommands.h"
#include "app/commands/ViewCommands.h"
#include "app/commands/ZoomCommands.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QAction>
#include <QGuiApplication>

namespace vx {

CGridCommands::CGridCommands(const SFrameContext& context, CMainMenus& menus)
    : QObject(&context.window), m_context(context) {
    m_view = new CViewCommands(context, this, menus);
    auto* rows = new CRowCommands(context, this);
    auto* columns = new CColumnCommands(context, this);
    new CEditCommands(context, this, *rows, *columns);
    new CClipboardCommands(context, this);
    new CColumnLookCommands(context, this);
    new CGridMenus(context, this, *columns);
    new COrderCommands(context, this);
    new CZoomCommands(context, this);

    CWatchlistView& view = context.view;
    context.commands.SetBefore([&view] { view.Grid().EndEdit(true); });
    connect(&view, &CWatchlistView::DocumentChanged, this, [this] { m_context.commands.RefreshSoon(); });
    // Companion programs change settings, and hand the keyboard back.
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this] { m_context.commands.RefreshSoon(); });
    // At once: the next key may be that of a command that depends on it.
    const auto refresh = [this] { m_context.commands.Refresh(); };
    connect(&view.Grid(), &CGridCtrl::FocusCellChanged, this, refresh);
    connect(&view.Grid(), &CGridCtrl::SelectionChanged, this, refresh);
    connect(&view.Grid(), &CGridCtrl::CellDoubleClicked, this, [this](int, int column) { OpenDetail(column); });
}

// What else a cell shows that has more to it than its text.
void CGridCommands::OpenDetail(int column) {
    const SSpecialColumns& special = m_context.view.Special();
    const int field = m_context.view.Grid().FieldAt(column);
    const ECommand command = field == special.alerts  ? ECommand::AlertsEdit
                             : field == special.notes ? ECommand::EditNote
                                                      : ECommand::Headlines;
    // Not from inside the grid's handling of the mouse: some of them are modal.
    QMetaObject::invokeMethod(&m_context.commands.Action(command), &QAction::trigger, Qt::QueuedConnection);
}

void CGridCommands::UseTheme(const QString& name, bool keep) { m_view->UseTheme(name, keep); }

} // namespace vx
