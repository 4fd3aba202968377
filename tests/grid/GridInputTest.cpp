#include "grid/TestGrid.h"

#include "grid/QtText.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>
#include <QWheelEvent>

using namespace vx;

namespace {

class GridInput : public GridTest {
protected:
    QSignalSpy resized{&grid, &CGridCtrl::ColumnResized};

    void Drag(const QPoint& from, const QPoint& to) {
        QTest::mousePress(Cells(), Qt::LeftButton, {}, from);
        QTest::mouseMove(Cells(), to);
        QTest::mouseRelease(Cells(), Qt::LeftButton, {}, to);
    }
    void Wheel(const QPoint& eighths, Qt::KeyboardModifiers modifiers = {}) {
        QWheelEvent event({50, 100}, Cells()->mapToGlobal(QPointF(50, 100)), {}, eighths, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(Cells(), &event);
    }
    void HoverOver(int row, int column) {
        QHelpEvent event(QEvent::ToolTip, Middle(row, column), Cells()->mapToGlobal(Middle(row, column)));
        QApplication::sendEvent(Cells(), &event);
    }
    QString TipOver(int row, int column) {
        HoverOver(row, column);
        return QToolTip::text();
    }
    /// A tip that is shown goes out.
    bool NoTipOver(int row, int column) {
        HoverOver(row, column);
        return WaitFor([] { return !QToolTip::isVisible(); });
    }
};

} // namespace

TEST_F(GridInput, AClickPutsTheFocusAndShiftStretchesTheRange) {
    QSignalSpy moved(&grid, &CGridCtrl::FocusCellChanged);
    Click(5, 3);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{5, 3}));
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{5, 5, 3, 3}));
    ASSERT_EQ(moved.size(), 1);
    EXPECT_EQ(moved[0][0].toInt(), 5);
    Click(2, 4, Qt::ShiftModifier);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{2, 5, 3, 4}));
    EXPECT_EQ(grid.FocusCell(), (SGridCell{5, 3}));
    Click(8, 1, Qt::ShiftModifier);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{5, 8, 1, 3})) << "from the same corner";
    QTest::mouseClick(Cells(), Qt::RightButton, {}, Middle(6, 2));
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{5, 8, 1, 3})) << "a menu on the selection keeps it";
    QTest::mouseClick(Cells(), Qt::RightButton, {}, Middle(1, 1));
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{1, 1, 1, 1}));
}

TEST_F(GridInput, DraggingSelectsAndScrollsBeyondTheEdge) {
    Drag(Middle(2, 2), Middle(4, 3));
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{2, 4, 2, 3}));
    QTest::mousePress(Cells(), Qt::LeftButton, {}, Middle(2, 2));
    QTest::mouseMove(Cells(), {Middle(2, 2).x(), Cells()->height() + 30});
    EXPECT_TRUE(WaitFor([&] { return grid.SelectedRange().lastRow > 25; }));
    QTest::mouseRelease(Cells(), Qt::LeftButton, {}, Middle(2, 2));
    EXPECT_EQ(grid.SelectedRange().firstRow, 2);

    grid.SetLockedColumns(1);
    grid.verticalScrollBar()->setValue(0);
    grid.horizontalScrollBar()->setValue(100);
    Drag(Middle(3, 1), Middle(5, 1));
    EXPECT_EQ(grid.horizontalScrollBar()->value(), 100) << "a drag among the locked columns leaves the others alone";
    QTest::mousePress(Cells(), Qt::LeftButton, {}, Middle(3, 4));
    QTest::mouseMove(Cells(), Middle(3, 1));
    EXPECT_TRUE(WaitFor([&] { return grid.horizontalScrollBar()->value() == 0; }));
    QTest::mouseRelease(Cells(), Qt::LeftButton, {}, Middle(3, 1));
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{3, 3, 1, 4}));
}

TEST_F(GridInput, HeadersSelectColumnsRowsAndAll) {
    Click(0, 3);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{1, 100, 3, 3}));
    Click(0, 2, Qt::ShiftModifier);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{1, 100, 2, 3}));
    Click(4, 0);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{4, 4, 1, 10}));
    Drag(Middle(5, 0), Middle(7, 0));
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{5, 7, 1, 10}));
    Click(0, 0);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{1, 100, 1, 10}));
    EXPECT_EQ(grid.verticalScrollBar()->value(), 0) << "selecting much does not scroll";
}

TEST_F(GridInput, TheArrowsMoveTheFocusOverHiddenColumnsAndStopAtTheEdges) {
    grid.SetColumnWidth(3, 0);
    grid.SetColumnWidth(10, 0);
    grid.SetFocusCell(2, 2);
    Key(Qt::Key_Right);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{2, 4}));
    Key(Qt::Key_Left);
    Key(Qt::Key_Left);
    Key(Qt::Key_Left);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{2, 1}));
    Key(Qt::Key_Up);
    Key(Qt::Key_Up);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{1, 1}));
    Key(Qt::Key_End);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{1, 9}));
    EXPECT_EQ(Geometry().VisibleCellRect(1, 9).width(), 80) << "seen whole";
    Key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{100, 9}));
    Key(Qt::Key_Down);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{100, 9}));
    EXPECT_EQ(Geometry().LastVisibleRow(), 100);
    Key(Qt::Key_Home);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{100, 1}));
    Key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{1, 1}));
    EXPECT_EQ(grid.verticalScrollBar()->value(), 0);
}

TEST_F(GridInput, APageTurnsUnderTheFocus) {
    grid.SetFocusCell(3, 1);
    const int y = Geometry().RowTop(3);
    Key(Qt::Key_PageDown);
    const int page = grid.FocusCell().row - 3;
    EXPECT_EQ(page, Geometry().ScrolledHeight() / Geometry().RowHeight());
    EXPECT_EQ(Geometry().RowTop(grid.FocusCell().row), y);
    Key(Qt::Key_PageUp);
    EXPECT_EQ(grid.FocusCell().row, 3);
    for (int i = 0; i < 20; ++i) Key(Qt::Key_PageDown);
    EXPECT_EQ(grid.FocusCell().row, 100);
}

TEST_F(GridInput, TheKeyboardSelectsRangesRowsColumnsAndAll) {
    grid.SetFocusCell(3, 2);
    Key(Qt::Key_Down, Qt::ShiftModifier);
    Key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{3, 4, 2, 3}));
    EXPECT_EQ(grid.FocusCell(), (SGridCell{3, 2}));
    Key(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{3, 4, 1, 10}));
    grid.SetFocusCell(3, 2);
    Key(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{1, 100, 2, 2}));
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{1, 100, 1, 10}));
    Key(Qt::Key_Down);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{4, 4, 2, 2}));
}

TEST_F(GridInput, SelectionAndScrollPositionShrinkWithTheGrid) {
    QSignalSpy moved(&grid, &CGridCtrl::FocusCellChanged);
    grid.SetFocusCell(100, 10);
    grid.SetRowCount(5);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{5, 10}));
    EXPECT_EQ(grid.verticalScrollBar()->value(), 0);
    grid.SetColumnCount(2);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{5, 5, 2, 2}));
    EXPECT_EQ(grid.horizontalScrollBar()->value(), 0);
    EXPECT_EQ(moved.size(), 3);
}

TEST_F(GridInput, TheFocusLeavesAColumnThatIsHidden) {
    grid.SetFocusCell(4, 3);
    grid.SetColumnWidth(3, 0);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{4, 4, 4, 4}));
    grid.SetFocusCell(4, 10);
    grid.SetColumnWidth(10, 0);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{4, 9}));
}

TEST_F(GridInput, ABorderOfTheHeaderIsDraggedToAWidth) {
    const QPoint border = Border(2);
    QTest::mouseMove(Cells(), border);
    EXPECT_EQ(Cells()->cursor().shape(), Qt::SplitHCursor);
    Drag(border, border + QPoint(25, 0));
    EXPECT_EQ(grid.ColumnWidth(2), 105);
    EXPECT_EQ(resized.last()[0].toInt(), 2);
    EXPECT_EQ(resized.last()[1].toInt(), 105);
    Drag(Border(2) + QPoint(3, 0), Border(2) - QPoint(500, 0));
    EXPECT_EQ(grid.ColumnWidth(2), 16) << "never dragged out of sight";
    EXPECT_EQ(grid.FocusCell(), (SGridCell{1, 1})) << "a border selects nothing";
    QTest::mouseMove(Cells(), Middle(0, 1));
    EXPECT_NE(Cells()->cursor().shape(), Qt::SplitHCursor);
}

TEST_F(GridInput, EscapeGivesUpADraggedWidth) {
    const QPoint border = Border(1);
    QTest::mousePress(Cells(), Qt::LeftButton, {}, border);
    QTest::mouseMove(Cells(), border + QPoint(40, 0));
    EXPECT_EQ(grid.ColumnWidth(1), 120);
    Key(Qt::Key_Escape);
    EXPECT_EQ(grid.ColumnWidth(1), 80);
    QTest::mouseMove(Cells(), border + QPoint(60, 0));
    EXPECT_EQ(grid.ColumnWidth(1), 80);
    EXPECT_EQ(resized.last()[1].toInt(), 80);
}

TEST_F(GridInput, BesideAHiddenOrAScrolledColumnTheBorderIsThatOfTheColumnSeen) {
    grid.SetColumnWidth(3, 0);
    const int x = Geometry().ColumnLeft(4);
    Drag({x + 2, 5}, {x + 12, 5});
    EXPECT_EQ(grid.ColumnWidth(2), 90);
    EXPECT_EQ(grid.ColumnWidth(3), 0);
    grid.SetLockedColumns(1);
    grid.horizontalScrollBar()->setValue(30);
    const int edge = Geometry().FixedWidth();
    Drag({edge + 1, 5}, {edge + 11, 5});
    EXPECT_EQ(grid.ColumnWidth(1), 90);
}

TEST_F(GridInput, DoubleClicksFitAColumnAndNameHeadersAndCells) {
    source.cell = [](int row, int column, SCell& cell) {
        if (row == 50 && column == 2) cell.SetText("the longest text of the second column");
    };
    QSignalSpy header(&grid, &CGridCtrl::HeaderDoubleClicked);
    QSignalSpy cell(&grid, &CGridCtrl::CellDoubleClicked);
    QTest::mouseDClick(Cells(), Qt::LeftButton, {}, Border(2));
    EXPECT_GT(grid.ColumnWidth(2), 150);
    EXPECT_EQ(resized.last()[1].toInt(), grid.ColumnWidth(2));
    EXPECT_TRUE(header.isEmpty());
    QTest::mouseDClick(Cells(), Qt::LeftButton, {}, Middle(0, 1));
    ASSERT_EQ(header.size(), 1);
    EXPECT_EQ(header[0][0].toInt(), 1);
    QTest::mouseDClick(Cells(), Qt::LeftButton, {}, Middle(3, 1));
    ASSERT_EQ(cell.size(), 1);
    EXPECT_EQ(cell[0][0].toInt(), 3);
}

TEST_F(GridInput, TheWheelMovesRowsAndWithShiftColumns) {
    const int rows = QApplication::wheelScrollLines();
    Wheel({0, -120});
    EXPECT_EQ(grid.verticalScrollBar()->value(), rows * Geometry().RowHeight());
    for (int i = 0; i < 12; ++i) Wheel({0, 10}); // a fine wheel loses nothing
    EXPECT_EQ(grid.verticalScrollBar()->value(), 0);
    Wheel({0, -120}, Qt::ShiftModifier);
    EXPECT_EQ(grid.verticalScrollBar()->value(), 0);
    EXPECT_GT(grid.horizontalScrollBar()->value(), 0);
    Wheel({120, 0});
    EXPECT_EQ(grid.horizontalScrollBar()->value(), 0);
}

TEST_F(GridInput, TipsExplainHeadersAndShowCutTexts) {
    source.headerTip = "Last price <b>today</b>";
    EXPECT_EQ(TipOver(0, 2), PlainTipText(QStringLiteral("Last price <b>today</b>")));
    EXPECT_TRUE(TipOver(0, 2).contains(QStringLiteral("&lt;b&gt;"))) << "no markup from outside";
    source.cell = [](int row, int, SCell& cell) {
        cell.SetText(row == 1 ? "short" : "a text that its cell has to cut somewhere");
    };
    EXPECT_TRUE(NoTipOver(1, 1));
    EXPECT_TRUE(TipOver(2, 1).contains(QStringLiteral("cut somewhere")));
    source.cellTip = "of its own";
    EXPECT_TRUE(TipOver(1, 1).contains(QStringLiteral("of its own")));
    EXPECT_TRUE(NoTipOver(0, 0));
}

TEST_F(GridInput, AssistiveTechnologySeesATableAndTheFocusCell) {
    source.header = [](int, SCell& cell) { cell.SetText("Last"); };
    source.cell = [](int row, int, SCell& cell) { cell.SetText(row == 3 ? "84.25" : "0"); };
    grid.SetFocusCell(3, 2);
    QAccessibleInterface* table = QAccessible::queryAccessibleInterface(&grid);
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->role(), QAccessible::Table);
    EXPECT_EQ(table->text(QAccessible::Name), QStringLiteral("Watchlist"));
    EXPECT_EQ(table->text(QAccessible::Value), QStringLiteral("Last 3: 84.25"));
}
