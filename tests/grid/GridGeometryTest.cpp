// SPDX-License-Identifier: MIT
#include "grid/GridGeometry.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace vx;

namespace {

// Row numbers 30 px, columns of 100 px, rows of 20 px under a header of 24 px, in a viewport of 330 x 124: three
// columns and five rows fit exactly.
CGridGeometry Sample(int columns = 10, int rows = 50) {
    CGridGeometry geometry;
    geometry.SetRowHeights(24, 20);
    geometry.SetColumnCount(columns, 100);
    geometry.SetColumnWidth(0, 30);
    geometry.SetRowCount(rows);
    geometry.SetViewport({330, 124});
    return geometry;
}

} // namespace

TEST(CGridGeometry, PlacesWithoutACellHaveNone) {
    CGridGeometry geometry = Sample(5, 3);
    for (const int hidden : {1, 3, 5}) geometry.SetColumnWidth(hidden, 0);
    EXPECT_EQ(geometry.ColumnAt(129), 2);
    EXPECT_EQ(geometry.ColumnAt(130), 4);
    for (const int x : {-1, 230}) EXPECT_EQ(geometry.ColumnAt(x), -1);
    for (const int y : {-1, 84}) EXPECT_EQ(geometry.RowAt(y), -1);
    CGridGeometry empty;
    empty.SetViewport({300, 200});
    EXPECT_EQ(empty.ColumnAt(10), -1);
    EXPECT_EQ(empty.RowAt(100), -1);
    EXPECT_GT(empty.FirstVisibleRow(), empty.LastVisibleRow());
    EXPECT_GT(empty.FirstScrolledColumn(), empty.LastScrolledColumn());
}

TEST(CGridGeometry, ScrollsNoFurtherThanACellNeedsToBeSeen) {
    CGridGeometry geometry = Sample();
    geometry.SetLockedColumns(1);
    EXPECT_EQ(geometry.ScrollToShow(5, 3), QPoint(0, 0));
    EXPECT_EQ(geometry.ScrollToShow(6, 4), QPoint(100, 20));
    geometry.SetScroll(300, 400);
    EXPECT_EQ(geometry.ScrollToShow(3, 2), QPoint(0, 40));
    EXPECT_EQ(geometry.ScrollToShow(3, 1), QPoint(300, 40)); // locked: seen wherever the rest stands
    geometry.SetColumnWidth(4, 900);
    EXPECT_EQ(geometry.ScrollToShow(21, 4).x(), 200); // larger than its place: from its beginning
}

// At every scroll position each place of the viewport belongs to one column, and every column can be brought to sight.
TEST(CGridGeometry, AStickyColumnStopsAtTheLeftEdge) {
    for (const int locked : {0, 1, 2})
        for (const int sticky : {1, 3, 10}) {
            CGridGeometry geometry = Sample();
            geometry.SetLockedColumns(locked);
            geometry.SetStickyColumn(sticky);
            geometry.SetColumnWidth(5, 0);
            geometry.SetColumnWidth(7, 60);
            for (int scroll = 0; scroll <= geometry.MaxScrollX(); scroll += 7) {
                geometry.SetScroll(scroll, 0);
                for (int x = 0; x < 330; ++x) {
                    const int column = geometry.ColumnAt(x);
                    ASSERT_TRUE(geometry.VisibleCellRect(1, column).contains(x, 30)) << x << " at " << scroll;
                    ASSERT_TRUE(geometry.IsFixed(column) ||
                                (column >= geometry.FirstScrolledColumn() && column <= geometry.LastScrolledColumn()));
                }
                // The last column never scrolls out; two locked ones leave no room for a stuck one.
                const bool stuck = locked < 2 && sticky > locked && sticky < 10 && scroll > 100 * (sticky - 1 - locked);
                EXPECT_EQ(geometry.StuckColumn(), stuck ? sticky : 0) << scroll;
                EXPECT_TRUE(!stuck || geometry.ColumnLeft(sticky) == 30 + 100 * locked);
                for (int column = 1; column <= 10; ++column) {
                    if (geometry.ColumnWidth(column) == 0) continue;
                    CGridGeometry shown = geometry;
                    shown.SetScroll(geometry.ScrollToShow(1, column).x(), 0);
                    EXPECT_EQ(shown.VisibleCellRect(1, column).width(), geometry.ColumnWidth(column)) << column;
                }
            }
        }
}

// Against a plain list of the shown rows, for every row, place and step.
TEST(CGridGeometry, HiddenRowsTakeNoPlaceAndRowsKeepTheirNumbers) {
    const std::vector<std::vector<int>> kSets = {
        {}, {1}, {1, 2, 3}, {50}, {48, 49, 50, 51, 900}, {2, 3, 9, 10, 11, 30}, {0, 1, 5, 50}};
    for (const std::vector<int>& hidden : kSets) {
        CGridGeometry geometry = Sample();
        geometry.SetHiddenRows(hidden);
        std::vector<int> shown;
        for (int row = 1; row <= 50; ++row)
            if (std::find(hidden.begin(), hidden.end(), row) == hidden.end()) shown.push_back(row);
        const int count = static_cast<int>(shown.size());
        ASSERT_EQ(geometry.ShownRowCount(), count);
        EXPECT_EQ(geometry.MaxScrollY(), count * 20 - 100);
        for (const int scroll : {0, 30, 20 * count - 100}) {
            geometry.SetScroll(0, scroll);
            EXPECT_EQ(geometry.FirstVisibleRow(), shown[static_cast<size_t>(scroll / 20)]);
            EXPECT_EQ(geometry.LastVisibleRow(), shown[static_cast<size_t>((scroll + 99) / 20)]);
            for (int y = 24; y < 124; ++y)
                EXPECT_EQ(geometry.RowAt(y), shown[static_cast<size_t>((y - 24 + scroll) / 20)]);
            EXPECT_EQ(geometry.ContentBottom(), geometry.RowTop(shown.back()) + 20);
            EXPECT_EQ(geometry.RowTop(51), geometry.ContentBottom());
        }
        for (int row = 1; row <= 50; ++row) {
            const auto next = std::lower_bound(shown.begin(), shown.end(), row);
            const int index = static_cast<int>(next - shown.begin());
            const bool there = next != shown.end() && *next == row;
            EXPECT_EQ(geometry.IsRowHidden(row), !there);
            EXPECT_EQ(geometry.CellRect(row, 1).height(), there ? 20 : 0);
            EXPECT_EQ(geometry.CellRect(row, 1).top(), 24 + 20 * index - geometry.ScrollY());
            EXPECT_TRUE(there || geometry.VisibleCellRect(row, 1).isEmpty());
            EXPECT_EQ(std::min(geometry.NextShownRow(row), 51), next == shown.end() ? 51 : *next);
            for (const int steps : {-60, -3, -1, 0, 1, 3, 60}) {
                const int to = index + steps - (steps > 0 && !there ? 1 : 0);
                EXPECT_EQ(geometry.RowAway(row, steps), shown[static_cast<size_t>(std::clamp(to, 0, count - 1))]);
            }
        }
    }
}

TEST(CGridGeometry, HoldsAMillionRowsAndRefusesNonsense) {
    CGridGeometry geometry = Sample(3, 2'000'000'000);
    EXPECT_EQ(geometry.RowCount(), CGridGeometry::kMaxRows);
    geometry.SetScroll(0, geometry.MaxScrollY());
    EXPECT_EQ(geometry.LastVisibleRow(), CGridGeometry::kMaxRows);
    geometry.SetColumnWidth(2, 99999);
    geometry.SetColumnWidth(7, 10);
    geometry.SetColumnWidth(1, -5);
    EXPECT_EQ(geometry.ColumnWidth(2), CGridGeometry::kMaxColumnWidth);
    EXPECT_EQ(geometry.ColumnWidth(7), 0);
    EXPECT_EQ(geometry.ColumnWidth(1), 0);
}
