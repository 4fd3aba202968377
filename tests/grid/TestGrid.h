// SPDX-License-Identifier: MIT
#pragma once

#include "base/qt/QtText.h"
#include "grid/GridCtrl.h"
#include "support/Gui.h"

#include <gtest/gtest.h>
#include <string>

namespace vx {

/// A source whose cells are left empty unless a test says what stands in them.
class CTestSource : public CCellSource {
public:
    std::function<void(int row, int column, SCell& cell)> cell;
    std::function<bool(int row, SCell& cell)> span;
    std::function<bool(int row, SCell& cell)> notice;
    std::function<void(int column, SCell& cell)> header;
    std::string headerTip;
    std::string cellTip;
    mutable int filled = 0; ///< Cells asked for.

    void FillCell(int row, int column, SCell& to) const override {
        ++filled;
        if (cell) cell(row, column, to);
    }
    void FillHeader(int column, SCell& to) const override {
        if (header) header(column, to);
    }
    bool FillSpan(int row, SCell& to) const override { return span && span(row, to); }
    bool FillRowHint(int row, SCell& to) const override { return notice && notice(row, to); }
    std::string HeaderTip(int) const override { return headerTip; }
    std::string CellTip(int, int) const override { return cellTip; }
};

/// A shown grid of 10 columns, 80 pixels wide each, and 100 rows; about five columns and eighteen rows are seen.
template <class Grid> class GridTestOf : public testing::Test {
protected:
    void SetUp() override {
        grid.ApplyTheme("light");
        grid.ApplyViewSettings(true, true, true, true);
        grid.SetSource(&source);
        grid.SetColumnCount(10, 80);
        grid.SetRowCount(100);
        grid.resize(440, 400);
        grid.show();
        grid.setFocus();
        ProcessAll();
    }

    const CGridGeometry& Geometry() const { return grid.Geometry(); }
    QWidget* Cells() { return grid.viewport(); }
    QPoint Middle(int row, int column) const { return Geometry().VisibleCellRect(row, column).center(); }
    /// On the right border of a column's header.
    QPoint Border(int column) const {
        const QRect rect = Geometry().CellRect(0, column);
        return {rect.right(), rect.center().y()};
    }
    void Click(int row, int column, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(Cells(), Qt::LeftButton, modifiers, Middle(row, column));
    }
    void Press(const QPoint& at) { QTest::mousePress(Cells(), Qt::LeftButton, {}, at); }
    void Move(const QPoint& to) { QTest::mouseMove(Cells(), to); }
    void Release(const QPoint& at) { QTest::mouseRelease(Cells(), Qt::LeftButton, {}, at); }
    void Drag(const QPoint& from, const QPoint& to) { Press(from), Move(to), Release(to); }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&grid, key, modifiers); }
    void ExpectSelected(int firstRow, int lastRow, int firstColumn, int lastColumn, const char* why = "") {
        EXPECT_EQ(grid.SelectedRange(), (SGridRange{firstRow, lastRow, firstColumn, lastColumn})) << why;
    }
    void ClickSelects(const SGridRange& range, int row, int column, Qt::KeyboardModifiers modifiers = {}) {
        Click(row, column, modifiers);
        EXPECT_EQ(grid.SelectedRange(), range) << row << "," << column;
    }
    void DragSelects(const SGridRange& range, const QPoint& from, const QPoint& to) {
        Drag(from, to);
        EXPECT_EQ(grid.SelectedRange(), range);
    }
    void KeySelects(const SGridRange& range, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        Key(key, modifiers);
        EXPECT_EQ(grid.SelectedRange(), range) << key;
    }
    /// Row 6, or another, is one text across all columns.
    void MakeHeading(std::string text, int heading = 6) {
        source.span = [=](int row, SCell& cell) {
            if (row == heading) cell.SetText(text);
            return row == heading;
        };
    }

    /// The grid's picture, and the place of a cell in it, in pixels of a scale.
    QImage Picture(double scale = 1) { return GrabImage(*grid.viewport(), scale); }
    QRect Place(int row, int column, int scale = 1) const {
        const QRect rect = Geometry().VisibleCellRect(row, column);
        return {rect.topLeft() * scale, rect.size() * scale};
    }

    CTestSource source;
    Grid grid;
};
using GridTest = GridTestOf<CNorvGridCtrl>;

} // namespace vx
