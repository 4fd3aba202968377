// SPDX-License-Identifier: MIT
#include "app/commands/GridMenus.h"

#include "app/commands/ColumnCommands.h"
#include "base/qt/QtText.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"

#include <QAction>
#include <QMenu>

namespace vx {

namespace {

using enum ECommand;

const std::vector<ECommand> kEdit = {EditCut, EditCopy, EditPaste, EditDelete};
const std::vector<ECommand> kRows = {RowInsert, RowDelete,   RowHide,        RowShow,
                                     RowMoveUp, RowMoveDown, RowMoveGroupUp, RowMoveGroupDown};
const std::vector<ECommand> kColumns = {ColumnInsert,   ColumnDelete,    ColumnHide, ColumnFit,
                                        ColumnMoveLeft, ColumnMoveRight, ColumnLock, ColumnUnlock};
const std::vector<ECommand> kSymbol = {AlertNew, AlertsEdit, Headlines, TimeAndSales};
const std::vector<ECommand> kLinks = {RowSnapQuote, RowChart,        RowTimeAndSales,
                                      RowNews,      RowOptionChains, RowMarketDepth};
const std::vector<ECommand> kFormat = {FormatCells, FormatGrid, FormatClear};
const std::vector<ECommand> kLook = {ViewRowNumbers, ViewGridLines, ViewShading, ViewEllipsis};

} // namespace

CGridMenus::CGridMenus(const SFrameContext& context, QObject* parent, CColumnCommands& columns)
    : CCommandGroup(context, parent), m_columns(columns) {
    connect(&Grid(), &CGridCtrl::ContextMenuRequested, this,
            [this](EGridPart part, int, int, const QPoint& globalPos) { Open(part, globalPos); });
}

void CGridMenus::Open(EGridPart part, const QPoint& globalPos) {
    Commands().Refresh();
    auto* menu = new QMenu(&Window());
    menu->setObjectName(QStringLiteral("gridMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    Fill(*menu, part);
    Grid().SetMenuUp(true);
    connect(menu, &QMenu::aboutToHide, &Grid(), [this] { Grid().SetMenuUp(false); });
    menu->popup(globalPos);
}

void CGridMenus::Add(QMenu& menu, const std::vector<ECommand>& commands) {
    for (const ECommand command : commands) menu.addAction(&Commands().Action(command));
}

void CGridMenus::Fill(QMenu& menu, EGridPart part) {
    switch (part) {
    case EGridPart::Cell:
        Add(menu, kEdit);
        menu.addSeparator();
        Add(menu, {EditCell, EditNote, EditAddCurrentSymbol});
        menu.addSeparator();
        Add(menu, {SelectionInsert, SelectionDelete});
        Add(*menu.addMenu(QStringLiteral("&Rows")), kRows);
        Add(*menu.addMenu(QStringLiteral("Col&umns")), kColumns);
        menu.addSeparator();
        Add(menu, kSymbol);
        AddLinks(menu);
        menu.addSeparator();
        Add(menu, {SortNow});
        Add(*menu.addMenu(QStringLiteral("&Format")), kFormat);
        break;
    case EGridPart::RowHeader:
        Add(menu, kEdit);
        menu.addSeparator();
        Add(menu, kRows);
        menu.addSeparator();
        Add(menu, {EditNote, EditAddCurrentSymbol});
        menu.addSeparator();
        Add(menu, kSymbol);
        AddLinks(menu);
        menu.addSeparator();
        Add(*menu.addMenu(QStringLiteral("&Format")), kFormat);
        break;
    case EGridPart::ColumnHeader:
        Add(menu, {SortNow, SortDialog, SortHold, SortAcrossHeadings});
        menu.addSeparator();
        Add(menu, kColumns);
        AddHiddenColumns(menu);
        menu.addSeparator();
        AddLooks(menu);
        Add(*menu.addMenu(QStringLiteral("&Format")), kFormat);
        Add(menu, {EditCopy, ColumnDefault});
        break;
    case EGridPart::Corner:
        Add(menu, {EditSelectAll, EditCopy, EditPaste});
        menu.addSeparator();
        Add(menu, {ColumnInsert, ColumnUnlock});
        AddHiddenColumns(menu);
        Add(menu, {RowShow, ColumnDefault});
        menu.addSeparator();
        Add(menu, {SortDialog});
        Add(*menu.addMenu(QStringLiteral("&Format")), kFormat);
        menu.addSeparator();
        Add(menu, kLook);
        break;
    case EGridPart::Outside:
        Add(menu, {EditPaste, SymbolSearch});
        menu.addSeparator();
        Add(menu, {ColumnInsert});
        AddHiddenColumns(menu);
        Add(menu, {RowShow});
        menu.addSeparator();
        Add(*menu.addMenu(QStringLiteral("&Format")), {FormatGrid});
        break;
    }
}

void CGridMenus::AddLinks(QMenu& menu) {
    QMenu* links = menu.addMenu(QStringLiteral("Application Lin&ks"));
    links->setToolTipsVisible(true); // They say what is not installed.
    Add(*links, kLinks);
}

void CGridMenus::AddLooks(QMenu& menu) {
    QMenu* numbers = menu.addMenu(QStringLiteral("Show Nu&mbers As"));
    Add(*numbers, {ColumnSeparators, ColumnShortForms});
    QMenu* direction = menu.addMenu(QStringLiteral("Show Direction As"));
    Add(*direction, {DirectionColour, DirectionBackground, DirectionArrow, DirectionNone});
    direction->addSeparator();
    Add(*direction, {ColumnFlash});
    for (QMenu* looks : {numbers, direction}) looks->setToolTipsVisible(true); // They say what has no effect, and why.
}

void CGridMenus::AddHiddenColumns(QMenu& menu) {
    const std::vector<int> hidden = m_columns.Hidden();
    if (hidden.empty()) return;
    QMenu* list = menu.addMenu(QStringLiteral("Hidden C&olumns"));
    for (const int column : hidden) {
        const QString name = QtText(Doc().Columns().At(column).name).replace(QLatin1Char('&'), QLatin1String("&&"));
        list->addAction(name, this, [this, column] { m_columns.Show(column); });
    }
    list->addSeparator();
    list->addAction(&Commands().Action(ColumnShow));
}

} // namespace vx
