#include "app/BoardFixture.h"

#include <QScrollBar>
#include <QToolButton>

using namespace vx;
using namespace vx::test;

namespace {

using enum ECommand;

/// A board that is sorted by its first column whenever the test lets the timer fire.
class CAutoSortTest : public CBoardFixture {
protected:
    void List(const QString& lines) {
        Rows(lines);
        doc->Update()->Options().sort = {1, true, true, 60000};
        frame->View().ApplySortRecord();
        grid->SetFocusCell(1, 1);
    }
    void Tick() {
        frame->View().OnAutoSortTimer();
        ProcessAll();
    }
    /// The symbols of the selected rows that are shown, and that of the focus: "AB focus A".
    std::string Selected() const {
        std::string out;
        const SGridRange range = grid->SelectedRange();
        for (int row = range.firstRow; row <= range.lastRow; ++row)
            if (!grid->IsRowHidden(row)) out += doc->RowSymbol(row);
        return out.append(" focus ").append(doc->RowSymbol(grid->FocusCell().row));
    }
    QToolButton& HeldButton() const { return *frame->findChild<QToolButton*>(QStringLiteral("orderHeld")); }
    QTimer& Timer() const { return *frame->View().findChild<QTimer*>(QStringLiteral("autoSortTimer")); }
};

} // namespace

TEST_F(CAutoSortTest, DelTakesTheSymbolThatHadTheFocusBeforeTheSort) {
    List(QStringLiteral("IBM\nNKLA\nAAPL"));
    Tick();
    EXPECT_EQ(Board(), "AAPL|IBM|NKLA");
    EXPECT_EQ(grid->FocusCell(), (SGridCell{2, 1}));
    boxes.answer = EBoxAnswer::Yes; // Auto sort is turned off first.
    Key(Qt::Key_Delete);
    EXPECT_EQ(Board(), "AAPL||NKLA");
}

TEST_F(CAutoSortTest, ASelectionFollowsItsRowsWhileTheyAreTogetherElseTheRowOfTheFocusStays) {
    struct SCase {
        const char* rows;
        int focus, reach; ///< Selected with Shift and an arrow.
        const char* selected;
        const char* withShiftDown; ///< By the anchor: the selection grows or shrinks at its other end.
    };
    for (const SCase& each : {
             SCase{"B\nC\nA\nD", 1, 2, "BC focus B", "BCD focus B"},
             SCase{"B\nC\nA\nD", 2, 1, "BC focus C", "C focus C"},
             SCase{"C\nB\nA\nD", 1, 3, "ABC focus C", "BC focus C"},
             SCase{"B\nA\nC\nD", 1, 3, "ABC focus B", "ABCD focus B"},
             SCase{"C\nA\nB\nD", 1, 2, "C focus C", "CD focus C"},
             SCase{"A\nC\nB\nD", 2, 1, "C focus C", "CD focus C"},
         }) {
        List(QString::fromLatin1(each.rows));
        grid->SetFocusCell(each.focus, 1);
        for (int row = each.focus; row != each.reach; row += each.reach > row ? 1 : -1)
            Key(each.reach > row ? Qt::Key_Down : Qt::Key_Up, Qt::ShiftModifier);
        Key(Qt::Key_Right, Qt::ShiftModifier);
        Tick();
        EXPECT_EQ(Board(), "A|B|C|D");
        EXPECT_EQ(Selected(), each.selected) << each.rows;
        EXPECT_EQ(grid->SelectedRange().lastColumn, 2);
        Key(Qt::Key_Down, Qt::ShiftModifier);
        EXPECT_EQ(Selected(), each.withShiftDown) << each.rows;
        doc->NewDocument();
    }
    List(QStringLiteral("B\nA"));
    SelectColumns(1, 1);
    Tick();
    EXPECT_EQ(grid->SelectedRange(), (SGridRange{1, grid->RowCount(), 1, 1}));
    EXPECT_EQ(grid->FocusCell(), (SGridCell{2, 1}));
}

TEST_F(CAutoSortTest, AmongHiddenRowsNothingIsSelectedThatWasNot) {
    std::vector<std::string> focused;
    QObject::connect(grid, &CGridCtrl::FocusCellChanged, grid,
                     [&](int row, int) { focused.emplace_back(doc->RowSymbol(row)); });
    const auto select = [&](const QString& rows, int hidden, int first, int last) {
        doc->NewDocument();
        List(rows);
        doc->SetRowsHidden({hidden}, true);
        grid->SelectRange({first, last, 1, 1});
        focused.clear();
        Tick();
    };
    select(QStringLiteral("D\nC\nB\nA\nE"), 2, 1, 3);
    EXPECT_EQ(Selected(), "BD focus D") << "C was hidden among them before";
    EXPECT_EQ(focused, std::vector<std::string>{"D"}) << "and no other row had the focus in between";
    select(QStringLiteral("D\nB\nC\nA\nE"), 3, 1, 2);
    EXPECT_EQ(Selected(), "D focus D") << "the hidden C came between them";
    select(QStringLiteral("B\nE\nC\nA\nD"), 2, 1, 3);
    EXPECT_EQ(Selected(), "BC focus B") << "the hidden E went elsewhere";
}

TEST_F(CAutoSortTest, TheGridDoesNotScrollWhereverTheFocusGoes) {
    QString rows;
    for (int i = 300; i > 100; --i) rows += QStringLiteral("S%1\n").arg(i);
    List(rows);
    grid->SetFocusCell(100, 1);
    Key(Qt::Key_PageUp);
    const int top = grid->verticalScrollBar()->value();
    ASSERT_GT(top, 0);
    const std::string symbol(doc->RowSymbol(grid->FocusCell().row));
    for (const bool ascending : {true, false}) {
        doc->Update()->Options().sort.ascending = ascending;
        Tick();
        EXPECT_EQ(grid->verticalScrollBar()->value(), top);
        EXPECT_EQ(doc->RowSymbol(grid->FocusCell().row), symbol);
    }
}

TEST_F(CAutoSortTest, AChangeThatComesWithTheSortLightsNoCellForTheRowThatWasThereBefore) {
    List(QStringLiteral("B\nA"));
    doc->SetFeedReady();
    for (const char* price : {"1", "2"}) {
        Update("A", "Last", price);
        Update("B", "Last", std::string(price) + "0");
    }
    const auto anyLit = [&] {
        return CountColor(GrabImage(*grid->viewport()), grid->viewport()->rect(), grid->Theme().flashUp) > 0;
    };
    grid->SetStale(false);
    EXPECT_FALSE(anyLit()) << "they are there from the first picture on";
    Update("A", "Bid", "1");
    Update("B", "Bid", "1");
    frame->View().OnAutoSortTimer();
    frame->View().OnRepaintTimer();
    EXPECT_EQ(Board(), "A|B");
    EXPECT_FALSE(anyLit()) << "no price has changed";
    Update("A", "Last", "3");
    frame->View().OnRepaintTimer();
    EXPECT_TRUE(anyLit());
}

TEST_F(CAutoSortTest, AKeyHoldsTheOrderUntilItIsPressedAgain) {
    Rows(QStringLiteral("B\nA"));
    EXPECT_FALSE(IsEnabled(SortHold)) << "without auto sort there is nothing to hold";
    List(QStringLiteral("B\nA"));
    ASSERT_TRUE(IsEnabled(SortHold));
    EXPECT_TRUE(HeldButton().isHidden());
    doc->MarkSaved();
    Key(Qt::Key_F8);
    EXPECT_FALSE(HeldButton().isHidden());
    EXPECT_TRUE(frame->Commands().Action(SortHold).isChecked());
    Tick();
    EXPECT_EQ(Board(), "B|A");
    EXPECT_TRUE(Timer().isActive());
    Key(Qt::Key_F8);
    EXPECT_EQ(Board(), "A|B") << "at once";
    EXPECT_TRUE(HeldButton().isHidden());
    EXPECT_FALSE(doc->IsModified());

    Key(Qt::Key_F8);
    QTest::mouseClick(&HeldButton(), Qt::LeftButton);
    ProcessAll();
    EXPECT_FALSE(frame->View().IsOrderHeld());
    EXPECT_FALSE(frame->Commands().Action(SortHold).isChecked());

    Key(Qt::Key_F8);
    boxes.answer = EBoxAnswer::Yes;
    Key(Qt::Key_Delete);
    EXPECT_TRUE(HeldButton().isHidden()) << "there is nothing to hold any more";
    Undo();
    Undo();
    EXPECT_TRUE(doc->Options().sort.autoSort);
    Key(Qt::Key_F8);
    doc->NewDocument();
    EXPECT_TRUE(HeldButton().isHidden()) << "another list";
}

TEST_F(CAutoSortTest, ByHandTheFocusFollowsItsRowTooAndBackWithUndo) {
    Rows(QStringLiteral("C\nA\nB"));
    grid->SetFocusCell(1, 1);
    SelectColumns(1, 1);
    Do(SortNow);
    EXPECT_EQ(Board(), "A|B|C");
    EXPECT_EQ(grid->FocusCell(), (SGridCell{3, 1}));
    Undo();
    EXPECT_EQ(Board(), "C|A|B");
    EXPECT_EQ(grid->FocusCell(), (SGridCell{1, 1}));
    Do(EditRedo);
    EXPECT_EQ(grid->FocusCell(), (SGridCell{3, 1}));
}

TEST_F(CAutoSortTest, SortingAcrossHeadingsIsASwitchOfTheListThatUndoTakesBack) {
    List(QStringLiteral("B\n#Banks\nA"));
    Tick();
    EXPECT_EQ(Board(), "B|#Banks|A");
    doc->MarkSaved();
    Do(SortAcrossHeadings);
    EXPECT_TRUE(doc->IsModified());
    EXPECT_TRUE(frame->Commands().Action(SortAcrossHeadings).isChecked());
    EXPECT_EQ(TextOf(EditUndo), QStringLiteral("&Undo sort across headings"));
    Tick();
    EXPECT_EQ(Board(), "A|#Banks|B");
    Undo();
    EXPECT_FALSE(doc->IsModified());
    frame->Commands().Refresh();
    EXPECT_FALSE(frame->Commands().Action(SortAcrossHeadings).isChecked());
}
