// SPDX-License-Identifier: MIT
#include "app/ContextFixture.h"
#include "watchlist/dialogs/InsertColumns.h"
#include <QTreeWidget>

using namespace vx;
using namespace vx::test;

namespace {

using CColumnCommandsTest = CContextFixture;
using enum ECommand;

} // namespace

TEST_F(CColumnCommandsTest, ChosenColumnsComeBeforeTheFocusHiddenOnesReturn) {
    const int last = ColumnOf("Last");
    grid->SetFocusCell(1, last);
    InDialog<CInsertColumns>(ColumnInsert, [](CInsertColumns& dialog) {
        Named<QLineEdit>(dialog, "columnFilter").setText(QStringLiteral("Notes"));
        EXPECT_EQ(dialog.Chosen(), std::vector<std::string>{"Notes"}) << "Enter takes the best match";
        dialog.accept();
    });
    EXPECT_EQ(ColumnOf("Notes"), last);
    EXPECT_EQ(ColumnOf("Last"), last + 1);

    const std::string before = Columns();
    const int bid = ColumnOf("Bid");
    grid->SetColumnWidth(bid, 77);
    doc->Update()->Columns().SetWidth(bid, 77);
    grid->SelectRange({1, grid->RowCount(), bid, bid});
    Do(ColumnHide);
    EXPECT_EQ(grid->ColumnWidth(bid), 0);
    doc->Update()->Options().lockedColumns = 2;
    grid->SetFocusCell(1, 1);
    InDialog<CInsertColumns>(ColumnInsert, [](CInsertColumns& dialog) {
        auto& list = Named<QTreeWidget>(dialog, "columnList");
        list.findItems(QStringLiteral("Bid"), Qt::MatchExactly).front()->setSelected(true);
        dialog.accept();
    });
    EXPECT_EQ(doc->Options().lockedColumns, 3) << "it came before the lock, as a new one does";
    EXPECT_EQ(ColumnOf("Bid"), 1);
    EXPECT_EQ(grid->ColumnWidth(1), 77);
    Steps("EditUndo; EditUndo");
    EXPECT_EQ(Columns(), before);
    EXPECT_EQ(grid->ColumnWidth(bid), 77);
}

TEST_F(CColumnCommandsTest, ColumnsMoveHideLockAndReturnByUndo) {
    const std::string before = Columns();
    Steps("columns 2-3; Alt+Right");
    EXPECT_THAT(Columns(), StartsWith("Symbol;Latest Headline;Tick Trend;News;Change;"));
    EXPECT_EQ(grid->SelectedRange().firstColumn, 3);
    Steps("Alt+Left");
    Q_EMIT grid->ColumnsDragged(2, 3, 1);
    EXPECT_THAT(Columns(), StartsWith("Tick Trend;News;Symbol;"));
    EXPECT_EQ(doc->Undo().UndoName(), "move 2 columns");
    Steps("at 1 2; F7");
    EXPECT_FALSE(IsEnabled(ColumnLock));
    for (int i = 0; i < 4; ++i) Steps("EditUndo");
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
    Rows(QStringLiteral("ALONGSYMBOLTHATNEEDSROOM"));
    Steps("columns 2-2; ColumnHide; columns 1-2; ColumnFit");
    EXPECT_GT(grid->ColumnWidth(1), kDefaultColumnWidthPx);
    EXPECT_EQ(grid->ColumnWidth(2), 0);
}

TEST_F(CColumnCommandsTest, PresentColumnsBecomeThoseOfANewList) {
    grid->SelectRange({1, grid->RowCount(), 4, grid->ColumnCount()});
    Steps("ColumnDelete; columns 3-3; ColumnHide");
    const auto setting = [&] { return settings.ReadTextOrDefault(kDefaultColumnNames); };
    const std::string before = setting();
    Steps("ColumnDefault; EditUndo");
    EXPECT_EQ(setting(), before);
    Steps("EditRedo");
    settings.WriteText(kDefaultColumnNames, "Last;");
    Steps("EditUndo");
    EXPECT_EQ(setting(), "Last;") << "another window wrote it since";
    settings.WriteText(kDefaultColumnNames, before);
    Do(ColumnDefault);
    doc->NewDocument();
    EXPECT_EQ(Columns(), "Symbol;Tick Trend;");
}
