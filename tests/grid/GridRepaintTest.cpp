// SPDX-License-Identifier: MIT
#include "grid/TestGrid.h"
#include "support/FakeClock.h"

#include <QBackingStore>

#include <random>

using namespace vx;

namespace {

class CDirtyCellsTest : public GridTest {
protected:
    /// What is painted from Start() to Painted(), after everything pending is delivered.
    void Start() {
        ProcessAll();
        m_before = grid.Counters();
    }
    SPaintCounters Painted() {
        ProcessAll();
        return {grid.Counters().passes - m_before.passes, grid.Counters().cells - m_before.cells};
    }
    int VisibleColumns() const { return Geometry().LastScrolledColumn() - Geometry().FirstScrolledColumn() + 1; }

    /// What the window shows; the offscreen platform keeps it in an image.
    QImage OnScreen() const {
        const auto* store = dynamic_cast<const QImage*>(grid.backingStore()->paintDevice());
        return store == nullptr ? QImage() : store->convertToFormat(QImage::Format_RGB32);
    }

private:
    SPaintCounters m_before;
};

} // namespace

TEST_F(CDirtyCellsTest, PaintsOnlyTheCellsThatChangedAndTheRowsConcerned) {
    Start();
    grid.MarkCellChanged(3, 2);
    EXPECT_EQ(Painted().passes, 0) << "nothing before the flush";
    for (int i = 0; i < 1000; ++i) grid.MarkCellChanged(i % 2 + 4, 1);
    grid.FlushChanges();
    EXPECT_EQ(Painted(), (SPaintCounters{1, 3}));
    Start();
    grid.MarkRowChanged(4);
    grid.FlushChanges();
    EXPECT_EQ(Painted(), (SPaintCounters{1, VisibleColumns() + 1})) << "and its number";
    Start();
    for (const int column : {1, 3}) grid.MarkCellChanged(6, column);
    grid.FlushChanges();
    EXPECT_EQ(Painted(), (SPaintCounters{1, 2})) << "and not what is between them";
    grid.SetFocusCell(3, 1);
    Start();
    grid.SetFocusCell(4, 1);
    EXPECT_LE(Painted().cells, 3 * (VisibleColumns() + 1)) << "two rows and the header";
}

TEST_F(CDirtyCellsTest, PaintsNothingForWhatCannotBeSeen) {
    grid.SetColumnWidth(2, 0);
    Start();
    for (int row = Geometry().LastVisibleRow() + 1; row <= 100; ++row) {
        grid.MarkRowChanged(row);
        grid.MarkCellChanged(row, 1);
    }
    grid.MarkCellChanged(1, 2);
    grid.MarkCellChanged(1, 9);
    for (const int nonsense : {-1, 101, 2'000'000'000}) {
        grid.MarkCellChanged(nonsense, 1);
        grid.MarkCellChanged(1, nonsense);
    }
    grid.FlushChanges();
    EXPECT_EQ(Painted().passes, 0);
}

TEST_F(CDirtyCellsTest, AfterManyPartialPaintsTheWindowShowsWhatAFullOneWould) {
    grid.SetRowCount(100'000);
    std::vector<int> values(100'001 * 11, 1234);
    const auto at = [](int row, int column) { return static_cast<size_t>(row * 11 + column); };
    source.cell = [&](int row, int column, SCell& cell) {
        cell.SetText(std::to_string(values[at(row, column)]));
        cell.align = EAlign::Right;
    };
    source.span = [](int row, SCell& cell) {
        if (row % 9 == 0) cell.SetText("A heading");
        return row % 9 == 0;
    };
    std::vector<int> hidden = {1, 5, 7, 8};
    for (int row = 11; row <= 90'010; ++row) hidden.push_back(row);
    const QRect cells = QRectF(QPointF(), QSizeF(Cells()->size()) * grid.devicePixelRatioF()).toRect();
    std::mt19937 random(11);
    for (const std::vector<int>& rows : {std::vector<int>{}, hidden}) {
        grid.SetHiddenRows(rows);
        grid.SetLockedColumns(rows.empty() ? 1 : 0);
        grid.SetStickyColumn(rows.empty() ? 3 : 2);
        for (int pass = 0; pass < 40; ++pass) {
            for (int i = 0; i < 30; ++i) {
                const int row =
                    Geometry().ShownRowAt(static_cast<int>(random() % 25) + 1) - static_cast<int>(i % 5 == 0);
                const int column = static_cast<int>(random() % 10) + 1;
                values[at(row, column)] = static_cast<int>(random() % 100'000);
                grid.MarkCellChanged(row, column);
            }
            if (pass % 4 == 0) grid.MarkRowChanged(10);
            grid.FlushChanges();
            if (pass % 3 == 1)
                grid.SetFocusCell(Geometry().ShownRowAt(static_cast<int>(random() % 25) + 1),
                                  static_cast<int>(random() % 10) + 1);
            if (pass % 5 == 2) Key(Qt::Key_Down, Qt::ShiftModifier);
            if (pass % 7 == 6) grid.SetMarkedRange(SGridRange{5, 50'000, 2, 3});
            ProcessAll();
        }
        const QImage whole = grid.grab().toImage().convertToFormat(QImage::Format_RGB32);
        EXPECT_EQ(OnScreen().copy(cells), whole.copy(cells));
    }
}

TEST_F(CDirtyCellsTest, LightsAChangedCellAndPutsItOut) {
    test::CFakeClock clock;
    clock.elapsedMs = 1000;
    grid.ApplyViewSettings(true, true, true, false);
    source.cell = [](int row, int, SCell& cell) { cell.role = row == 1 ? ETextRole::Up : ETextRole::Down; };
    const auto lit = [&](int row, QRgb color) { return CountColor(Picture(), Place(row, 2), color) > 500; };
    grid.MarkCellChanged(1, 2);
    grid.MarkCellChanged(2, 2);
    grid.FlushChanges();
    EXPECT_TRUE(lit(1, grid.Theme().flashUp));
    EXPECT_TRUE(lit(2, grid.Theme().flashDown));
    clock.elapsedMs += CCellFlash::kShowMs;
    EXPECT_TRUE(WaitFor([&] { return !lit(1, grid.Theme().flashUp); }));
    EXPECT_FALSE(lit(2, grid.Theme().flashDown));

    grid.MarkCellChanged(1, 2);
    grid.FlushChanges();
    EXPECT_FALSE(lit(1, grid.Theme().flashUp)) << "too soon after the last time";
    clock.elapsedMs += CCellFlash::kRestartMs - CCellFlash::kShowMs;
    grid.MarkCellChanged(1, 2);
    grid.FlushChanges();
    EXPECT_TRUE(lit(1, grid.Theme().flashUp));
    grid.ApplyViewSettings(true, true, true, true);
    clock.elapsedMs += 10 * CCellFlash::kRestartMs;
    grid.MarkCellChanged(1, 2);
    grid.FlushChanges();
    EXPECT_FALSE(lit(1, grid.Theme().flashUp)) << "reduced motion";
}

TEST_F(CDirtyCellsTest, LightsWhatShowsItsDirectionAsBackgroundMoreAndWhatIsSteadyNot) {
    test::CFakeClock clock;
    clock.elapsedMs = 1000;
    grid.ApplyViewSettings(true, true, true, false);
    source.cell = [](int row, int, SCell& cell) {
        cell.direction = ETextRole::Up;
        cell.directionMark = row == 1 ? EDirectionMark::Background : EDirectionMark::Arrow;
        cell.steady = row == 3;
        cell.SetText("1");
    };
    const auto has = [&](int row, QRgb color) { return CountColor(Picture(), Place(row, 2), color) > 500; };
    const QRgb tint = grid.Theme().flashUp;
    EXPECT_TRUE(has(1, tint));
    EXPECT_FALSE(has(2, tint));
    for (int row = 1; row <= 3; ++row) grid.MarkCellChanged(row, 2);
    grid.FlushChanges();
    EXPECT_FALSE(has(1, tint)) << "it is seen that it changed";
    EXPECT_TRUE(has(2, tint));
    EXPECT_FALSE(has(3, tint));
}
