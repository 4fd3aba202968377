#include "app/BoardFixture.h"

#include "watchlist/edit/CopyText.h"
#include "watchlist/file/WatchlistFile.h"

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using enum ECommand;

class CHiddenRowsTest : public CBoardFixture {
protected:
    CHiddenRowsTest() { Rows(QStringLiteral("D\nC\nB\nA\nE")); }

    /// The symbols of the rows that the grid shows, down to the last one in use.
    std::string ShownSymbols() const {
        std::string out;
        for (int row = 1; row <= doc->LastUsedRow(); ++row)
            if (!grid->IsRowHidden(row)) out += doc->RowSymbol(row).empty() ? "-" : doc->RowSymbol(row);
        return out;
    }
};

} // namespace

TEST_F(CHiddenRowsTest, AreHiddenAndShownByKeysAndMoveWithSortingAndUndo) {
    SelectRows(2, 3);
    Key(Qt::Key_9, Qt::ControlModifier);
    EXPECT_EQ(ShownSymbols(), "DAE");
    EXPECT_EQ(grid->FocusCell().row, 4);
    EXPECT_EQ(TextOf(EditUndo), QStringLiteral("&Undo hide 2 rows"));
    EXPECT_EQ(CopyText(*doc, {1, 5, 1, 1}), "D\r\nA\r\nE\r\n");

    SelectColumns(1, 1);
    Q_EMIT grid->HeaderDoubleClicked(1);
    ProcessAll();
    EXPECT_EQ(Board(), "A|B|C|D|E");
    EXPECT_EQ(ShownSymbols(), "ADE");
    EXPECT_THAT(grid->Geometry().HiddenRows(), ElementsAre(2, 3));
    SelectRows(1, 4);
    Do(RowDelete);
    EXPECT_EQ(ShownSymbols(), "E");
    Undo();
    EXPECT_EQ(ShownSymbols(), "ADE") << "what was hidden comes back hidden";
    Undo(); // the sort
    EXPECT_EQ(ShownSymbols(), "DAE");
    Undo();
    EXPECT_EQ(ShownSymbols(), "DCBAE");
    EXPECT_EQ(grid->SelectedRange().firstRow, 2);
    EXPECT_EQ(grid->SelectedRange().lastRow, 3);
    Do(EditRedo);
    EXPECT_EQ(ShownSymbols(), "DAE") << "redoing shows nothing of what it hides";

    SelectRows(1, 1);
    Do(RowHide);
    EXPECT_EQ(ShownSymbols(), "AE");
    grid->SetFocusCell(5, 1);
    Do(RowInsert);
    EXPECT_EQ(ShownSymbols(), "A-E");
    SelectRows(4, 4);
    Key(Qt::Key_9, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(ShownSymbols(), "DCBA-E") << "those at the selection's edge";
    EXPECT_FALSE(IsEnabled(RowShow));
    SelectRows(1, grid->RowCount());
    EXPECT_FALSE(IsEnabled(RowHide)) << "a row is left";
    SelectRows(2, grid->RowCount());
    Do(RowHide);
    EXPECT_EQ(grid->FocusCell().row, 1);
    EXPECT_FALSE(IsEnabled(RowHide));
    EXPECT_FALSE(IsEnabled(RowMoveDown));
}

TEST_F(CHiddenRowsTest, ACutLeavesThemAloneAndUndoLeadsToThem) {
    SelectRows(3, 3);
    Do(RowHide);
    SelectRows(2, 4);
    Do(EditCut);
    EXPECT_EQ(Board(), "D||B||E");
    EXPECT_EQ(QGuiApplication::clipboard()->text().count(QLatin1Char('\n')), 2);
    Undo();
    EXPECT_EQ(Board(), "D|C|B|A|E");
    EXPECT_TRUE(grid->IsRowHidden(3));
    Do(RowShow);
    SelectRows(3, 3);
    Do(EditDelete);
    doc->Update()->SetHidden(3, true);
    Undo();
    EXPECT_FALSE(grid->IsRowHidden(3)) << "what was undone is seen";
    EXPECT_EQ(grid->SelectedRange().firstRow, 3);
}

TEST_F(CHiddenRowsTest, AreKeptInTheFile) {
    CWatchlistFile file(*doc, folder / "state");
    ASSERT_TRUE(file.SaveAs(folder / "list.vxw", {}).IsDone());
    doc->SetRowsHidden({2, 3, 5}, true);
    EXPECT_TRUE(doc->IsModified());
    EXPECT_TRUE(file.Save({}).IsDone());
    EXPECT_FALSE(doc->IsModified());
    doc->NewDocument();
    EXPECT_THAT(grid->Geometry().HiddenRows(), IsEmpty());
    ASSERT_TRUE(file.Open(folder / "list.vxw").IsDone());
    EXPECT_EQ(ShownSymbols(), "DA");
    EXPECT_THAT(grid->Geometry().HiddenRows(), ElementsAre(2, 3, 5));
    EXPECT_FALSE(doc->Undo().CanUndo());
    EXPECT_FALSE(doc->IsModified());
}
