#include "watchlist/DocFixture.h"

using namespace vx;
using namespace vx::test;

namespace {

class CWatchlistFileTest : public CDocFixture {
protected:
    std::string ColumnsOf(std::string_view value) {
        Open("Columns=" + std::string(value) + "\r\n");
        std::string out;
        for (int i = 1; i < doc.Columns().Count(); ++i)
            out += doc.Columns().At(i).name + "=" + std::to_string(doc.Columns().At(i).width) + " ";
        return out;
    }
};

} // namespace

TEST_F(CWatchlistFileTest, ColumnsAreReadWithTheirWidths) {
    EXPECT_EQ(ColumnsOf(""), "Symbol=100 ");
    EXPECT_EQ(ColumnsOf(";Symbol:500;Last:605;"), "Symbol=50 Last=60 ");
    EXPECT_EQ(ColumnsOf("Last:5;"), "");
    EXPECT_EQ(ColumnsOf("Last:9;Bid:10;Ask:-50;"), "Bid=1 ");
    EXPECT_EQ(ColumnsOf("Last:999999999;No Such:1000;Last:700;"), "Last=70 No Such=100 ");
    ColumnsOf("RowNumbers:450;Last:1000;");
    EXPECT_EQ(doc.Columns().At(0).width, 45);
}

TEST_F(CWatchlistFileTest, OptionsAreReadAndKeptInBounds) {
    Open("Window=10;20;300;400;TRUE;FALSE\r\nTrailingRows=5000\r\nLockedColumns=-3\r\nShowRowNumbers=FALSE\r\n"
         "Sort=12;TRUE;FALSE;30\r\nNoEquals\r\nUnknown=1\r\nTrailingRows=2");
    EXPECT_EQ(shown.placement.left, 10);
    EXPECT_EQ(shown.placement.height, 400);
    EXPECT_TRUE(shown.placement.maximised);
    EXPECT_EQ(doc.Options().trailingRows, SWatchlistOptions::kMaxTrailingRows) << "a line without its end was applied";
    EXPECT_EQ(doc.Options().lockedColumns, 0);
    EXPECT_FALSE(doc.Options().showRowNumbers);
    EXPECT_TRUE(doc.Options().showToolBar) << "what a file lacks keeps its default";
    EXPECT_EQ(doc.Options().sort.column, 12);
    EXPECT_TRUE(doc.Options().sort.ascending);
    EXPECT_EQ(doc.Options().sort.intervalMs, 30000);
}

TEST_F(CWatchlistFileTest, BrokenListsGiveWhatCanBeRead) {
    Open("Symbols=IBM;:3,;MSFT:x,4,;A:1\r\nAnnotations=1;2:;x:#y;3:#a:b\r\n");
    EXPECT_EQ(doc.RowSymbol(4), "MSFT");
    EXPECT_EQ(doc.RowSymbol(1), "A");
    EXPECT_EQ(doc.AnnotationText(3), "a:b");
    EXPECT_EQ(doc.LastUsedRow(), 4);
    Open("\0\xff=\x80\r\n=\r\n\r\n");
    EXPECT_EQ(doc.LastUsedRow(), 0);
}

TEST(CRowTextMap, TextsMoveWithTheirRows) {
    CRowTable rows;
    CRowTextMap texts(rows);
    texts.Set(1, "#a");
    texts.Set(4, "#b");
    texts.Set(0, "#never");
    texts.ShiftDown(2, 3);
    EXPECT_EQ(texts.Serialise(), "1:#a;7:#b;");
    texts.ShiftUp(7, 1);
    EXPECT_EQ(texts.Serialise(), "1:#a;6:#b;");
    texts.ShiftUp(2, 1);
    EXPECT_EQ(texts.Serialise(), "5:#b;") << "the text of a deleted row";
    texts.Reorder({0, 1, 2, 3, 4, 2});
    EXPECT_EQ(texts.Serialise(), "2:#b;");
    texts.Set(2, "");
    EXPECT_EQ(texts.LastRow(), 0);
}
