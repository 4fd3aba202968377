#include "app/BoardFixture.h"

#include "app/commands/MainMenus.h"
#include "watchlist/dialogs/InsertColumns.h"
#include "watchlist/exchange/SpecialColumns.h"

#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QToolBar>
#include <QTreeWidget>

#include <fmt/format.h>

#include <array>
#include <set>

using namespace vx;
using namespace vx::test;

namespace {

using CBoardColumnsTest = CBoardFixture;
using enum ECommand;

/// No letter stands twice in a menu, nor in those under it; tips name the key of those commands alone that have one.
void ExpectKeysOnce(const QList<QAction*>& actions, const std::string& name) {
    std::set<std::string> keys;
    for (const QAction* action : actions) {
        const std::string text = action->text().toStdString();
        const std::string key = QKeySequence::mnemonic(action->text()).toString().toStdString();
        EXPECT_TRUE(key.empty() || keys.insert(key).second) << key << " of " << text << " in " << name;
        EXPECT_FALSE(action->toolTip().contains(QLatin1String("()"))) << text;
        if (action->menu() != nullptr) ExpectKeysOnce(action->menu()->actions(), text);
    }
}

} // namespace

TEST(SpecialColumns, AreFoundByNameFromTheEndAndMayBeMissing) {
    std::array<SFieldEntry, 4> catalogue{};
    catalogue[0].name = "Last";
    catalogue[1].name = "Bid";
    catalogue[2].name = "Symbol";
    catalogue[3].name = "Bid";
    SSpecialColumns expected;
    expected.bid = 3;
    expected.symbol = 2;
    EXPECT_EQ(FindSpecialColumns(catalogue), expected) << "entry 0 is never one, and the last of a name counts";
    const SSpecialColumns own = FindSpecialColumns(Catalogue());
    EXPECT_EQ(own.notes, FieldIndex("Notes"));
    EXPECT_EQ(own.bidTick, SSpecialColumns::kNoColumn);
}

TEST_F(CBoardColumnsTest, TheListOffersWhatIsNotShownInTheCataloguesOrder) {
    std::vector<std::string> offered;
    for (const SFieldEntry* field : InsertableColumns(doc->Columns())) offered.emplace_back(field->name);
    EXPECT_EQ(offered.size(), kCatalogueSize - 1 - static_cast<size_t>(doc->Columns().Count() - 1));
    EXPECT_TRUE(std::is_sorted(offered.begin(), offered.end(), [](const std::string& a, const std::string& b) {
        return FieldIndex(a) < FieldIndex(b);
    }));
    EXPECT_EQ(std::count(offered.begin(), offered.end(), "Last"), 0);
    SelectColumns(ColumnOf("Last"), ColumnOf("Last"));
    Do(ColumnHide);
    EXPECT_EQ(InsertableColumns(doc->Columns()).size(), offered.size() + 1) << "a hidden column is not shown";
}

TEST_F(CBoardColumnsTest, ChosenColumnsComeBeforeTheFocusHiddenOnesReturn) {
    const int last = ColumnOf("Last");
    grid->SetFocusCell(1, last);
    InNext<CInsertColumns>([](CInsertColumns& dialog) {
        dialog.findChild<QLineEdit*>(QStringLiteral("columnFilter"))->setText(QStringLiteral("Notes"));
        EXPECT_EQ(dialog.Chosen(), std::vector<std::string>{"Notes"}) << "Enter takes the best match";
        dialog.accept();
    });
    Do(ColumnInsert);
    EXPECT_EQ(ColumnOf("Notes"), last);
    EXPECT_EQ(ColumnOf("Last"), last + 1);
    EXPECT_EQ(grid->FocusCell().column, last);

    const std::string before = Columns();
    const int bid = ColumnOf("Bid");
    grid->SetColumnWidth(bid, 77);
    doc->Update()->Columns().SetWidth(bid, 77);
    SelectColumns(bid, bid);
    Do(ColumnHide);
    EXPECT_EQ(grid->ColumnWidth(bid), 0);
    doc->Update()->Options().lockedColumns = 2;
    grid->SetFocusCell(1, 1);
    InNext<CInsertColumns>([](CInsertColumns& dialog) {
        auto* list = dialog.findChild<QTreeWidget*>(QStringLiteral("columnList"));
        for (QTreeWidgetItem* item : list->findItems(QStringLiteral("Bid"), Qt::MatchExactly)) item->setSelected(true);
        dialog.accept();
    });
    Do(ColumnInsert);
    EXPECT_EQ(doc->Options().lockedColumns, 3) << "it came before the lock, as a new one does";
    EXPECT_EQ(ColumnOf("Bid"), 1);
    EXPECT_EQ(grid->ColumnWidth(1), 77);
    Undo();
    Undo();
    EXPECT_EQ(Columns(), before);
    EXPECT_EQ(grid->ColumnWidth(bid), 77);
}

TEST_F(CBoardColumnsTest, ColumnsMoveHideLockAndReturnByUndo) {
    const std::string before = Columns();
    SelectColumns(2, 3);
    Key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Columns().rfind("Symbol;Latest Headline;Tick Trend;News;Change;", 0), 0u) << Columns();
    EXPECT_EQ(grid->SelectedRange().firstColumn, 3);
    Key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Columns(), before);
    Q_EMIT grid->ColumnsDragged(2, 3, 1);
    EXPECT_EQ(Columns().rfind("Tick Trend;News;Symbol;", 0), 0u) << Columns();
    EXPECT_EQ(TextOf(EditUndo), QStringLiteral("&Undo move 2 columns"));

    grid->SetFocusCell(1, 2);
    Do(ColumnLock);
    EXPECT_EQ(grid->LockedColumns(), 2);
    EXPECT_FALSE(IsEnabled(ColumnLock));
    Do(ColumnUnlock);
    EXPECT_EQ(grid->LockedColumns(), 0);

    SelectColumns(2, 2);
    Do(ColumnHide);
    grid->SetFocusCell(1, 1);
    Do(ColumnShow);
    EXPECT_EQ(grid->ColumnWidth(2), kDefaultColumnWidthPx) << "the one beside the focus";
    EXPECT_FALSE(IsEnabled(ColumnShow));
    for (int i = 0; i < 7; ++i) Undo();
    EXPECT_EQ(Columns(), before);
    SelectColumns(1, grid->ColumnCount());
    EXPECT_FALSE(IsEnabled(ColumnDelete)) << "no grid without a column";
}

TEST_F(CBoardColumnsTest, ADraggedWidthIsOneStep) {
    const QRect header = grid->Geometry().CellRect(0, 2);
    const QPoint border(header.right(), header.center().y());
    const int width = grid->ColumnWidth(2);
    QTest::mousePress(grid->viewport(), Qt::LeftButton, {}, border);
    for (int dx = 5; dx <= 30; dx += 5) QTest::mouseMove(grid->viewport(), border + QPoint(dx, 0));
    EXPECT_EQ(doc->Undo().UndoCount(), 0u);
    QTest::mouseRelease(grid->viewport(), Qt::LeftButton, {}, border + QPoint(30, 0));
    EXPECT_EQ(doc->Columns().At(2).width, width + 30);
    EXPECT_EQ(doc->Undo().UndoCount(), 1u);
    Undo();
    EXPECT_EQ(grid->ColumnWidth(2), width);
}

TEST_F(CBoardColumnsTest, PresentColumnsBecomeThoseOfANewList) {
    SelectColumns(4, grid->ColumnCount());
    Do(ColumnDelete);
    SelectColumns(3, 3);
    Do(ColumnHide);
    const bool modified = doc->IsModified();
    const std::string before = settings.ReadTextOrDefault(kDefaultColumnNames);
    Do(ColumnDefault);
    EXPECT_EQ(frame->findChild<QLabel*>(QStringLiteral("paneStatus"))->text().toStdString(),
              "New watchlists start with these 2 columns now. Undo takes it back.");
    EXPECT_EQ(TextOf(EditUndo), QStringLiteral("&Undo use these columns as default"));
    Undo();
    EXPECT_EQ(settings.ReadTextOrDefault(kDefaultColumnNames), before);
    Do(EditRedo);
    EXPECT_EQ(doc->IsModified(), modified) << "the list itself is the same";
    settings.WriteText(kDefaultColumnNames, "Last;");
    Undo();
    EXPECT_EQ(settings.ReadTextOrDefault(kDefaultColumnNames), "Last;") << "another window wrote it since";
    settings.WriteText(kDefaultColumnNames, before);
    Do(ColumnDefault);
    Do(ColumnDefault);
    EXPECT_EQ(frame->findChild<QLabel*>(QStringLiteral("paneStatus"))->text().toStdString(),
              "New watchlists start with these 2 columns already.");
    doc->NewDocument();
    EXPECT_EQ(Columns(), "Symbol;Tick Trend;");
}

TEST_F(CBoardColumnsTest, HeaderAndTimerSortShowTheirMarkAndMoveNothingUnderTheHand) {
    Rows(QStringLiteral("C\nA\nB"));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, Middle(0, 1));
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, Middle(0, 1));
    EXPECT_EQ(Board(), "A|B|C");
    EXPECT_EQ(TextOf(EditUndo), QStringLiteral("&Undo sort by Symbol"));
    Undo();
    EXPECT_EQ(Board(), "C|A|B");

    auto* timer = frame->View().findChild<QTimer*>(QStringLiteral("autoSortTimer"));
    auto& view = frame->View();
    doc->Update()->Options().sort = {1, true, true, 7000};
    view.ApplySortRecord();
    EXPECT_EQ(timer->interval(), 7000);
    grid->BeginEdit(1, 1);
    view.OnAutoSortTimer();
    EXPECT_EQ(Board(), "C|A|B") << "an editor is open";
    EXPECT_TRUE(timer->isActive()) << "a new period";
    grid->EndEdit(false);
    view.OnAutoSortTimer();
    EXPECT_EQ(Board(), "A|B|C");
    doc->Update()->Options().sort.column = grid->ColumnCount() + 1;
    view.OnAutoSortTimer();
    EXPECT_FALSE(doc->Options().sort.autoSort);
    EXPECT_EQ(doc->Options().sort.intervalMs, 5000);
    EXPECT_FALSE(timer->isActive());
}

TEST_F(CBoardColumnsTest, EachPartOfTheGridHasItsMenuAndNothingMovesWhileItIsOpen) {
    Rows(QStringLiteral("IBM"));
    struct SCase {
        EGridPart part;
        ECommand has;
    };
    SelectColumns(2, 2);
    Do(ColumnHide);
    ExpectKeysOnce(frame->menuBar()->actions(), "menu bar");
    for (const SCase& each : {SCase{EGridPart::Cell, EditCell}, SCase{EGridPart::RowHeader, RowMoveUp},
                              SCase{EGridPart::ColumnHeader, ColumnLock}, SCase{EGridPart::Corner, RowShow},
                              SCase{EGridPart::Outside, RowShow}}) {
        Q_EMIT grid->ContextMenuRequested(each.part, 1, 1, grid->mapToGlobal(QPoint(50, 50)));
        auto* menu = frame->findChild<QMenu*>(QStringLiteral("gridMenu"));
        ASSERT_NE(menu, nullptr);
        EXPECT_TRUE(menu->actions().contains(&frame->Commands().Action(each.has)));
        ExpectKeysOnce(menu->actions(), fmt::format("menu of part {}", static_cast<int>(each.part)));
        EXPECT_TRUE(grid->IsBusy());
        menu->close();
        QCoreApplication::sendPostedEvents(menu, QEvent::DeferredDelete);
        EXPECT_FALSE(grid->IsBusy());
    }
}

TEST_F(CBoardColumnsTest, RowNumbersAndToolBarFollowTheListAndItsUndo) {
    QToolBar& toolBar = frame->Menus().ToolBar();
    Do(ViewToolBar);
    EXPECT_TRUE(doc->IsModified());
    EXPECT_EQ(TextOf(EditUndo), QStringLiteral("&Undo hide tool bar"));
    Do(ViewRowNumbers);
    EXPECT_TRUE(toolBar.isHidden());
    EXPECT_FALSE(grid->RowNumbersVisible());
    EXPECT_FALSE(frame->Commands().Action(ViewToolBar).isChecked());
    Undo();
    EXPECT_TRUE(grid->RowNumbersVisible());
    EXPECT_TRUE(toolBar.isHidden());
    doc->Update()->Options().exporting.utf8 = true;
    Undo();
    EXPECT_FALSE(toolBar.isHidden());
    EXPECT_FALSE(doc->IsModified());
    EXPECT_TRUE(doc->Options().exporting.utf8) << "a choice that is remembered, no edit";
    Do(EditRedo);
    EXPECT_TRUE(toolBar.isHidden());
    Undo();
    Do(ViewGridLines);
    EXPECT_EQ(grid->Options().lines, EGridLines::None);
    Do(ViewShading);
    EXPECT_FALSE(grid->Options().shading);
    settings.WriteBoolean(kShowShading, true);
    doc->NewDocument();
    EXPECT_TRUE(grid->Options().shading) << "a new list has the shading of the settings";
}
