// SPDX-License-Identifier: MIT
#include "data/catalogue/Catalogue.h"
#include "watchlist/document/CellFormatStore.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>

using namespace vx;

namespace {

const std::string kGrid = "0,0:-1,-1,32768,192,-1,0,0,0,Arial,FALSE,FALSE,9,Left,4,TRUE,;";

SCellFormat Decimals(int32_t decimals) {
    SCellFormat format;
    format.decimals = decimals;
    return format;
}

std::string Rewritten(std::string_view text) {
    CCellFormatStore store;
    store.Read(text);
    return store.Write();
}

/// A store with a record at each (row, column); the record's decimals say which.
CCellFormatStore StoreWith(std::initializer_list<std::pair<int, int>> cells) {
    CCellFormatStore store;
    int32_t decimals = 0;
    for (const auto& [row, column] : cells) store.Set(row, column, Decimals(decimals++));
    return store;
}

/// "row,column=decimals" of every record but the grid's.
std::string Places(const CCellFormatStore& store, int rows = 20, int columns = 20) {
    std::string out;
    for (int row = 0; row <= rows; ++row)
        for (int column = 0; column <= columns; ++column)
            if (const SCellFormat* format = store.Find(row, column); format && row + column > 0)
                out += fmt::format("{},{}={} ", row, column, format->decimals);
    return out;
}

} // namespace

TEST(CCellFormatStore, ACellLooksLikeItselfElseItsColumnElseTheGrid) {
    CCellFormatStore store;
    EXPECT_EQ(store.Effective(3, 5), SCellFormat{});
    store.Set(0, 0, Decimals(1));
    EXPECT_EQ(store.Effective(3, 5).decimals, 1);
    store.Set(0, 5, Decimals(2));
    EXPECT_EQ(store.Effective(3, 5).decimals, 2);
    EXPECT_EQ(store.Effective(3, 6).decimals, 1);
    store.Set(3, 5, Decimals(3));
    EXPECT_EQ(store.Effective(3, 5).decimals, 3);
    EXPECT_EQ(store.Decimals(3, 5, false), 3);
    EXPECT_EQ(store.Decimals(3, 5, true), 1) << "grid precision";
    store.Reset(3, 5);
    EXPECT_EQ(store.Effective(3, 5).decimals, 2);
    store.Reset(0, 0);
    EXPECT_EQ(store.GridFormat(), SCellFormat{});
}

TEST(CCellFormatStore, ANewColumnTakesTheDecimalsOfItsName) {
    CCellFormatStore store;
    store.Set(0, 0, Decimals(3));
    int column = 1;
    for (const auto& [name, decimals] :
         {std::pair{"% Chg", 2}, {"Last", 4}, {"VWAP", 3}, {"Symbol", 3}, {"ET Chg", 3}}) {
        store.SetNewColumn(column, name);
        EXPECT_EQ(store.Effective(7, column++).decimals, decimals) << name;
    }
    EXPECT_EQ(store.Size(), 2u) << "only what differs has a record";
    store.SetNewColumn(1, "Symbol");
    EXPECT_EQ(store.Effective(7, 1).decimals, 3) << "another column in the same place";
}

TEST(CCellFormatStore, DefaultAlignmentPutsNumbersRight) {
    CCellFormatStore store;
    SCellFormat centred;
    centred.alignment = ECellAlign::Center;
    store.Set(0, 1, centred);
    const auto expect = [&](std::initializer_list<const char*> names, ECellAlign byDefault) {
        for (const char* name : names) {
            EXPECT_EQ(store.Alignment(4, 1, FindField(name), true), byDefault) << name;
            EXPECT_EQ(store.Alignment(4, 1, FindField(name), false), ECellAlign::Center) << name;
        }
    };
    expect({"Last", "Volume", "Div Amt", "% Held"}, ECellAlign::Right);
    expect({"Symbol", "T Time", "Trade Aggressor", "no such column"}, ECellAlign::Left);
}

TEST(CCellFormatStore, WritesOnlyWhatDiffersFromTheDefault) {
    CCellFormatStore store;
    EXPECT_EQ(store.Write(), kGrid) << "the grid's record always stands there whole";

    SCellFormat column;
    column.textColour = 0xFF;
    column.fontFace = "Courier New";
    column.bold = true;
    store.Set(0, 5, column);
    store.Set(0, 6, SCellFormat{}); // Equals its default.
    SCellFormat cell = column;
    cell.bold = false;
    cell.italic = true;
    cell.alignment = ECellAlign::Right;
    cell.decimals = 9;
    cell.reserved = -7;
    store.Set(12, 5, cell);
    store.Set(11, 5, column);        // Equals its column.
    store.Set(11, 7, SCellFormat{}); // Equals the grid.
    store.Set(2, 0, SCellFormat{});  // Column 0 is written all the same.
    cell = {};
    cell.alignment = ECellAlign::Center;
    cell.fontSizePt = 12;
    cell.colourByDirection = false;
    store.Set(2, 6, cell);
    EXPECT_EQ(store.Write(), kGrid + "0,5:255,,,,,,,,Courier New,TRUE,,,,,,;"
                                     "2,0:,,,,,,,,,,,,,,,;"
                                     "2,6:,,,,,,,,,,,12,Center,,FALSE,;"
                                     "12,5:,,,,,,,-7,,FALSE,TRUE,,Right,6,,;");
    EXPECT_EQ(Rewritten(store.Write()), store.Write());
}

TEST(CCellFormatStore, ReadsLenientlyAndWritesBackWhatItUnderstood) {
    const struct {
        const char* text;
        std::string rewritten;
        size_t leftOut;
    } cases[] = {
        {"", kGrid, 0},
        {";;", kGrid, 0},
        {"3,5:,,,,,,,,,,,,,2,,;", kGrid + "3,5:,,,,,,,,,,,,,2,,;", 0},
        {"3,5:,,,,,,,,,,,,,2", kGrid + "3,5:,,,,,,,,,,,,,2,,;", 0},
        // Decimals stay between 0 and 6; the words and flags have one spelling.
        {"3,5:,,,,,,,,,,,,,7,,;3,6:,,,,,,,,,,,,,-1,,;", kGrid + "3,5:,,,,,,,,,,,,,6,,;3,6:,,,,,,,,,,,,,0,,;", 0},
        {"3,5:,,,,,,,,,TRUE,true,,center,,yes,;", kGrid + "3,5:,,,,,,,,,TRUE,,,,,FALSE,;", 0},
        {"3,5: 12z,x,,,,,,,,,,99999999999,,,,beyond,the,last;", kGrid + "3,5:12,0,,,,,,,,,,2147483647,,,,;", 0},
        // A record starts as its column's, once that has been read.
        {"0,5:,,,,,,,,,,,,,1,,;3,5:,,,,,,,,,,,,,1,,;4,5:8,,,,,,,,,,,,,,,;",
         kGrid + "0,5:,,,,,,,,,,,,,1,,;4,5:8,,,,,,,,,,,,,,,;", 0},
        {"4,5:8;0,5:,,,,,,,,,,,,,1,,;", kGrid + "0,5:,,,,,,,,,,,,,1,,;4,5:8,,,,,,,,,,,,,4,,;", 0},
        {"0,0:7;3,0:;", "0,0:7,-1,32768,192,-1,0,0,0,Arial,FALSE,FALSE,9,Left,4,TRUE,;3,0:,,,,,,,,,,,,,,,;", 0},
        // Places that no grid has.
        {"-1,5:8;3,-5:8;999999999,5:8;3,999999999:8;99999999999999,5:8;3;3,5;3:5,8;", kGrid, 8},
        {"x,y:8;", "0,0:8,-1,32768,192,-1,0,0,0,Arial,FALSE,FALSE,9,Left,4,TRUE,;", 0},
        {"100000,1000:8;100001,1:8;1,1001:8;", kGrid + "100000,1000:8,,,,,,,,,,,,,,,;", 2},
    };
    for (const auto& c : cases) {
        CCellFormatStore store = StoreWith({{1, 1}, {0, 3}}); // What was there is replaced.
        if (*c.text == '\0') store = {};
        EXPECT_EQ(store.Read(c.text), c.leftOut) << c.text;
        EXPECT_EQ(store.Write(), c.rewritten) << c.text;
    }
}

TEST(CCellFormatStore, AFontThatCannotBeWrittenIsRefused) {
    CCellFormatStore store;
    SCellFormat format;
    for (const std::string& face : {std::string{}, std::string("A,B"), std::string("A;B"), std::string("A\r\nB"),
                                    std::string(kMostFontFace + 1, 'A')}) {
        format.fontFace = face;
        EXPECT_FALSE(store.Set(1, 1, format)) << face;
    }
    store.Read("1,1:,,,,,,,," + std::string(5000, 'A') + ",;1,2:,,,,,,,,B\tC,;");
    EXPECT_EQ(store.Effective(1, 1).fontFace, std::string(kMostFontFace, 'A'));
    EXPECT_EQ(store.Effective(1, 2).fontFace, "Arial");
    format = {};
    format.fontSizePt = 1 << 30;
    EXPECT_EQ(ShownFontSize(format), 96);
    format.fontSizePt = -5;
    EXPECT_EQ(ShownFontSize(format), 4);
}

TEST(CCellFormatStore, FormatsMoveWithTheirColumns) {
    const auto expect = [](auto change, const char* places) {
        CCellFormatStore store = StoreWith({{0, 1}, {0, 3}, {2, 0}, {2, 1}, {2, 2}, {2, 3}});
        change(store);
        EXPECT_EQ(Places(store), places);
    };
    expect([](auto& s) { s.InsertColumn(2); }, "0,1=0 0,4=1 2,0=2 2,1=3 2,3=4 2,4=5 ");
    expect([](auto& s) { s.RemoveColumn(1); }, "0,2=1 2,0=2 2,1=4 2,2=5 ");
    expect([](auto& s) { s.MoveColumn(1, 3); }, "0,2=1 0,3=0 2,0=2 2,1=4 2,2=5 2,3=3 ");
    expect([](auto& s) { s.MoveColumn(3, 1); }, "0,1=1 0,2=0 2,0=2 2,1=5 2,2=3 2,3=4 ");
    const auto rowNumbers = [](auto& s) { s.MoveColumn(0, 2), s.RemoveColumn(0), s.InsertColumn(0); };
    expect(rowNumbers, "0,1=0 0,3=1 2,0=2 2,1=3 2,2=4 2,3=5 ");
}
