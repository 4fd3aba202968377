// SPDX-License-Identifier: MIT
#include "app/ContextFixture.h"

#include <QToolButton>

using namespace vx;
using namespace vx::test;

namespace {

using enum ECommand;

/// A board that is sorted by its first column whenever the test lets the timer fire.
class COrderCommandsTest : public CContextFixture {
protected:
    void List(const QString& lines) {
        doc->NewDocument();
        Rows(lines);
        doc->Update()->Options().sort = {1, true, true, 60000};
        view->ApplySortRecord();
        grid->SetFocusCell(1, 1);
    }
    void Tick() {
        view->OnAutoSortTimer();
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
    bool SaysHeld() const { return !Child<QToolButton>("orderHeld").isHidden(); }
    QTimer& Timer() const { return *view->findChild<QTimer*>(QStringLiteral("autoSortTimer")); }
};

} // namespace

TEST_F(COrderCommandsTest, ASelectionFollowsItsRowsWhileTheyAreTogetherElseTheRowOfTheFocusStays) {
    struct SCase {
        const char* rows;
        int focus, reach; ///< Selected with Shift and an arrow.
        const char* selected;
        const char* withShiftDown; ///< By the anchor: the selection grows or shrinks at its other end.
    };
    for (const SCase& each : {
             SCase{"B\nC\nA\nD", 2, 1, "BC focus C", "C focus C"},
             SCase{"C\nB\nA\nD", 1, 3, "ABC focus C", "BC focus C"},
             SCase{"B\nA\nC\nD", 1, 3, "ABC focus B", "ABCD focus B"},
             SCase{"C\nA\nB\nD", 1, 2, "C focus C", "CD focus C"},
         }) {
        List(QString::fromLatin1(each.rows));
        grid->SetFocusCell(each.focus, 1);
        for (int row = each.focus; row != each.reach; row += each.reach > row ? 1 : -1)
            Steps(each.reach > row ? "Shift+Down" : "Shift+Up");
        Steps("Shift+Right");
        Tick();
        EXPECT_EQ(Selected(), each.selected) << each.rows;
        EXPECT_EQ(grid->SelectedRange().lastColumn, 2);
        Steps("Shift+Down");
        EXPECT_EQ(Selected(), each.withShiftDown) << each.rows;
    }
    List(QStringLiteral("B\nA"));
    Steps("columns 1-1");
    Tick();
    EXPECT_EQ(grid->SelectedRange(), (SGridRange{1, grid->RowCount(), 1, 1}));
}

TEST_F(COrderCommandsTest, AKeyHoldsTheOrderUntilItIsPressedAgain) {
    Rows(QStringLiteral("B\nA"));
    EXPECT_FALSE(IsEnabled(SortHold)) << "without auto sort there is nothing to hold";
    List(QStringLiteral("B\nA"));
    doc->MarkSaved();
    Steps("F8");
    EXPECT_TRUE(SaysHeld());
    Tick();
    Script({{"at 1 1", "B|A"}, {"F8", "A|B"}}); // At once.
    EXPECT_FALSE(SaysHeld() || doc->IsModified());

    Steps("F8");
    Click(*mainWindow, "orderHeld");
    EXPECT_FALSE(view->IsOrderHeld());

    boxes.answer = EBoxAnswer::Yes;
    Steps("F8; Del");
    EXPECT_FALSE(SaysHeld()) << "there is nothing to hold any more";
    Steps("Ctrl+Z; Ctrl+Z; F8");
    doc->NewDocument();
    EXPECT_FALSE(SaysHeld()) << "another list";
}

TEST_F(COrderCommandsTest, TheHeaderSortsAndTheTimerMovesNothingUnderAnOpenEditor) {
    Rows(QStringLiteral("C\nA\nB"));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, Middle(0, 1));
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, Middle(0, 1));
    Script({{"at 1 1", "A|B|C", "sort by Symbol"}, {"EditUndo", "C|A|B"}});

    doc->Update()->Options().sort = {1, true, true, 7000};
    view->ApplySortRecord();
    EXPECT_EQ(Timer().interval(), 7000);
    grid->BeginEdit(1, 1);
    Tick();
    EXPECT_EQ(Board(), "C|A|B");
    EXPECT_TRUE(Timer().isActive()) << "a new period";
}
