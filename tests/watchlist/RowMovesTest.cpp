// SPDX-License-Identifier: MIT
#include "watchlist/DocFixture.h"
#include "watchlist/document/RowList.h"
#include "watchlist/edit/ColumnMoves.h"

#include <random>
#include <set>

using namespace vx;
using namespace vx::test;

namespace {

using CRowMoves = CDocFixture;

} // namespace

TEST_F(CRowMoves, WhatWouldLeaveTheGridIsRefusedWhole) {
    Open("Symbols=IBM:1,100000,;\r\n");
    EXPECT_FALSE(doc.InsertRows(1, 1));
    EXPECT_FALSE(doc.InsertRows(0, 1));
    EXPECT_FALSE(doc.Update()->ReorderRows({0, 2, 2}));
    EXPECT_FALSE(doc.Update()->ReorderRows({0, 2, 3}));
    doc.MoveRows(1, 1, 200000);
    for (const int first : {-5, 0, -2147483647 - 1}) doc.MoveRows(first, 3, 5);
    EXPECT_EQ(doc.RowSymbol(1), "IBM");
    EXPECT_EQ(doc.RowSymbol(100000), "IBM");
    EXPECT_FALSE(doc.IsModified());
}

TEST_F(CRowMoves, ColumnsTakeFormatsSortColumnAndLockedOnesAlong) {
    doc.Update()->Columns().Clear();
    doc.Update()->SetColumnsByName("Symbol;Last;Bid;Ask;");
    const SCellFormat bold{.bold = true};
    doc.Update()->Formats().Set(1, 3, bold);
    doc.Update()->Options().sort = {3, true, true, 60000};
    doc.Update()->Options().lockedColumns = 2;
    const auto expect = [&](std::string_view names, int column, int locked) {
        EXPECT_EQ(doc.Columns().Names(), names);
        EXPECT_EQ(doc.Options().sort.column, column) << names;
        EXPECT_TRUE(column < 1 || doc.Formats().Effective(1, column).bold) << names;
        EXPECT_EQ(doc.Options().lockedColumns, locked) << names;
    };
    EXPECT_TRUE(InsertColumn(doc, 2, "% Chg"));
    EXPECT_EQ(doc.Formats().ColumnFormat(2).decimals, 2);
    expect("Symbol;% Chg;Last;Bid;Ask;", 4, 3);
    for (const char* refused : {"Last", "No Such", ""}) EXPECT_FALSE(InsertColumn(doc, 1, refused)) << refused;
    MoveColumn(doc, 4, 1);
    expect("Bid;Symbol;% Chg;Last;Ask;", 1, 3);
    MoveColumn(doc, 5, 1);
    expect("Ask;Bid;Symbol;% Chg;Last;", 2, 3);
    MoveColumn(doc, 1, 5);
    expect("Bid;Symbol;% Chg;Last;Ask;", 1, 3);
    RemoveColumn(doc, 2);
    expect("Bid;% Chg;Last;Ask;", 1, 2);
    RemoveColumn(doc, 9);
    RemoveColumn(doc, 0);
    RemoveColumn(doc, 1);
    expect("% Chg;Last;Ask;", SSortRecord::kNoColumn, 1);
    EXPECT_FALSE(doc.Options().sort.autoSort);
}

TEST(CRowList, HoldsWhatASetHoldsFromWhicheverEndItIsFilled) {
    std::mt19937 random(3);
    for (int round = 0; round < 9; ++round) {
        CRowList list;
        std::set<uint32_t> plain;
        for (uint32_t step = 0; step < 300; ++step) {
            const uint32_t any = random() % 400;
            const uint32_t row = round % 3 == 0 ? 400 - step : round % 3 == 1 ? step : any;
            ASSERT_EQ(list.Insert(row), plain.insert(row).second);
            ASSERT_EQ(list.Erase(any), plain.erase(any) == 1);
            if (step % 40 == 39) {
                std::set<uint32_t> moved;
                for (const uint32_t old : plain)
                    if (old % 7 != 0) moved.insert(1000 - old);
                plain = moved;
                list.Renumber([](int old) { return old % 7 == 0 ? 0 : 1000 - old; });
            }
            ASSERT_THAT(list, ElementsAreArray(plain));
        }
    }
}
