// SPDX-License-Identifier: MIT
#include "grid/TestGrid.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace vx;

namespace {

class CGridCtrlTest : public GridTest {
protected:
    QSignalSpy resized{&grid, &CGridCtrl::ColumnResized};
};

} // namespace

TEST_F(CGridCtrlTest, TheMouseSelectsCellsRangesColumnsRowsAndAll) {
    ClickSelects({5, 5, 3, 3}, 5, 3);
    ClickSelects({2, 5, 3, 4}, 2, 4, Qt::ShiftModifier);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{5, 3}));
    Click(8, 1, Qt::ShiftModifier);
    ExpectSelected(5, 8, 1, 3, "from the same corner");
    DragSelects({2, 4, 2, 3}, Middle(2, 2), Middle(4, 3));
    Press(Middle(2, 2));
    QMouseEvent idle(QEvent::MouseMove, Middle(5, 3), Cells()->mapToGlobal(Middle(5, 3)), Qt::NoButton, {}, {});
    QApplication::sendEvent(Cells(), &idle);
    ExpectSelected(2, 2, 2, 2, "another window got the release");
    EXPECT_FALSE(grid.IsBusy());
    ClickSelects({1, 100, 3, 3}, 0, 3);
    ClickSelects({1, 100, 2, 3}, 0, 2, Qt::ShiftModifier);
    ClickSelects({4, 4, 1, 10}, 4, 0);
    DragSelects({5, 7, 1, 10}, Middle(5, 0), Middle(7, 0));
    ClickSelects({1, 100, 1, 10}, 0, 0);
    EXPECT_EQ(grid.verticalScrollBar()->value(), 0) << "selecting much does not scroll";
}

TEST_F(CGridCtrlTest, TheZoomChangesWhatIsDrawnAndNoWidth) {
    grid.horizontalScrollBar()->setValue(80);
    grid.verticalScrollBar()->setValue(30 * Geometry().RowHeight());
    const int height = Geometry().RowHeight();
    const int numbers = Geometry().ColumnWidth(0);
    grid.SetScale(200, CGridView::kRowPadding);
    EXPECT_EQ(Geometry().ColumnWidth(2), 160);
    EXPECT_EQ(grid.ColumnWidth(2), 80);
    EXPECT_NEAR(Geometry().RowHeight(), 2 * height, 1);
    EXPECT_GT(Geometry().ColumnWidth(0), 3 * numbers / 2);
    EXPECT_EQ(Geometry().FirstVisibleRow(), 31) << "what is in sight stays there";
    EXPECT_EQ(Geometry().FirstScrolledColumn(), 2);
    Drag(Border(2), Border(2) + QPoint(20, 0));
    EXPECT_EQ(resized.last()[1].toInt(), 90);
    grid.SetScale(50, 0);
    EXPECT_EQ(Geometry().ColumnWidth(2), 45);
    EXPECT_LT(Geometry().RowHeight(), height / 2);
    Drag(Border(3), Border(3) + QPoint(1, 0));
    EXPECT_EQ(grid.ColumnWidth(3), 82);
    grid.SetColumnWidth(4, 5000);
    EXPECT_EQ(grid.ColumnWidth(4), CGridView::kMaxColumnWidth) << "a width in the file ends there at any zoom";

    QSignalSpy turned(&grid, &CGridCtrl::ZoomTurned);
    const int top = Geometry().FirstVisibleRow();
    const auto turn = [&](int eighths) {
        QWheelEvent wheel(Middle(top, 3), Cells()->mapToGlobal(Middle(top, 3)), {}, {0, eighths}, Qt::NoButton,
                          Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(Cells(), &wheel);
    };
    for (const int eighths : {60, 60, -240}) turn(eighths);
    EXPECT_EQ(turned, (QList<QList<QVariant>>{{1}, {-2}})) << "half a notch waits for the other half";
    EXPECT_EQ(Geometry().FirstVisibleRow(), top);
}

TEST_F(CGridCtrlTest, FocusSelectionAndDraggedRowsPassOverHiddenOnes) {
    grid.SetHiddenRows({1, 4, 5, 99, 100});
    EXPECT_EQ(grid.FocusCell(), (SGridCell{2, 1}));
    grid.SelectRange({4, 7, 1, 2});
    ExpectSelected(4, 7, 1, 2);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{6, 1}));

    QSignalSpy dragged(&grid, &CGridCtrl::RowsDragged);
    grid.SetFocusCell(2, 1);
    Click(2, 0);
    Click(3, 0, Qt::ShiftModifier);
    Drag(Middle(2, 0), Middle(6, 0) + QPoint(0, 2));
    ASSERT_EQ(dragged.size(), 1);
    EXPECT_EQ(dragged[0], (QList<QVariant>{2, 3, 7}));
    ExpectSelected(2, 3, 1, 10);
    grid.SetHiddenRows({2, 3, 4});
    ExpectSelected(5, 5, 1, 1, "the selection was hidden");
    grid.SetHiddenRows({});
    grid.SelectRange({2, 3, 1, 2});
    grid.MoveRows({0, 1, 2, 5, 3, 4}, {});
    ExpectSelected(2, 2, 1, 2, "no row is selected that was not");
}

TEST_F(CGridCtrlTest, KeysMoveTheFocusOverHiddenRowsAndColumnsAndStopAtTheEdges) {
    for (const int hidden : {3, 10}) grid.SetColumnWidth(hidden, 0);
    grid.SetHiddenRows({1, 5, 6, 99, 100});
    const int page = Geometry().ScrolledHeight() / Geometry().RowHeight();
    const std::string below = std::to_string(4 + page), above = std::to_string(98 - page);
    const std::string steps = "Right 3,4;Left 3,2;Left 3,1;Left 3,1;Return 4,1;Down 7,1;Up 4,1;Shift+Enter "
                              "3,1;Shift+Backtab 2,9;Tab 3,1;Up 2,1;Up 2,1;"
                              "PgDown " +
                              below + ",1;PgUp 2,1;End 2,9;Ctrl+End 98,9;Down 98,9;PgDown 98,9;PgUp " + above +
                              ",9;Home " + above +
                              ",1;"
                              "Ctrl+Home 2,1;Ctrl+Down 98,1;Ctrl+Right 98,9;";
    grid.SetFocusCell(3, 2);
    for (const QString& step : QtText(steps).split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const QStringList words = step.split(QLatin1Char(' '));
        const QKeyCombination key = QKeySequence(words[0])[0];
        Key(key.key(), key.keyboardModifiers());
        const auto [row, column] = grid.FocusCell();
        EXPECT_EQ(QStringLiteral("%1,%2").arg(row).arg(column), words[1]) << step.toStdString();
        EXPECT_EQ(Geometry().VisibleCellRect(row, column), Geometry().CellRect(row, column)) << "it is seen whole";
    }
}

TEST_F(CGridCtrlTest, TheKeyboardSelectsRangesRowsColumnsAndAll) {
    grid.SetFocusCell(3, 2);
    Key(Qt::Key_Down, Qt::ShiftModifier);
    KeySelects({3, 4, 2, 3}, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{3, 2}));
    KeySelects({3, 4, 1, 10}, Qt::Key_Space, Qt::ShiftModifier);
    grid.SetFocusCell(3, 2);
    KeySelects({1, 100, 2, 2}, Qt::Key_Space, Qt::ControlModifier);
    KeySelects({1, 100, 1, 10}, Qt::Key_A, Qt::ControlModifier);
    KeySelects({4, 4, 2, 2}, Qt::Key_Down);
}

TEST_F(CGridCtrlTest, TabLeavesTheGridBehindItsLastCell) {
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

TEST_F(CGridCtrlTest, FocusAndSelectionStayOnCellsThatAreThere) {
    grid.SetFocusCell(100, 10);
    grid.SetRowCount(5);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{5, 10}));
    EXPECT_EQ(grid.verticalScrollBar()->value(), 0);
    grid.SetColumnWidth(10, 0);
    EXPECT_EQ(grid.FocusCell(), (SGridCell{5, 9}));
    grid.SetColumnCount(3);
    grid.SetFocusCell(5, 2);
    grid.SetColumnWidth(2, 0);
    ExpectSelected(5, 5, 3, 3);
}

TEST_F(CGridCtrlTest, AStuckColumnTakesItsClicksAndItsBorders) {
    grid.SetStickyColumn(2);
    grid.EnsureVisible(1, 10);
    ASSERT_EQ(Geometry().StuckColumn(), 2);
    const int left = Geometry().ColumnWidth(0);
    DragSelects({3, 5, 2, 2}, Middle(3, 2), Middle(5, 2));
    EXPECT_EQ(Geometry().ScrollX(), Geometry().MaxScrollX()) << "it is in sight";
    Drag({left + 80 + 2, 5}, {left + 80 + 12, 5});
    EXPECT_EQ(grid.ColumnWidth(2), 90) << "also where another column begins under its edge";
    ClickSelects({1, 100, 2, 2}, 0, 2);
    grid.SetFocusCell(1, 3);
    EXPECT_EQ(Geometry().VisibleCellRect(1, 3).width(), 80) << "it came out from under the stuck one";
}

TEST_F(CGridCtrlTest, ABorderOfTheHeaderIsDraggedToAWidth) {
    Drag(Border(2), Border(2) + QPoint(25, 0));
    EXPECT_EQ(grid.ColumnWidth(2), 105);
    EXPECT_EQ(resized.last()[0].toInt(), 2);
    EXPECT_EQ(resized.last()[1].toInt(), 105);
    Drag(Border(2) + QPoint(3, 0), Border(2) - QPoint(500, 0));
    EXPECT_EQ(grid.ColumnWidth(2), 16) << "never dragged out of sight";
    EXPECT_EQ(grid.FocusCell(), (SGridCell{1, 1})) << "a border selects nothing";
    // Given up.
    const QPoint border = Border(1);
    Press(border);
    Move(border + QPoint(40, 0));
    EXPECT_EQ(grid.ColumnWidth(1), 120);
    Key(Qt::Key_Escape);
    EXPECT_EQ(grid.ColumnWidth(1), 80);
    EXPECT_EQ(resized.last()[1].toInt(), 80);
    // Beside a hidden column the border is that of the column seen.
    grid.SetColumnWidth(3, 0);
    const int x = Geometry().ColumnLeft(4);
    Drag({x + 2, 5}, {x + 12, 5});
    EXPECT_EQ(grid.ColumnWidth(2), 26);
    EXPECT_EQ(grid.ColumnWidth(3), 0);
}

TEST_F(CGridCtrlTest, DoubleClicksFitAColumnAndNameHeadersAndCells) {
    source.cell = [](int row, int column, SCell& cell) {
        if (row == 50 && column == 2) cell.SetText("the longest text of the second column");
    };
    QSignalSpy header(&grid, &CGridCtrl::HeaderDoubleClicked);
    QSignalSpy cell(&grid, &CGridCtrl::CellDoubleClicked);
    QTest::mouseDClick(Cells(), Qt::LeftButton, {}, Border(2));
    EXPECT_GT(grid.ColumnWidth(2), 150);
    EXPECT_TRUE(header.isEmpty());
    QTest::mouseDClick(Cells(), Qt::LeftButton, {}, Middle(0, 1));
    ASSERT_EQ(header.size(), 1);
    EXPECT_EQ(header[0][0].toInt(), 1);
    QTest::mouseDClick(Cells(), Qt::LeftButton, {}, Middle(3, 1));
    ASSERT_EQ(cell.size(), 1);
    EXPECT_EQ(cell[0][0].toInt(), 3);
}
