#include "watchlist/DocFixture.h"
#include "watchlist/document/RowList.h"
#include "watchlist/edit/ColumnMoves.h"

#include <map>
#include <random>
#include <set>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

/// What belongs to one row, kept in the plainest way.
struct SModelRow {
    std::string content, note, rejected;
    int decimals = 0; ///< Of the row's cell in column 1; 0 for no format.
    uint32_t id = 0;

    bool operator==(const SModelRow&) const = default;
};

class CRowMoves : public CDocFixture {
protected:
    CRowMoves() { FeedIsReady(); }

    int Below(int limit) { return static_cast<int>(random() % static_cast<uint32_t>(limit)); }

    void Fill(int rows) {
        for (int row = 1; row <= rows; ++row) {
            switch (Below(5)) {
            case 0:
                doc.Update()->SetAnnotation(row, "text " + std::to_string(row));
                break;
            case 1:
                break;
            case 2:
                doc.Update()->EnterSymbol(row, "BAD" + std::to_string(Below(4)));
                break;
            default:
                doc.Update()->EnterSymbol(row, "S" + std::to_string(Below(6)));
            }
            if (Below(3) == 0) doc.Update()->Notes().Set(row, "note " + std::to_string(row));
            SCellFormat format;
            format.decimals = 1 + Below(6);
            if (Below(3) == 0) doc.Update()->Formats().Set(row, 1, format);
            if (doc.RowKind(row) == ERowKind::Symbol && Below(3) == 0) doc.Update()->ShowText(row, "shown text here");
        }
        for (const char* bad : {"BAD0", "BAD1", "BAD2"}) doc.SymbolNotFound(bad);
    }

    SModelRow Look(int row) {
        const SCellFormat* format = doc.Formats().Find(row, 1);
        return {Row(row), std::string(doc.Notes().Get(row)),
                std::string(doc.RejectedSymbol(row)), format ? format->decimals : 0,
                doc.RowId(row)};
    }
    std::vector<SModelRow> LookAt(int rows) {
        std::vector<SModelRow> out;
        for (int row = 1; row <= rows; ++row) out.push_back(Look(row));
        return out;
    }

    /// Symbol map, rejected symbols and watched symbols say the same as the rows.
    void ExpectBookkeeping(int rows) {
        std::map<std::string, std::vector<uint32_t>> symbols, rejected;
        for (int row = 1; row <= rows; ++row) {
            if (!doc.RowSymbol(row).empty())
                symbols[std::string(doc.RowSymbol(row))].push_back(static_cast<uint32_t>(row));
            const std::string_view bad = doc.RejectedSymbol(row);
            if (!bad.empty()) rejected[std::string(bad)].push_back(static_cast<uint32_t>(row));
        }
        ASSERT_EQ(doc.SymbolCount(), symbols.size());
        ASSERT_EQ(store.Size(), symbols.size());
        for (const auto& [symbol, there] : symbols) {
            ASSERT_TRUE(doc.Symbols().Find(symbol)) << symbol;
            ASSERT_THAT(doc.Symbols().Find(symbol)->rows, testing::ElementsAreArray(there)) << symbol;
            ASSERT_TRUE(doc.WatchTable().Has(symbol)) << symbol;
        }
        for (const auto& [symbol, there] : doc.InvalidSymbols())
            ASSERT_THAT(there, testing::ElementsAreArray(rejected[symbol])) << symbol;
    }

    std::mt19937 random{11};
};

} // namespace

TEST_F(CRowMoves, WhateverBelongsToARowGoesWithIt) {
    constexpr int kRows = 40;
    for (int round = 0; round < 60; ++round) {
        doc.NewDocument();
        Fill(kRows);
        for (int step = 0; step < 4; ++step) {
            const int used = doc.LastUsedRow();
            std::vector<SModelRow> model = LookAt(kRows + 20);
            const int first = 1 + Below(used + 1);
            const int count = 1 + Below(5);
            const auto at = [&](int row) { return model.begin() + (row - 1); };
            const int action = Below(3);
            if (action == 0) {
                ASSERT_TRUE(doc.InsertRows(first, count));
                model.insert(at(first), static_cast<size_t>(count), {});
            } else if (action == 1) {
                doc.DeleteRows(first, count);
                model.erase(at(first), at(first + count));
            } else {
                const int end = std::min(first + count, doc.RowCount() + 1);
                const int before = 1 + Below(doc.RowCount() + 1);
                doc.MoveRows(first, count, before);
                if (before < first) std::rotate(at(before), at(first), at(end));
                if (before > end) std::rotate(at(first), at(end), at(before));
            }
            model.resize(kRows);
            std::vector<SModelRow> found = LookAt(kRows);
            for (size_t i = 0; i < model.size(); ++i)
                if (model[i].id == 0) found[i].id = 0; // Rows that came in have new numbers.
            const int last = std::max({doc.LastUsedRow(), doc.Notes().LastRow(), doc.Formats().LastRow()});
            for (size_t i = static_cast<size_t>(last); i < model.size(); ++i)
                model[i].id = found[i].id = 0; // Below them, one empty row is as good as another.
            for (size_t i = 0; i < model.size(); ++i)
                ASSERT_TRUE(model[i] == found[i]) << "round " << round << " action " << action << " row " << i + 1
                                                  << ": " << found[i].content << " for " << model[i].content;
            ExpectBookkeeping(doc.LastUsedRow());
        }
    }
}

TEST_F(CRowMoves, DeletingTheLastRowOfASymbolUnwatchesItAndOthersStay) {
    Open("Symbols=IBM:1,4,;MSFT:2,;AAPL:3,;\r\n");
    feed.Take();
    doc.DeleteRows(1, 2);
    EXPECT_THAT(feed.Take(), ElementsAre("rMSFT\n"));
    EXPECT_EQ(Rows(), "AAPL|IBM");
    EXPECT_EQ(shown.Status(), "Symbols:  2");
    doc.DeleteRows(1, 2147483647);
    EXPECT_THAT(feed.Take(), UnorderedElementsAre("rAAPL\n", "rIBM\n"));
    EXPECT_EQ(doc.RowCount(), 1);
}

TEST_F(CRowMoves, InsertedEmptyRowsBelowTheLastUsedOneAreShown) {
    doc.Update()->EnterSymbol(1, "IBM");
    ASSERT_EQ(doc.RowCount(), 2);
    doc.InsertRows(2, 5);
    EXPECT_EQ(doc.RowCount(), 7);
    doc.InsertRows(1, 1);
    EXPECT_EQ(doc.RowCount(), 8);
    doc.DeleteRows(3, 100);
    EXPECT_EQ(doc.RowCount(), 3);
}

TEST_F(CRowMoves, WhatWouldLeaveTheGridIsRefusedWhole) {
    Open("Symbols=IBM:1,100000,;\r\n");
    EXPECT_FALSE(doc.InsertRows(1, 1));
    EXPECT_FALSE(doc.InsertRows(0, 1));
    EXPECT_FALSE(doc.InsertRows(1, 0));
    EXPECT_FALSE(doc.Update()->ReorderRows({0, 2, 2}));
    EXPECT_FALSE(doc.Update()->ReorderRows({0, 2, 3}));
    doc.MoveRows(1, 1, 200000);
    for (const int first : {-5, 0, -2147483647 - 1}) doc.MoveRows(first, 3, 5);
    EXPECT_EQ(doc.RowSymbol(1), "IBM");
    EXPECT_EQ(doc.RowSymbol(100000), "IBM");
    EXPECT_FALSE(doc.IsModified());
    doc.DeleteRows(1, 1);
    EXPECT_TRUE(doc.InsertRows(1, 1));
    EXPECT_EQ(doc.RowSymbol(100000), "IBM");
}

TEST_F(CRowMoves, ARowIsFoundAgainByItsNumber) {
    Open("Symbols=A:1,;B:2,;C:3,;\r\n");
    const uint32_t id = doc.RowId(1);
    doc.MoveRows(1, 1, 4);
    EXPECT_EQ(Rows(), "B|C|A");
    EXPECT_EQ(doc.RowOfId(id), 3);
    doc.DeleteRows(3, 1);
    EXPECT_EQ(doc.RowOfId(id), 0);
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
    for (const char* refused : {"Last", "No Such", " ", ""}) EXPECT_FALSE(InsertColumn(doc, 1, refused)) << refused;
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
    EXPECT_EQ(doc.Options().sort.intervalMs, SSortRecord::kDefaultIntervalMs);
}

TEST(CRowList, HoldsWhatASetHoldsFromWhicheverEndItIsFilled) {
    std::mt19937 random(3);
    for (int round = 0; round < 30; ++round) {
        CRowList list;
        std::set<uint32_t> plain;
        for (uint32_t step = 0; step < 300; ++step) {
            const uint32_t any = random() % 400;
            const uint32_t row = round % 3 == 0 ? 400 - step : round % 3 == 1 ? step : any;
            ASSERT_EQ(list.Insert(row), plain.insert(row).second);
            ASSERT_EQ(list.Erase(any), plain.erase(any) == 1);
            if (step % 40 == 39) {
                const auto newRow = [&](int old) { return old % 7 == 0 ? 0 : 1000 - old; };
                std::set<uint32_t> moved;
                for (const uint32_t old : plain)
                    if (old % 7 != 0) moved.insert(1000 - old);
                plain = moved;
                list.Renumber(newRow);
            }
            ASSERT_THAT(list, testing::ElementsAreArray(plain));
        }
    }
}
