#include "grid/TestGrid.h"

#include <QHelpEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <vector>

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

TEST_F(GridInput, TheMouseSelectsCellsRangesColumnsRowsAndAll) {
    QSignalSpy moved(&grid, &CGridCtrl::FocusCellChanged);
    Click(5, 3);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{5, 5, 3, 3}));
    ASSERT_EQ(moved.size(), 1);
    EXPECT_EQ(moved[0][0].toInt(), 5);
    Click(2, 4, Qt::ShiftModifier);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{2, 5, 3, 4}));
    EXPECT_EQ(grid.FocusCell(), (SGridCell{5, 3}));
    Click(8, 1, Qt::ShiftModifier);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{5, 8, 1, 3})) << "from the same corner";
    Drag(Middle(2, 2), Middle(4, 3));
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{2, 4, 2, 3}));
    QTest::mousePress(Cells(), Qt::LeftButton, {}, Middle(2, 2));
    QMouseEvent idle(QEvent::MouseMove, Middle(5, 3), Cells()->mapToGlobal(Middle(5, 3)), Qt::NoButton, {}, {});
    QApplication::sendEvent(Cells(), &idle);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{2, 2, 2, 2})) << "another window got the release";
    EXPECT_FALSE(grid.IsBusy());
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

TEST_F(GridInput, FocusSelectionAndDraggedRowsPassOverHiddenOnes) {
    grid.SetHiddenRows({1, 4, 5, 99, 100});
    EXPECT_EQ(grid.FocusCell(), (SGridCell{2, 1}));
    grid.SelectRange({4, 7, 1, 2});
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{4, 7, 1, 2}));
    EXPECT_EQ(grid.FocusCell(), (SGridCell{6, 1}));
    grid.SetFocusCell(4, 2);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{6, 2}));

    QSignalSpy dragged(&grid, &CGridCtrl::RowsDragged);
    grid.SetFocusCell(2, 1);
    Click(2, 0);
    Click(3, 0, Qt::ShiftModifier);
    Drag(Middle(2, 0), Middle(6, 0) - QPoint(0, 2));
    EXPECT_EQ(dragged.size(), 0) << "over hidden rows alone nothing would be seen to move";
    Drag(Middle(2, 0), Middle(6, 0) + QPoint(0, 2));
    ASSERT_EQ(dragged.size(), 1);
    EXPECT_EQ(dragged[0], (QList<QVariant>{2, 3, 7}));
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{2, 3, 1, 10}));
    grid.SetHiddenRows({2, 3, 4});
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{5, 5, 1, 1})) << "the selection was hidden";
    grid.SetHiddenRows({});
    EXPECT_EQ(grid.FocusCell(), (SGridCell{5, 1}));
}

TEST_F(GridInput, DraggingBeyondTheEdgeScrolls) {
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

TEST_F(GridInput, KeysMoveTheFocusOverHiddenRowsAndColumnsAndStopAtTheEdges) {
    for (const int hidden : {3, 10}) grid.SetColumnWidth(hidden, 0);
    grid.SetHiddenRows({1, 5, 6, 99, 100});
    const int page = Geometry().ScrolledHeight() / Geometry().RowHeight();
    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        SGridCell to;
    } steps[] = {{Qt::Key_Right, {}, {3, 4}},
                 {Qt::Key_Left, {}, {3, 2}},
                 {Qt::Key_Left, {}, {3, 1}},
                 {Qt::Key_Left, {}, {3, 1}},
                 {Qt::Key_Return, {}, {4, 1}},
                 {Qt::Key_Down, {}, {7, 1}},
                 {Qt::Key_Up, {}, {4, 1}},
                 {Qt::Key_Enter, Qt::KeypadModifier | Qt::ShiftModifier, {3, 1}},
                 {Qt::Key_Backtab, Qt::ShiftModifier, {2, 9}},
                 {Qt::Key_Tab, {}, {3, 1}},
                 {Qt::Key_Up, {}, {2, 1}},
                 {Qt::Key_Up, {}, {2, 1}},
                 {Qt::Key_PageDown, {}, {4 + page, 1}},
                 {Qt::Key_PageUp, {}, {2, 1}},
                 {Qt::Key_End, {}, {2, 9}},
                 {Qt::Key_End, Qt::ControlModifier, {98, 9}},
                 {Qt::Key_Down, {}, {98, 9}},
                 {Qt::Key_PageDown, {}, {98, 9}},
                 {Qt::Key_PageUp, {}, {98 - page, 9}},
                 {Qt::Key_Home, {}, {98 - page, 1}},
                 {Qt::Key_Home, Qt::ControlModifier, {2, 1}},
                 {Qt::Key_Down, Qt::ControlModifier, {98, 1}},
                 {Qt::Key_Right, Qt::ControlModifier, {98, 9}}};
    grid.SetFocusCell(3, 2);
    for (const auto& step : steps) {
        Key(step.key, step.modifiers);
        EXPECT_EQ(grid.FocusCell(), step.to) << step.key;
        const QRect whole = Geometry().CellRect(step.to.row, step.to.column);
        EXPECT_EQ(Geometry().VisibleCellRect(step.to.row, step.to.column), whole) << "seen whole after " << step.key;
    }
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

TEST_F(GridInput, TabLeavesTheGridBehindItsLastCell) {
    QWidget window;
    QVBoxLayout layout(&window);
    auto* before = new QPushButton;
    auto* after = new QPushButton;
    layout.addWidget(before);
    layout.addWidget(&grid);
    layout.addWidget(after);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    grid.setFocus();
    grid.SetFocusCell(100, 10);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus());
    grid.setFocus();
    grid.SetFocusCell(1, 1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(before->hasFocus());
    grid.setParent(nullptr);
}

TEST_F(GridInput, ACellLookedForComesWellIntoView) {
    grid.SetFocusCell(60, 8);
    const QRect found = Geometry().VisibleCellRect(60, 8);
    EXPECT_GT(found.top(), Cells()->height() / 3);
    EXPECT_LT(found.bottom(), Cells()->height() * 3 / 4);
    EXPECT_EQ(Geometry().VisibleCellRect(60, 9).width(), 80) << "with its neighbour";
    const int scrolled = grid.verticalScrollBar()->value();
    grid.SetFocusCell(62, 8);
    EXPECT_EQ(grid.verticalScrollBar()->value(), scrolled) << "what can be seen stays where it is";
    // Sideways too: not for a neighbour, and not for one text across all columns.
    source.span = [](int row, SCell&) { return row == 63; };
    grid.horizontalScrollBar()->setValue(0);
    grid.SetFocusCell(62, Geometry().LastScrolledColumn() - 1);
    grid.SetFocusCell(63, 10);
    EXPECT_EQ(grid.horizontalScrollBar()->value(), 0);
}

TEST_F(GridInput, FocusAndSelectionStayOnCellsThatAreThere) {
    QSignalSpy moved(&grid, &CGridCtrl::FocusCellChanged);
    grid.SetFocusCell(100, 10);
    grid.SetRowCount(5);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{5, 10}));
    EXPECT_EQ(grid.verticalScrollBar()->value(), 0);
    grid.SetColumnWidth(10, 0);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{5, 9}));
    grid.SetColumnCount(3);
    grid.SetFocusCell(5, 2);
    grid.SetColumnWidth(2, 0);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{5, 5, 3, 3}));
    EXPECT_EQ(grid.horizontalScrollBar()->value(), 0);
    EXPECT_EQ(moved.size(), 6);
}

TEST_F(GridInput, AStuckColumnTakesItsClicksAndItsBorders) {
    grid.SetStickyColumn(2);
    grid.EnsureVisible(1, 10);
    ASSERT_EQ(Geometry().StuckColumn(), 2);
    const int left = Geometry().ColumnWidth(0);
    EXPECT_EQ(Geometry().VisibleCellRect(3, 2).left(), left);
    Click(3, 2);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{3, 2}));
    EXPECT_GT(Geometry().ScrollX(), 0) << "it is in sight";
    Drag(Middle(3, 2), Middle(5, 2));
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{3, 5, 2, 2}));
    const int scroll = Geometry().ScrollX();
    EXPECT_EQ(scroll, grid.Geometry().MaxScrollX());
    QTest::mouseMove(Cells(), Middle(0, 2));
    EXPECT_NE(Cells()->cursor().shape(), Qt::SplitHCursor);
    Drag({left + 80 + 2, 5}, {left + 80 + 12, 5});
    EXPECT_EQ(grid.ColumnWidth(2), 90) << "also where another column begins under its edge";
    Drag({left + 90 - 3, 5}, {left + 90 - 13, 5});
    EXPECT_EQ(grid.ColumnWidth(2), 80);
    Click(0, 2);
    EXPECT_EQ(grid.SelectedRange(), (SGridRange{1, 100, 2, 2}));
    grid.SetFocusCell(1, 3);
    EXPECT_EQ(Geometry().VisibleCellRect(1, 3).width(), 80) << "it came out from under the stuck one";
    grid.SetStickyColumn(0);
    grid.SetLockedColumns(1);
    QTest::mouseMove(Cells(), {1, 5});
    EXPECT_NE(Cells()->cursor().shape(), Qt::SplitHCursor) << "no border at the row numbers' left";
}

TEST_F(GridInput, ABorderOfTheHeaderIsDraggedToAWidth) {
    QTest::mouseMove(Cells(), Border(2));
    EXPECT_EQ(Cells()->cursor().shape(), Qt::SplitHCursor);
    Drag(Border(2), Border(2) + QPoint(25, 0));
    EXPECT_EQ(grid.ColumnWidth(2), 105);
    EXPECT_EQ(resized.last()[0].toInt(), 2);
    EXPECT_EQ(resized.last()[1].toInt(), 105);
    Drag(Border(2) + QPoint(3, 0), Border(2) - QPoint(500, 0));
    EXPECT_EQ(grid.ColumnWidth(2), 16) << "never dragged out of sight";
    EXPECT_EQ(grid.FocusCell(), (SGridCell{1, 1})) << "a border selects nothing";
    QTest::mouseMove(Cells(), Middle(0, 1));
    EXPECT_NE(Cells()->cursor().shape(), Qt::SplitHCursor);
    // Given up.
    const QPoint border = Border(1);
    QTest::mousePress(Cells(), Qt::LeftButton, {}, border);
    QTest::mouseMove(Cells(), border + QPoint(40, 0));
    EXPECT_EQ(grid.ColumnWidth(1), 120);
    Key(Qt::Key_Escape);
    QTest::mouseMove(Cells(), border + QPoint(60, 0));
    EXPECT_EQ(grid.ColumnWidth(1), 80);
    EXPECT_EQ(resized.last()[1].toInt(), 80);
    // Beside a hidden or a scrolled column the border is that of the column seen.
    grid.SetColumnWidth(3, 0);
    const int x = Geometry().ColumnLeft(4);
    Drag({x + 2, 5}, {x + 12, 5});
    EXPECT_EQ(grid.ColumnWidth(2), 26);
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
