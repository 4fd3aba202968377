// SPDX-License-Identifier: MIT
#include "watchlist/DocFixture.h"
#include "watchlist/document/RowList.h"
#include "watchlist/edit/ColumnMoves.h"

#include <fmt/format.h>

#include <random>
#include <set>

using namespace vx;
using namespace vx::test;

namespace {

class CRowMoves : public CDocFixture {
protected:
    CRowMoves() { FeedIsReady(); }

    int Below(int limit) { return static_cast<int>(random() % static_cast<uint32_t>(limit)); }

    /// A symbol, a heading, a row with a note alone, a rejected symbol, and the first symbol again with a text shown.
    void Fill() {
        Open("Symbols=A:1,5,;BAD:4,;\r\nAnnotations=2:#Tech;\r\n");
        doc.SymbolNotFound("BAD");
        doc.Update()->ShowText(5, "shown text here");
        doc.Update()->KeepTyped(2, "typed");
        for (int row = 1; row <= 5; ++row) {
            SCellFormat format;
            format.decimals = row;
            doc.Update()->Formats().Set(row, 1, format);
            doc.Update()->Notes().Set(row, std::string(static_cast<size_t>(row), 'n'));
        }
    }
    /// All that belongs to a row.
    std::string Look(int row) const {
        const SCellFormat* format = doc.Formats().Find(row, 1);
        return fmt::format("{} {} {} {}", Row(row), doc.Notes().Get(row), doc.TypedText(row),
                           format ? format->decimals : 0);
    }

    std::mt19937 random{11};
};

} // namespace

TEST_F(CRowMoves, WhateverBelongsToARowGoesWithIt) {
    for (int round = 0; round < 100; ++round) {
        Fill();
        std::vector<std::string> looks{Look(6)};
        std::vector<uint32_t> ids{0};
        for (int row = 1; row <= 5; ++row) looks.push_back(Look(row)), ids.push_back(doc.RowId(row));
        std::vector<size_t> model{1, 2, 3, 4, 5}; // What is in the rows; 0 for an empty one.
        for (int step = 0; step < 4; ++step) {
            model.resize(40);
            const int first = 1 + Below(7), count = 1 + Below(3), end = std::min(first + count, doc.RowCount() + 1);
            const int action = Below(3), before = 1 + Below(doc.RowCount() + 1);
            const auto at = [&](int row) { return model.begin() + (row - 1); };
            if (action == 0) {
                ASSERT_TRUE(doc.InsertRows(first, count));
                model.insert(at(first), static_cast<size_t>(count), 0);
            } else if (action == 1) {
                doc.DeleteRows(first, count);
                model.erase(at(first), at(first + count));
            } else {
                doc.MoveRows(first, count, before);
                if (before < first && first < end) std::rotate(at(before), at(first), at(end));
                if (before > end) std::rotate(at(first), at(end), at(before));
            }
            std::vector<uint32_t> rowsOfA;
            for (int row = 1; row <= 30; ++row) {
                const size_t there = *at(row);
                ASSERT_EQ(Look(row), looks[there]) << "round " << round << " action " << action << " row " << row;
                ASSERT_TRUE(there == 0 || doc.RowOfId(ids[there]) == row);
                if (there == 1 || there == 5) rowsOfA.push_back(static_cast<uint32_t>(row));
            }
            ASSERT_EQ(doc.SymbolCount(), rowsOfA.empty() ? 0u : 1u);
            ASSERT_EQ(store.Size(), doc.SymbolCount());
            ASSERT_TRUE(rowsOfA.empty() || testing::Value(doc.Symbols().Find("A")->rows, ElementsAreArray(rowsOfA)));
        }
    }
}

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
    SCellFormat bold;
    bold.bold = true;
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
