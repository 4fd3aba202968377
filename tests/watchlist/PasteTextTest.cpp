// SPDX-License-Identifier: MIT
#include "watchlist/edit/PasteText.h"
#include "watchlist/DocFixture.h"
#include "watchlist/edit/ColumnMoves.h"

using namespace vx;
using namespace vx::test;

namespace {

/// Columns 1 Symbol, 2 Last, 3 Bid (hidden), 4 Notes.
class CPasteText : public CDocFixture {
protected:
    CPasteText() {
        FeedIsReady();
        UseColumns("Symbol;Last;Bid;Notes;");
        SetWidth(3, 0);
        EnterAll({"IBM", "MSFT"});
        FeedSets("IBM", "Last", "12.5");
        doc.Update()->SetAnnotation(3, "Banks");
        doc.Update()->EnterSymbol(5, "GE");
        SetNote(1, "first line\r\nsecond");
        doc.MarkSaved();
        feed.Take();
        counts.Take();
    }
    SPasteResult Paste(int row, std::string_view text, int column = 1) { return PasteText(doc, row, column, text); }

    static constexpr const char* kBoard = "IBM|MSFT|#Banks||GE";
};

} // namespace

TEST_F(CPasteText, CopiesWhatTheBoardShows) {
    EXPECT_EQ(CopyText(doc, {1, 5, 1, 4}), "IBM\t12.5000\tfirst line\r\nMSFT\t\t\r\nBanks\r\n\t\t\r\nGE\t\t\r\n");
    EXPECT_EQ(CopyText(doc, {2, 99, 1, 1}, EAnnotationMarks::Yes), "MSFT\r\n#Banks\r\n\r\nGE\r\n");
    EXPECT_EQ(CopyText(doc, {1, 1, 3, 99}), "first line\r\n");
}

TEST_F(CPasteText, SaysWhatWasThereAlreadyAndWhatWasLeftOut) {
    const struct {
        const char *text, *rows, *summary;
    } cases[] = {
        {"T\nF\n", "T|F", ""},
        {"ibm\nIBM\nT\nge\n#GE\n", "IBM|IBM|T|GE|#GE", "Pasted 5 rows; 2 symbols were in the list already"},
        {"IBM\n\nT,F\n", "IBM||ERR_COMMA_SYMBOL",
         "Pasted 2 rows; 1 symbol was in the list already; 1 line holds commas (F2 there brings the text back)"},
        {"User: me\nT\nWatchList, \tof old cars that no one has driven\n===\n", "T",
         "Pasted 1 row; 2 lines were left out: \"User: me\", ..."},
        {"T\t1\n\t2 3\n\t\nF\t3\n", "T|||F", "Pasted 2 rows; 1 line was left out: \" 2 3\""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Paste(11, c.text).summary, c.summary) << c.text;
        EXPECT_EQ(Rows(), fmt::format("{}||||||{}", kBoard, c.rows)) << c.text;
        doc.Undo().Undo();
    }
    EXPECT_EQ(Paste(11, "#" + std::string(300, 'x')).summary, "Pasted 1 row; 1 heading was cut to 255 characters");
    EXPECT_EQ(Paste(11, "My WatchList\n---\n").message,
              "There is no symbol in the text that could be pasted: \"My WatchList\"");
    // What does not fit.
    const SPasteResult result = Paste(CRowTable::kMaxRow - 1, "A\nB\nC\nD\n\n");
    EXPECT_EQ(result.message, "2 lines were left out: a watchlist has at most 100000 rows.");
    EXPECT_EQ(doc.RowSymbol(CRowTable::kMaxRow), "B");
    const SPasteResult large = Paste(1, std::string(kMostPastedBytes + 1, 'x'));
    EXPECT_EQ(large.outcome, EPasteOutcome::TooLarge);
    EXPECT_EQ(large.message, "The text on the clipboard is too large to be pasted: 4.0 MB, at most 4 MB.");
    EXPECT_EQ(Row(1), "IBM");
}

TEST_F(CPasteText, FillsRowsFromTheFocusOn) {
    const struct {
        int row, column;
        const char *text, *rows;
    } cases[] = {
        {6, 1, "aapl\r\nBrK A\n\rbuy at open\n#note\n", "IBM|MSFT|#Banks||GE|AAPL|BrK A||#buy at open|#note"},
        {1, 2, "nvda\namd\nintc", "NVDA|AMD|INTC||GE"},
        {1, 1, "\n\ncsco\n \n", "IBM|MSFT|CSCO||GE"},
        {6, 1, "T\t20.00\tx\r\nCars\r\nbuy at open\nF\t10.00\t\r\n", "IBM|MSFT|#Banks||GE|T|Cars|#buy at open|F"},
        {6, 2, "20.00\tx\r\n", "IBM|MSFT|#Banks||GE|20.00"},
    };
    for (const auto& c : cases) {
        Paste(c.row, c.text, c.column);
        EXPECT_EQ(Rows(), c.rows) << c.text;
        EXPECT_TRUE(boxes.shown.empty());
        doc.Undo().Undo();
        EXPECT_EQ(Rows(), kBoard) << c.text;
    }
}

TEST_F(CPasteText, WhatABoardCopiedComesBackInWhateverColumnsAndHeadings) {
    MoveColumn(doc, 1, 4); // Last, Bid (hidden), Notes, Symbol
    const std::string copied = CopyText(doc, {1, 5, 1, 4});
    EXPECT_EQ(copied, "12.5000\tfirst line\tIBM\r\n\t\tMSFT\r\nBanks\r\n\t\t\r\n\t\tGE\r\n");
    Paste(6, copied, 4);
    EXPECT_EQ(Rows(), "IBM|MSFT|#Banks||GE|IBM|MSFT|Banks||GE") << "a text without marks tells no heading";
    EXPECT_THAT(feed.Take(), ElementsAre("wBanks\n")) << "all others are watched already";
    Paste(11, CopyText(doc, {1, 2, 3, 4}), 3);
    EXPECT_EQ(Row(11) + Row(12), "IBMMSFT");
    doc.Update()->SetAnnotation(4, "##Tech, and a REALTIME WatchList");
    PasteText(doc, 6, 1, CopyText(doc, {3, 5, 1, 4}, EAnnotationMarks::Yes), EAnnotationMarks::Yes);
    EXPECT_EQ(Row(6) + Row(7) + Row(8), "#Banks##Tech, and a REALTIME WatchListGE");
}

TEST_F(CPasteText, APasteIsOneStepAndTheFeedIsAskedOnce) {
    const SPasteResult result = Paste(1, "A\nB\nIBM\nA\n");
    EXPECT_EQ(std::pair(result.firstRow, result.lastRow), std::pair(1, 4));
    EXPECT_EQ(Rows(), "A|B|IBM|A|GE");
    EXPECT_EQ(doc.Undo().UndoName(), "paste 4 rows");
    EXPECT_THAT(feed.Take(), UnorderedElementsAre("wA\n", "wB\n", "rMSFT\n")) << "IBM only moved";
    EXPECT_THAT(counts.Take(), ElementsAre("A:B"));
    doc.Undo().Undo();
    EXPECT_THAT(feed.Take(), UnorderedElementsAre("wMSFT\n", "rA\n", "rB\n"));
}

TEST_F(CPasteText, ASymbolThatLeftItsRowAndWasRejectedMeanwhileIsAskedForAgain) {
    std::string text = "T\r\nMSFT\r\nBanks\r\n\r\n";
    for (int i = 0; i < 20000; ++i) text += fmt::format("S{}\r\n", i);
    bool rejected = false;
    PasteText(doc, 1, 1, text + "IBM\r\n", EAnnotationMarks::No, [&](size_t, size_t) {
        if (!std::exchange(rejected, true)) doc.SymbolNotFound("IBM");
        return true;
    });
    EXPECT_EQ(doc.RowSymbol(20005), "IBM");
    EXPECT_THAT(feed.Take(), testing::Contains("wIBM\n"));
}

TEST_F(CPasteText, ALongPasteLeavesNothingWhenCancelled) {
    std::string text;
    for (int i = 0; i < 20000; ++i) text += fmt::format("S{}\r\n", i);
    const SPasteResult cancelled = PasteText(doc, 1, 1, text, EAnnotationMarks::No, [&](size_t done, size_t total) {
        EXPECT_EQ(total, 20000U);
        if (done > 5000) doc.SymbolNotFound("S7"); // The feed may speak meanwhile.
        return done < 10000;
    });
    EXPECT_EQ(cancelled.outcome, EPasteOutcome::Cancelled);
    EXPECT_EQ(Rows(), kBoard);
    EXPECT_EQ(store.Size(), 3U);
    EXPECT_FALSE(doc.IsModified());
    const SPasteResult closed = PasteText(doc, 1, 1, text, EAnnotationMarks::No, [&](size_t, size_t) {
        if (doc.LastUsedRow() > 10) doc.NewDocument();
        return true;
    });
    EXPECT_EQ(closed.outcome, EPasteOutcome::Cancelled);
    EXPECT_EQ(store.Size(), 0U);
}

TEST_F(CPasteText, ARangeIsClearedCellByCellInOneStep) {
    const SCellFormat bold{.bold = true};
    SetFormat(2, 2, bold);
    EXPECT_EQ(ClearRange(doc, {1, 5, 2, 2}), 3) << "a note, a format and, as its only text, an annotation";
    EXPECT_EQ(Rows(), "IBM|MSFT|||GE");
    EXPECT_FALSE(doc.Notes().Has(1));
    EXPECT_FALSE(doc.Formats().Find(2, 2));
    doc.Undo().Undo();
    EXPECT_EQ(Rows(), kBoard);
    EXPECT_EQ(ClearRange(doc, {1, 2, 1, 1}), 2);
    EXPECT_EQ(Rows(), "||#Banks||GE");
    EXPECT_TRUE(doc.Notes().Has(1)) << "of the row, not of the symbol";
    EXPECT_EQ(ClearRange(doc, {1, 5, 3, 3}), 0) << "hidden";
}
