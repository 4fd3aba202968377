// SPDX-License-Identifier: MIT
#include "app/BoardFixture.h"
#include "app/commands/MainMenus.h"
#include "watchlist/dialogs/InsertColumns.h"
#include "watchlist/exchange/RowCellText.h"

#include <QToolBar>
#include <QTreeWidget>

#include <array>

using namespace vx;
using namespace vx::test;

namespace {

using CColumnCommandsTest = CBoardFixture;
using CViewCommandsTest = CBoardFixture;
using enum ECommand;

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

TEST_F(CColumnCommandsTest, ChosenColumnsComeBeforeTheFocusHiddenOnesReturn) {
    std::vector<std::string> offered;
    for (const SFieldEntry* field : InsertableColumns(doc->Columns())) offered.emplace_back(field->name);
    EXPECT_EQ(offered.size(), kCatalogueSize - 1 - static_cast<size_t>(doc->Columns().Count() - 1));
    EXPECT_TRUE(std::ranges::is_sorted(offered, {}, [](const std::string& name) { return FieldIndex(name); }));
    EXPECT_EQ(std::ranges::count(offered, "Last"), 0);
    const int last = ColumnOf("Last");
    grid->SetFocusCell(1, last);
    InDialog<CInsertColumns>(ColumnInsert, [](CInsertColumns& dialog) {
        Named<QLineEdit>(dialog, "columnFilter").setText(QStringLiteral("Notes"));
        EXPECT_EQ(dialog.Chosen(), std::vector<std::string>{"Notes"}) << "Enter takes the best match";
        dialog.accept();
    });
    EXPECT_EQ(ColumnOf("Notes"), last);
    EXPECT_EQ(ColumnOf("Last"), last + 1);
    EXPECT_EQ(grid->FocusCell().column, last);

    const std::string before = Columns();
    const int bid = ColumnOf("Bid");
    grid->SetColumnWidth(bid, 77);
    doc->Update()->Columns().SetWidth(bid, 77);
    grid->SelectRange({1, grid->RowCount(), bid, bid});
    Do(ColumnHide);
    EXPECT_EQ(grid->ColumnWidth(bid), 0);
    EXPECT_EQ(InsertableColumns(doc->Columns()).size(), offered.size()) << "a hidden column is not shown";
    for (const auto& [locked, then] : {std::pair{2, 3}, {bid, bid}}) {
        doc->Update()->Options().lockedColumns = locked;
        grid->SetFocusCell(1, 1);
        InDialog<CInsertColumns>(ColumnInsert, [](CInsertColumns& dialog) {
            auto& list = Named<QTreeWidget>(dialog, "columnList");
            for (QTreeWidgetItem* item : list.findItems(QStringLiteral("Bid"), Qt::MatchExactly))
                item->setSelected(true);
            dialog.accept();
        });
        EXPECT_EQ(doc->Options().lockedColumns, then) << "it came before the lock, as a new one does";
        EXPECT_EQ(ColumnOf("Bid"), 1);
        EXPECT_EQ(grid->ColumnWidth(1), 77);
        Steps("EditUndo");
        EXPECT_EQ(grid->ColumnWidth(bid), 0);
    }
    Steps("EditUndo");
    EXPECT_EQ(Columns(), before);
    EXPECT_EQ(grid->ColumnWidth(bid), 77);
}

TEST_F(CColumnCommandsTest, ColumnsMoveHideLockAndReturnByUndo) {
    const std::string before = Columns();
    Steps("columns 2-3; Alt+Right");
    EXPECT_THAT(Columns(), StartsWith("Symbol;Latest Headline;Tick Trend;News;Change;"));
    EXPECT_EQ(grid->SelectedRange().firstColumn, 3);
    Steps("Alt+Left");
    EXPECT_EQ(Columns(), before);
    Q_EMIT grid->ColumnsDragged(2, 3, 1);
    EXPECT_THAT(Columns(), StartsWith("Tick Trend;News;Symbol;"));
    EXPECT_EQ(doc->Undo().UndoName(), "move 2 columns");

    Steps("at 1 2; F7");
    EXPECT_EQ(grid->LockedColumns(), 2);
    EXPECT_FALSE(IsEnabled(ColumnLock));
    Steps("Shift+F7");
    EXPECT_EQ(grid->LockedColumns(), 0);

    Steps("columns 2-2; ColumnHide; at 1 1; ColumnShow");
    EXPECT_EQ(grid->ColumnWidth(2), kDefaultColumnWidthPx) << "the one beside the focus";
    EXPECT_FALSE(IsEnabled(ColumnShow));
    for (int i = 0; i < 7; ++i) Steps("EditUndo");
    EXPECT_EQ(Columns(), before);
    grid->SelectRange({1, grid->RowCount(), 1, grid->ColumnCount()});
    EXPECT_FALSE(IsEnabled(ColumnDelete)) << "no grid without a column";
    Steps("columns 1-1; ColumnHide");
    grid->SelectRange({1, grid->RowCount(), 2, grid->ColumnCount()});
    EXPECT_FALSE(IsEnabled(ColumnHide) || IsEnabled(ColumnDelete)) << "the one that would be left is hidden";
}

TEST_F(CColumnCommandsTest, ADraggedWidthIsOneStepAndAColumnFitsItsTexts) {
    const QRect header = grid->Geometry().CellRect(0, 2);
    const QPoint border(header.right(), header.center().y());
    const int width = grid->ColumnWidth(2);
    QTest::mousePress(grid->viewport(), Qt::LeftButton, {}, border);
    for (int dx = 5; dx <= 30; dx += 5) QTest::mouseMove(grid->viewport(), border + QPoint(dx, 0));
    EXPECT_EQ(doc->Undo().UndoCount(), 0u);
    QTest::mouseRelease(grid->viewport(), Qt::LeftButton, {}, border + QPoint(30, 0));
    EXPECT_EQ(doc->Columns().At(2).width, width + 30);
    EXPECT_EQ(doc->Undo().UndoCount(), 1u);
    Steps("EditUndo");
    EXPECT_EQ(grid->ColumnWidth(2), width);
    Rows(QStringLiteral("ALONGSYMBOLTHATNEEDSROOM"));
    Steps("columns 2-2; ColumnHide; columns 1-2; ColumnFit");
    EXPECT_EQ(grid->ColumnWidth(1), grid->FitWidth(1));
    EXPECT_GT(grid->ColumnWidth(1), kDefaultColumnWidthPx);
    EXPECT_EQ(grid->ColumnWidth(2), 0);
}

TEST_F(CColumnCommandsTest, PresentColumnsBecomeThoseOfANewList) {
    grid->SelectRange({1, grid->RowCount(), 4, grid->ColumnCount()});
    Steps("ColumnDelete; columns 3-3; ColumnHide");
    const bool modified = doc->IsModified();
    const auto setting = [&] { return settings.ReadTextOrDefault(kDefaultColumnNames); };
    const std::string before = setting();
    Do(ColumnDefault);
    EXPECT_EQ(Status(), "New watchlists start with these 2 columns now. Undo takes it back.");
    EXPECT_EQ(doc->Undo().UndoName(), "use these columns as default");
    Steps("EditUndo");
    EXPECT_EQ(setting(), before);
    Steps("EditRedo");
    EXPECT_EQ(doc->IsModified(), modified) << "the list itself is the same";
    settings.WriteText(kDefaultColumnNames, "Last;");
    Steps("EditUndo");
    EXPECT_EQ(setting(), "Last;") << "another window wrote it since";
    settings.WriteText(kDefaultColumnNames, before);
    Steps("ColumnDefault; ColumnDefault");
    EXPECT_EQ(Status(), "New watchlists start with these 2 columns already.");
    doc->NewDocument();
    EXPECT_EQ(Columns(), "Symbol;Tick Trend;");
}

TEST_F(CViewCommandsTest, RowNumbersAndToolBarFollowTheListAndItsUndo) {
    const QToolBar& toolBar = frame->Menus().ToolBar();
    Steps("ViewToolBar");
    EXPECT_TRUE(doc->IsModified());
    EXPECT_EQ(doc->Undo().UndoName(), "hide tool bar");
    Steps("ViewRowNumbers");
    EXPECT_TRUE(toolBar.isHidden());
    EXPECT_FALSE(grid->RowNumbersVisible() || IsChecked(ViewToolBar));
    Steps("EditUndo");
    EXPECT_TRUE(grid->RowNumbersVisible() && toolBar.isHidden());
    doc->Update()->Options().exporting.utf8 = true;
    Steps("EditUndo");
    EXPECT_FALSE(toolBar.isHidden() || doc->IsModified());
    EXPECT_TRUE(doc->Options().exporting.utf8) << "a choice that is remembered, no edit";
    Steps("EditRedo");
    EXPECT_TRUE(toolBar.isHidden());
    Steps("EditUndo; ViewShading");
    EXPECT_FALSE(grid->Options().shading);
    settings.WriteBoolean(kShowShading, true);
    doc->NewDocument();
    EXPECT_TRUE(grid->Options().shading) << "a new list has the shading of the settings";
}
