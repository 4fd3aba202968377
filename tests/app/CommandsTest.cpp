// SPDX-License-Identifier: MIT
// Every command of the table, in a state that it fits, and the menus and keys that start it.

#include "app/commands/Commands.h"

#include "app/FrameFixture.h"
#include "app/commands/MainMenus.h"
#include "app/frame/FramePlacement.h"
#include "app/shell/RestartController.h"
#include "feed/session/FeedSession.h"

#include <QMenuBar>
#include <QToolBar>

#include <set>

using namespace vx;
using namespace vx::test;

namespace {

using enum ECommand;

/// On the whole frame: it has all who carry commands out.
class CCommandsTest : public CSiblingFixture {
protected:
    CCommandsTest() { ShownFrame(); }

    using Observe = std::function<std::string()>;
    struct SRow {
        std::string command;           ///< As in the table.
        const char* before;            ///< Steps, see CWindowFixture.
        std::string after;             ///< What is observed then; it was something else before.
        Observe observe;               ///< The board when it is empty.
        std::function<void()> prepare; ///< Besides the steps.
    };

    void Begin() {
        grid->EndEdit(false);
        doc->NewDocument();
        Rows(QStringLiteral("IBM\n#Tech\nMSFT\nGM"));
        ColumnsAre("Symbol;Last;Bid;");
        Copy(QStringLiteral("KO"));
        settings.WriteText(kCurrentSymbol, "KO");
        Child<QLineEdit>("findText").setText(QStringLiteral("m"));
        doc->MarkSaved();
    }
    void Try(const std::vector<SRow>& rows) {
        for (const SRow& row : rows) {
            SCOPED_TRACE(row.command);
            QAction& action = *commands->findChild<QAction*>(QString::fromStdString(row.command));
            Begin();
            if (row.prepare) row.prepare();
            Steps(row.before);
            const Observe observe = row.observe ? row.observe : [this] { return Board(); };
            EXPECT_NE(observe(), row.after);
            commands->Refresh();
            EXPECT_TRUE(action.isEnabled());
            Steps(row.command.c_str());
            EXPECT_EQ(observe(), row.after);
            commands->Refresh();
            EXPECT_EQ(action.isChecked(), action.isCheckable() && row.after != "off");
        }
    }
    std::vector<SRow> Edits();
    std::vector<SRow> Views();
    std::vector<SRow> Windows();
    std::vector<SRow> Programs();

    static std::string OnOff(bool on) { return on ? "on" : "off"; }
    /// "Symbol Last| Bid": the shown ones, and where the locked ones end.
    std::string ShownColumns() const {
        std::string out;
        for (int column = 1; column <= grid->ColumnCount(); ++column) {
            if (grid->ColumnWidth(column) > 0) out += doc->Columns().At(column).name + ' ';
            if (column == grid->LockedColumns()) out.back() = '|';
        }
        return out;
    }
    /// The name of the window that a command opened, which is closed again.
    std::string TakeOpened() {
        WaitUntil([&] { return !m_opened.empty(); }, 50);
        for (QDialog* dialog : frame->findChildren<QDialog*>())
            if (dialog->isVisible()) {
                m_opened = dialog->objectName().toStdString();
                dialog->close();
            }
        return std::exchange(m_opened, {});
    }
    /// No letter is taken twice in a menu, nor in those under it.
    static void ExpectKeysOnce(const QList<QAction*>& actions, const std::string& name) {
        std::set<std::string> keys;
        for (const QAction* action : actions) {
            const std::string text = action->text().toStdString();
            const std::string key = QKeySequence::mnemonic(action->text()).toString().toStdString();
            EXPECT_TRUE(key.empty() || keys.insert(key).second) << key << " of " << text << " in " << name;
            if (action->menu() != nullptr) ExpectKeysOnce(action->menu()->actions(), text);
        }
    }

    std::string m_opened;
};

std::vector<CCommandsTest::SRow> CCommandsTest::Edits() {
    const Observe columns = [this] { return ShownColumns(); };
    const Observe clipboard = [] { return QGuiApplication::clipboard()->text().toStdString(); };
    const Observe editing = [this] { return OnOff(grid->IsEditing()); };
    const Observe focusRow = [this] { return std::to_string(grid->FocusCell().row); };
    const Observe selection = [this] {
        const SGridRange range = grid->SelectedRange();
        return fmt::format("{}-{} {}-{}", range.firstRow, range.lastRow, range.firstColumn, range.lastColumn);
    };
    const Observe fits = [this] { return OnOff(grid->ColumnWidth(1) == grid->FitWidth(1)); };
    const Observe defaults = [this] { return settings.ReadTextOrDefault(kDefaultColumnNames); };
    const Observe formats = [this] { return OnOff(doc->Formats().Find(1, 2) != nullptr); };
    const char* const kGroups = "at 5 1; 'the second group'; Return; 'KO'; Return; at 3 1";
    return {
        {"FileNew", "at 1 1", "", {}, {}},
        {"EditUndo", "at 1 1; Del", "IBM|#Tech|MSFT|GM", {}, {}},
        {"EditRedo", "at 1 1; Del; EditUndo", "|#Tech|MSFT|GM", {}, {}},
        {"EditCut", "rows 3-4", "IBM|#Tech", {}, {}},
        {"EditCopy", "cells 3-3 1-1", "MSFT\r\n", clipboard, {}},
        {"EditPaste", "at 5 1", "IBM|#Tech|MSFT|GM|KO", {}, {}},
        {"EditDelete", "at 4 1", "IBM|#Tech|MSFT", {}, {}},
        {"EditCell", "at 1 1", "on", editing, {}},
        {"EditSelectAll", "at 1 1", "1-5 1-3", selection, {}},
        {"EditFindNext", "at 1 1", "3", focusRow, {}},
        {"EditFindPrevious", "at 1 1", "4", focusRow, {}},
        {"EditAddCurrentSymbol", "at 5 1", "IBM|#Tech|MSFT|GM|KO", {}, {}},
        {"SelectionInsert", "at 3 1", "IBM|#Tech||MSFT|GM", {}, {}},
        {"SelectionDelete", "at 3 1", "IBM|#Tech|GM", {}, {}},
        {"RowInsert", "rows 1-2", "||IBM|#Tech|MSFT|GM", {}, {}},
        {"RowDelete", "rows 1-1", "#Tech|MSFT|GM", {}, {}},
        {"RowHide", "rows 3-3", "IBM|#Tech|(MSFT)|GM", {}, {}},
        {"RowShow", "rows 3-3; RowHide", "IBM|#Tech|MSFT|GM", {}, {}},
        {"RowMoveUp", "rows 4-4", "IBM|#Tech|GM|MSFT", {}, {}},
        {"RowMoveDown", "rows 3-3", "IBM|#Tech|GM|MSFT", {}, {}},
        {"RowMoveGroupUp", "at 3 1", "#Tech|MSFT|GM|IBM", {}, {}},
        {"RowMoveGroupDown", kGroups, "IBM|#the second group|KO|#Tech|MSFT|GM", {}, {}},
        {"SortNow", "at 1 1; columns 1-1", "IBM|#Tech|GM|MSFT", {}, {}},
        {"FormatClear", "cells 1-1 2-2", "off", formats,
         [this] { doc->Update()->Formats().Set(1, 2, SCellFormat{.bold = true}); }},
        {"ColumnDelete", "columns 3-3", "Symbol Last ", columns, {}},
        {"ColumnHide", "columns 2-2", "Symbol Bid ", columns, {}},
        {"ColumnShow", "columns 2-2; ColumnHide; at 1 1", "Symbol Last Bid ", columns, {}},
        {"ColumnFit", "columns 1-1", "on", fits, {}},
        {"ColumnMoveLeft", "columns 2-2", "Last Symbol Bid ", columns, {}},
        {"ColumnMoveRight", "columns 2-2", "Symbol Bid Last ", columns, {}},
        {"ColumnLock", "at 1 2", "Symbol Last|Bid ", columns, {}},
        {"ColumnUnlock", "at 1 2; ColumnLock", "Symbol Last Bid ", columns, {}},
        {"ColumnDefault", "at 1 1", "Symbol;Last;Bid;", defaults, {}},
    };
}

std::vector<CCommandsTest::SRow> CCommandsTest::Views() {
    const auto option = [this](auto member, auto on) {
        return [this, member, on] { return OnOff(grid->Options().*member == on); };
    };
    const auto setting = [this](const SBooleanSetting& which) {
        return [this, &which] { return OnOff(settings.ReadBoolean(which)); };
    };
    const Observe searchType = [this] { return std::to_string(settings.ReadInteger(kSearchType)); };
    const auto zoom = [this] { return std::to_string(grid->Zoom()); };
    const auto density = [this](EDensity which) {
        return [this, which] { return OnOff(doc->Options().scale.density == which); };
    };
    const auto look = [this](bool SColumnLook::*member) {
        return [this, member] { return OnOff(doc->Columns().At(2).look.*member); };
    };
    const auto direction = [this](EDirectionLook which) {
        return [this, which] { return OnOff(doc->Columns().At(2).look.direction == which); };
    };
    const auto sort = [this] {
        doc->Update()->Options().sort = {1, true, true, 60000};
        view->ApplySortRecord();
    };
    return {
        {"SortHold", "at 1 1", "on", [this] { return OnOff(view->IsOrderHeld()); }, sort},
        {"SortAcrossHeadings", "at 1 1", "on", [this] { return OnOff(doc->Options().sortAcrossHeadings); }, {}},
        {"ViewRowNumbers", "at 1 1", "off", [this] { return OnOff(grid->RowNumbersVisible()); }, {}},
        {"ViewToolBar", "at 1 1", "off", [this] { return OnOff(!frame->Menus().ToolBar().isHidden()); }, {}},
        {"ViewSymbolInSight", "at 1 1", "off", setting(kSymbolInSight), {}},
        {"ViewGridLines", "at 1 1", "off", option(&SGridOptions::lines, EGridLines::Both), {}},
        {"ViewShading", "at 1 1", "off", option(&SGridOptions::shading, true), {}},
        {"ViewEllipsis", "at 1 1", "off", option(&SGridOptions::ellipsis, true), {}},
        {"ViewReducedMotion", "at 1 1", "on", option(&SGridOptions::flash, false), {}},
        {"ColumnSeparators", "at 1 2", "on", look(&SColumnLook::separators), {}},
        {"ColumnShortForms", "at 1 2", "on", look(&SColumnLook::shortForms), {}},
        {"ColumnFlash", "at 1 2", "off", look(&SColumnLook::flash), {}},
        {"DirectionBackground", "at 1 2", "on", direction(EDirectionLook::Background), {}},
        {"DirectionArrow", "at 1 2", "on", direction(EDirectionLook::Arrow), {}},
        {"DirectionNone", "at 1 2", "on", direction(EDirectionLook::None), {}},
        {"DirectionColour", "at 1 2; DirectionNone", "on", direction(EDirectionLook::Colour), {}},
        {"ViewZoomIn", "at 1 1", "110", zoom, {}},
        {"ViewZoomOut", "at 1 1", "90", zoom, {}},
        {"ViewZoomReset", "ViewZoomIn", "100", zoom, {}},
        {"ViewCompact", "at 1 1", "on", density(EDensity::Compact), {}},
        {"ViewNormal", "ViewCompact", "on", density(EDensity::Normal), {}},
        {"ViewComfortable", "at 1 1", "on", density(EDensity::Comfortable), {}},
        {"AlertMute", "at 1 1", "on", setting(kAlertMute), {}},
        {"AlertMute", "at 1 1", "off", setting(kAlertMute), {}},
        {"AlertUrgent", "at 1 1", "on", setting(kAlertUrgent), {}},
        {"SearchByDescription", "at 1 1", "1", searchType, {}},
        {"SearchBySymbol", "at 1 1", "0", searchType, {}},
        {"AlwaysOnTop", "at 1 1", "on", [this] { return OnOff(frame->Place().IsAlwaysOnTop()); }, {}},
        {"AlwaysOnTop", "AlwaysOnTop", "off", [this] { return OnOff(frame->Place().IsAlwaysOnTop()); }, {}},
    };
}

std::vector<CCommandsTest::SRow> CCommandsTest::Windows() {
    std::vector<SRow> rows;
    for (const auto& [command, name] :
         Pairs("FileOpen=fileDialog;FileSaveAs=fileDialog;FileImport=fileDialog;FileExport=quoteDataOptions;"
               "FilePrint=printDialog;EditNote=noteDialog;EditGoToSymbol=goToSymbolDialog;ColumnInsert=insertColumns;"
               "FormatCells=cellSettingsDialog;FormatGrid=gridSettingsDialog;SortDialog=sortDialog;"
               "AlertsEdit=alertsDlg;AlertNew=newAlertDlg;AlertHistory=alertHistory;Headlines=headlinesWindow;"
               "TimeAndSales=timeAndSales;SymbolSearch=symbolSearch;HelpGuide=guide;HelpKeys=keysWindow;"
               "About=aboutDialog"))
        rows.push_back({command, "at 1 2", name, [this] { return TakeOpened(); }, {}});
    rows.push_back(
        {"EditFind", "at 1 1", "on", [this] { return OnOff(Child<QLineEdit>("findText").isVisible()); }, {}});
    return rows;
}

std::vector<CCommandsTest::SRow> CCommandsTest::Programs() {
    for (const char* name :
         {"vxsnapquote", "vxchart", "vxtimesales", "vxnews", "zantrel-watchlist", "vxoptions", "vxdepth", "vxscans"})
        Install(name);
    const Observe started = [this] {
        std::string out = Started();
        std::filesystem::remove(At("started"));
        return out.substr(0, out.find("-left"));
    };
    std::vector<SRow> rows;
    for (const auto& [command, text] :
         Pairs("LinkSnapQuote=vxsnapquote|-symbol|IBM|;LinkChart=vxchart|-symbol|IBM|;LinkNews=vxnews|;"
               "LinkTimeAndSales=vxtimesales|-symbol|IBM|;LinkWatchlist=zantrel-watchlist|;"
               "LinkOptionChains=vxoptions|-symbol|IBM|;LinkMarketDepth=vxdepth|-symbol|IBM|;"
               "LinkMarketScans=vxscans|-symbol|IBM|;RowSnapQuote=vxsnapquote|-symbol|IBM|;"
               "RowChart=vxchart|-symbol|IBM|;RowTimeAndSales=vxtimesales|-symbol|IBM|;RowNews=vxnews|;"
               "RowOptionChains=vxoptions|-symbol|IBM|;RowMarketDepth=vxdepth|-symbol|IBM|;"
               "FileNewWindow=zantrel-watchlist|--new-window|;Restart=zantrel-watchlist|"))
        rows.push_back({command, "at 1 1", text,
                        [started, calls = 0]() mutable {
                            return calls++ == 0 ? std::string() : started(); // Nothing to wait for before.
                        },
                        [this] { frame->Restart().ShowEnd(EFeedEnd::Quotes); }});
    rows.push_back({"FileSave", "at 1 1; Del", "off", [this] { return OnOff(doc->IsModified()); },
                    [this] { EXPECT_TRUE(frame->Files().Open(FileOf("List.vxw", "IBM"))); }});
    const auto workspace = [] {
        return std::to_string(CRegistry::CurrentUser().EnumerateValues(kWorkspacesKey).size());
    };
    rows.push_back({"SaveWorkspace", "at 1 1", "1", workspace, {}});
    rows.push_back(
        {"OpenWorkspace", "at 1 1", "All windows of the workspace are open.", [this] { return Status(); }, {}});
    rows.push_back({"FileExit", "at 1 1", "off", [this] { return OnOff(frame->isVisible()); }, {}});
    return rows;
}

} // namespace

TEST_F(CCommandsTest, ThoseThatEditChangeTheBoard) { Try(Edits()); }

TEST_F(CCommandsTest, ThoseThatSwitchSwitchAndAreChecked) { Try(Views()); }

TEST_F(CCommandsTest, ThoseThatOpenAWindowOpenIt) {
    QTimer modal;
    QObject::connect(&modal, &QTimer::timeout, frame, [this] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || !dialog->isVisible()) return;
        m_opened = dialog->objectName().toStdString();
        dialog->reject();
    });
    modal.start(1);
    Try(Windows());
}

TEST_F(CCommandsTest, ThoseThatStartProgramsAndSaveDoSo) { Try(Programs()); }

TEST_F(CCommandsTest, EachHasItsRow) {
    std::set<std::string> tried;
    for (const auto& rows : {Edits(), Views(), Windows(), Programs()})
        for (const SRow& row : rows) tried.insert(row.command);
    for (int id = 0; id < static_cast<int>(Count); ++id) {
        const std::string name = Action(static_cast<ECommand>(id)).objectName().toStdString();
        EXPECT_TRUE(tried.contains(name)) << name;
    }
}

TEST_F(CCommandsTest, NoKeyAndNoAccessKeyIsTakenTwiceAndNothingMovesUnderAnOpenMenu) {
    std::map<QString, QString> keys;
    for (int id = 0; id < static_cast<int>(Count); ++id) {
        const QAction& action = Action(static_cast<ECommand>(id));
        const std::string name = action.objectName().toStdString();
        for (const QKeySequence& key : action.shortcuts())
            EXPECT_TRUE(key.isEmpty() || keys.emplace(key.toString(), action.objectName()).second) << name;
    }
    EXPECT_GT(keys.size(), 50u);
    EXPECT_FALSE(Action(EditUndo).icon().isNull());
    Rows(QStringLiteral("IBM\nMSFT"));
    Steps("columns 2-2; ColumnHide");
    ExpectKeysOnce(frame->menuBar()->actions(), "menu bar");
    for (const auto& [part, has] : {std::pair{EGridPart::Cell, EditCell},
                                    {EGridPart::RowHeader, RowMoveUp},
                                    {EGridPart::ColumnHeader, ColumnLock},
                                    {EGridPart::Corner, RowShow},
                                    {EGridPart::Outside, RowShow}}) {
        Q_EMIT grid->ContextMenuRequested(part, 1, 1, grid->mapToGlobal(QPoint(50, 50)));
        auto* menu = frame->findChild<QMenu*>(QStringLiteral("gridMenu"));
        ASSERT_NE(menu, nullptr);
        EXPECT_TRUE(menu->actions().contains(&Action(has)));
        ExpectKeysOnce(menu->actions(), fmt::format("menu of part {}", static_cast<int>(part)));
        EXPECT_TRUE(grid->IsBusy());
        menu->close();
        QCoreApplication::sendPostedEvents(menu, QEvent::DeferredDelete);
        EXPECT_FALSE(grid->IsBusy());
    }
}
