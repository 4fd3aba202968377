// SPDX-License-Identifier: MIT
#include "app/commands/MainMenus.h"

#include "app/commands/Commands.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include <vector>

namespace vx {

namespace {

using enum ECommand;

/// One line of a menu: a command, a separator, or a menu of its own.
struct SMenuLine {
    enum class EKind { Command, Separator, Menu };

    EKind kind = EKind::Separator;
    ECommand command = ECommand::Count;
    const char* title = nullptr; ///< Of a menu.
    const char* name = nullptr;  ///< Of a menu that is filled by somebody else.
    std::vector<SMenuLine> lines = {};

    SMenuLine() = default;
    SMenuLine(ECommand id) : kind(EKind::Command), command(id) {} // NOLINT(google-explicit-constructor)
    SMenuLine(const char* text, const char* objectName) : kind(EKind::Menu), title(text), name(objectName) {}
    SMenuLine(const char* text, std::vector<SMenuLine> entries)
        : kind(EKind::Menu), title(text), lines(std::move(entries)) {}
};

const SMenuLine kLine{};

const std::vector<SMenuLine>& MenuTable() {
    static const std::vector<SMenuLine> kMenus = {
        {"&File",
         {FileNew,
          FileNewWindow,
          FileOpen,
          {"&Recent Files", CMainMenus::kRecentFiles},
          kLine,
          FileSave,
          FileSaveAs,
          {"&Backups", CMainMenus::kBackupsMenu},
          kLine,
          FileImport,
          FileExport,
          FilePrint,
          kLine,
          SaveWorkspace,
          OpenWorkspace,
          kLine,
          Restart,
          FileExit}},
        {"&Edit",
         {EditUndo, EditRedo,        kLine,           EditCut,  EditCopy,     EditPaste,        EditDelete,
          kLine,    SelectionInsert, SelectionDelete, kLine,    EditCell,     EditNote,         EditAddCurrentSymbol,
          kLine,    EditSelectAll,   kLine,           EditFind, EditFindNext, EditFindPrevious, EditGoToSymbol}},
        {"&View",
         {ViewToolBar,
          ViewRowNumbers,
          ViewSymbolInSight,
          ViewGridLines,
          ViewShading,
          ViewEllipsis,
          ViewReducedMotion,
          kLine,
          ViewZoomIn,
          ViewZoomOut,
          ViewZoomReset,
          {"&Density", {ViewCompact, ViewNormal, ViewComfortable}},
          kLine,
          {"&Theme", CMainMenus::kTheme}}},
        {"&Watchlist",
         {{"&Rows",
           {RowInsert, RowDelete, kLine, RowHide, RowShow, kLine, RowMoveUp, RowMoveDown, kLine, RowMoveGroupUp,
            RowMoveGroupDown}},
          {"&Columns",
           {ColumnInsert,
            ColumnDelete,
            kLine,
            ColumnHide,
            ColumnShow,
            ColumnFit,
            kLine,
            ColumnMoveLeft,
            ColumnMoveRight,
            kLine,
            ColumnLock,
            ColumnUnlock,
            kLine,
            {"Show Nu&mbers As", {ColumnSeparators, ColumnShortForms}},
            {"Show Dir&ection As",
             {DirectionColour, DirectionBackground, DirectionArrow, DirectionNone, kLine, ColumnFlash}},
            kLine,
            ColumnDefault}},
          {"&Format", {FormatCells, FormatGrid, kLine, FormatClear}},
          kLine,
          SortNow,
          SortDialog,
          SortHold,
          SortAcrossHeadings,
          kLine,
          SymbolSearch,
          SearchBySymbol,
          SearchByDescription}},
        {"&Alerts",
         {AlertsEdit, AlertNew, kLine, AlertHistory, AlertMute, AlertUrgent, kLine, Headlines, TimeAndSales}},
        {"Application &Links",
         {LinkSnapQuote, LinkChart, LinkTimeAndSales, LinkNews, LinkWatchlist, LinkOptionChains, LinkMarketDepth,
          LinkMarketScans}},
        {"Wi&ndow", {AlwaysOnTop}},
        {"&Help", {HelpGuide, HelpKeys, kLine, About}}};
    return kMenus;
}

const std::vector<SMenuLine>& ToolBarTable() {
    static const std::vector<SMenuLine> kToolBar = {
        FileNew,   FileOpen, FileSave,     kLine,      EditUndo,     EditRedo,     kLine,     EditCut,     EditCopy,
        EditPaste, kLine,    RowInsert,    RowDelete,  ColumnInsert, ColumnDelete, kLine,     SortNow,     FormatCells,
        EditFind,  kLine,    SymbolSearch, AlertsEdit, AlertNew,     AlertMute,    Headlines, TimeAndSales};
    return kToolBar;
}

void Fill(QMenu& menu, const std::vector<SMenuLine>& lines, const CCommands& commands,
          std::map<std::string, QMenu*, std::less<>>& named) {
    for (const SMenuLine& line : lines) {
        if (line.kind == SMenuLine::EKind::Command) {
            menu.addAction(&commands.Action(line.command));
        } else if (line.kind == SMenuLine::EKind::Separator) {
            menu.addSeparator();
        } else {
            QMenu* inner = menu.addMenu(QString::fromLatin1(line.title));
            if (line.name != nullptr) {
                inner->setObjectName(QString::fromLatin1(line.name));
                named[line.name] = inner;
            }
            Fill(*inner, line.lines, commands, named);
        }
    }
}

} // namespace

CMainMenus::CMainMenus(QMainWindow& window, CCommands& commands)
    : QObject(&window), m_commands(commands), m_toolBar(new QToolBar(QStringLiteral("Tool Bar"), &window)) {
    for (const SMenuLine& menu : MenuTable()) {
        QMenu* top = window.menuBar()->addMenu(QString::fromLatin1(menu.title));
        Fill(*top, menu.lines, commands, m_named);
        connect(top, &QMenu::aboutToShow, &m_commands, &CCommands::Refresh);
    }
    m_toolBar->setObjectName(QStringLiteral("toolBar"));
    m_toolBar->setMovable(false);
    m_toolBar->setContextMenuPolicy(Qt::PreventContextMenu);
    m_toolBar->setIconSize({20, 20});
    for (const SMenuLine& line : ToolBarTable()) {
        if (line.kind == SMenuLine::EKind::Command)
            m_toolBar->addAction(&commands.Action(line.command));
        else
            m_toolBar->addSeparator();
    }
    window.addToolBar(m_toolBar);
    window.setContextMenuPolicy(Qt::NoContextMenu);
}

} // namespace vx
