// SPDX-License-Identifier: MIT
#include "grid/TestGrid.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>

using namespace vx;

namespace {

class CDropGrid : public CNorvGridCtrl {
public:
    using CNorvGridCtrl::CNorvGridCtrl;
    bool AcceptsDrop(const QMimeData& mime) const override { return mime.hasText(); }
};

class CGridCtrlDragTest : public GridTestOf<CDropGrid> {
protected:
    QSignalSpy columns{&grid, &CGridCtrl::ColumnsDragged};
    QSignalSpy rows{&grid, &CGridCtrl::RowsDragged};

    /// Where something dropped would stand before a column or row.
    QPoint Before(int row, int column) { return Geometry().CellRect(row, column).topLeft() + QPoint(3, 3); }
    static std::vector<int> Numbers(QSignalSpy& spy) {
        if (spy.size() != 1) return {};
        const auto arguments = spy.takeFirst();
        return {arguments[0].toInt(), arguments[1].toInt(), arguments[2].toInt()};
    }
    bool InsertionIsSeen() {
        const QImage picture = Picture();
        return CountColor(picture, picture.rect(), grid.Theme().focus) > 500;
    }
};

using Three = std::vector<int>;

} // namespace

TEST_F(CGridCtrlDragTest, SelectedColumnsGoWhereTheirHeaderIsDropped) {
    Click(0, 2);
    Click(0, 3, Qt::ShiftModifier);
    Press(Middle(0, 3));
    Move(Middle(0, 3) + QPoint(2, 0));
    EXPECT_FALSE(InsertionIsSeen()) << "a click may shake";
    Move(Before(0, 5));
    EXPECT_TRUE(InsertionIsSeen());
    ExpectSelected(1, 100, 2, 3);
    Release(Before(0, 5));
    EXPECT_EQ(Numbers(columns), (Three{2, 3, 5}));
    EXPECT_FALSE(InsertionIsSeen() || grid.IsBusy());
    Drag(Middle(0, 2), Middle(0, 1) - QPoint(20, 0));
    EXPECT_EQ(Numbers(columns), (Three{2, 3, 1}));
    // To their own place, to places that differ by hidden columns only, and given up.
    grid.SetColumnWidth(4, 0);
    for (const QPoint& nowhere : {Before(0, 2), Middle(0, 3) + QPoint(20, 0), Middle(0, 2), Before(0, 5)})
        Drag(Middle(0, 3), nowhere);
    Press(Middle(0, 3));
    Move(Before(0, 1));
    Key(Qt::Key_Escape);
    Release(Before(0, 1));
    EXPECT_TRUE(columns.isEmpty());
    Click(0, 2);
    ExpectSelected(1, 100, 2, 2, "a click alone selects anew");
    // Beyond the edge the grid scrolls until the end is reached.
    Press(Middle(0, 2));
    Move({Cells()->width() + 40, 10});
    EXPECT_TRUE(WaitFor([&] { return grid.horizontalScrollBar()->value() == Geometry().MaxScrollX(); }));
    Release({Cells()->width() + 40, 10});
    EXPECT_EQ(Numbers(columns), (Three{2, 2, 11}));
}

TEST_F(CGridCtrlDragTest, AHeaderIsTakenAtOnceAndAlone) {
    Click(0, 2);
    Drag(Middle(0, 3), Before(0, 5));
    EXPECT_EQ(Numbers(columns), (Three{3, 3, 5}));
    ExpectSelected(1, 100, 3, 3);
}

TEST_F(CGridCtrlDragTest, SelectedRowsGoWhereTheirNumberIsDropped) {
    Click(4, 0);
    Click(5, 0, Qt::ShiftModifier);
    Press(Middle(4, 0));
    Move(Before(9, 0));
    EXPECT_TRUE(InsertionIsSeen());
    Release(Before(9, 0));
    EXPECT_EQ(Numbers(rows), (Three{4, 5, 9}));
    for (const QPoint& nowhere : {Before(5, 0), Middle(5, 0) + QPoint(0, 6), Before(6, 0)})
        Drag(Middle(4, 0) - QPoint(0, 5), nowhere);
    EXPECT_TRUE(rows.isEmpty());
    Press(Middle(4, 0));
    Move({10, Cells()->height() + 50});
    EXPECT_TRUE(WaitFor([&] { return grid.verticalScrollBar()->value() > 200; }));
    grid.verticalScrollBar()->setValue(grid.verticalScrollBar()->maximum());
    Move({10, Cells()->height() + 51});
    Release({10, Cells()->height() + 51});
    EXPECT_EQ(Numbers(rows), (Three{4, 5, 101}));
}

TEST_F(CGridCtrlDragTest, DataFromElsewhereIsDroppedOnTheNearestCell) {
    std::vector<int> at;
    QObject::connect(&grid, &CGridCtrl::DataDropped, &grid, [&](const QMimeData* data, int row, int column) {
        EXPECT_EQ(data->text(), QStringLiteral("IBM"));
        at = {row, column};
    });
    QMimeData text, other;
    text.setText(QStringLiteral("IBM"));
    other.setData(QStringLiteral("application/x-other"), "1");
    const auto over = [&](const QPoint& place, const QMimeData& data) {
        QDragEnterEvent event(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(Cells(), &event);
        EXPECT_TRUE(!event.isAccepted() || event.dropAction() == Qt::CopyAction) << "nothing is taken away there";
        return event.isAccepted();
    };
    const auto drop = [&](const QPoint& place) {
        EXPECT_TRUE(over(place, text));
        QDropEvent event(place, Qt::CopyAction | Qt::MoveAction, &text, Qt::LeftButton, {});
        QApplication::sendEvent(Cells(), &event);
        return at;
    };
    EXPECT_FALSE(over(Middle(3, 2), other));
    EXPECT_EQ(drop(Middle(5, 2)), (std::vector<int>{5, 2}));
    EXPECT_FALSE(grid.IsBusy());
    EXPECT_EQ(drop({2, 2}), (std::vector<int>{1, 1}));
    grid.SetRowCount(3);
    EXPECT_EQ(drop({200, 300}), (std::vector<int>{3, grid.CellAt({200, 30}).column}));
    grid.SetRowCount(0);
    EXPECT_EQ(drop({200, 300})[0], 1);
    // Near the edge the rows move on under it.
    grid.SetRowCount(100);
    over({200, Cells()->height() - 5}, text);
    EXPECT_TRUE(WaitFor([&] { return grid.verticalScrollBar()->value() > 100; }));
    QDragLeaveEvent leave;
    QApplication::sendEvent(Cells(), &leave);
    EXPECT_FALSE(grid.IsBusy());
}

TEST_F(CGridCtrlDragTest, MenusAreAskedForWithWhatLiesUnderThem) {
    std::vector<int> asked;
    QObject::connect(&grid, &CGridCtrl::ContextMenuRequested, &grid,
                     [&](EGridPart part, int row, int column, const QPoint& at) {
                         asked = {static_cast<int>(part), row, column};
                         EXPECT_TRUE(Cells()->rect().contains(Cells()->mapFromGlobal(at)));
                     });
    const auto menuAt = [&](const QPoint& place) {
        QTest::mousePress(Cells(), Qt::RightButton, {}, place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, Cells()->mapToGlobal(place));
        QApplication::sendEvent(Cells(), &event);
        return asked;
    };
    const auto part = [](EGridPart p, int row, int column) {
        return std::vector<int>{static_cast<int>(p), row, column};
    };
    grid.SelectRange({2, 4, 2, 3});
    EXPECT_EQ(menuAt(Middle(3, 3)), part(EGridPart::Cell, 3, 3));
    ExpectSelected(2, 4, 2, 3);
    menuAt(Middle(7, 1));
    ExpectSelected(7, 7, 1, 1);
    EXPECT_EQ(menuAt(Middle(0, 4)), part(EGridPart::ColumnHeader, 0, 4));
    ExpectSelected(1, 100, 4, 4);
    EXPECT_EQ(menuAt(Middle(5, 0)), part(EGridPart::RowHeader, 5, 0));
    ExpectSelected(5, 5, 1, 10);
    grid.SetRowCount(5);
    EXPECT_EQ(menuAt({200, 300}), part(EGridPart::Outside, -1, -1));
    grid.SetFocusCell(2, 10);
    grid.horizontalScrollBar()->setValue(0);
    Key(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(asked, part(EGridPart::Cell, 2, 10));
}
