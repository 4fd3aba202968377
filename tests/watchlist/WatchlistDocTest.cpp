// SPDX-License-Identifier: MIT
#include "support/Allocations.h"
#include "watchlist/DocFixture.h"
#include "watchlist/edit/CellEntry.h"

using namespace vx;
using namespace vx::test;

namespace {

class CWatchlistDocTest : public CDocFixture {
protected:
    void HeadlineFor(std::string_view symbols) {
        doc.OnNewsLine(fmt::format("N,SIM,1001,{},20240131 093000,Up, and away", symbols));
    }
    /// The rows that the view was told of at a repaint.
    std::vector<int> Repainted() {
        EXPECT_THAT(shown.TakeRows(), IsEmpty()) << "nothing before the repaint";
        doc.RepaintChangedRows();
        shown.pending = false;
        return shown.TakeRows();
    }
};

} // namespace

TEST_F(CWatchlistDocTest, ANewOneHasTheDefaultColumnsOneEmptyRowAndNothingOfTheOneBefore) {
    FeedIsReady();
    settings.WriteText(kMyWatchlists, folder.Path());
    doc.Update()->EnterSymbol(1, "IBM");
    doc.Update()->KeepTyped(1, "typed");
    HeadlineFor("IBM");
    SetOptions([](SWatchlistOptions& options) {
        options.sort = {3, false, true, 60000};
        options.trailingRows = 9;
    });
    doc.NewDocument();
    EXPECT_EQ(std::filesystem::current_path(), std::filesystem::canonical(folder.Path()));
    EXPECT_EQ(doc.Columns().Names(), kDefaultColumnList);
    EXPECT_EQ(doc.RowCount(), 1);
    EXPECT_EQ(shown.title + Rows() + std::string(doc.TypedText(1)), "");
    EXPECT_EQ(doc.Headlines().Size(), 0u);
    EXPECT_EQ(doc.Options().sort, SSortRecord{});
    EXPECT_FALSE(doc.IsModified());
    EXPECT_EQ(doc.Formats().ColumnFormat(doc.Columns().PositionOf("% Chg")).decimals, 2);
}

TEST_F(CWatchlistDocTest, ASymbolIsAskedForOnceAndLeftWithItsLastRow) {
    Open("Symbols=IBM:3,7,;MSFT:4,;IBM--NYS:9,;\r\n");
    EXPECT_THAT(feed.Take(), IsEmpty()) << "the feed was not ready";
    FeedIsReady();
    EXPECT_THAT(feed.Take(), ElementsAre("wIBM\n", "wMSFT\n", "S,REGON,IBM\n"));
    EXPECT_THAT(counts.Take(), ElementsAre("IBM:MSFT")) << "one request for all symbols";
    EXPECT_EQ(shown.Status(), "Symbols:  3");
    FeedIsReady();
    EXPECT_THAT(feed.Take(), ElementsAre("S,REGON,IBM\n")) << "a region is asked for at every ready line";
    EXPECT_THAT(counts.Take(), IsEmpty());
    doc.Update()->EmptyRow(9);
    doc.Update()->EmptyRow(3);
    EXPECT_THAT(feed.Take(), IsEmpty());
    doc.Update()->EmptyRow(7);
    EXPECT_THAT(feed.Take(), ElementsAre("rIBM\n"));
    EXPECT_THAT(shown.unwatched, ElementsAre("IBM--NYS", "IBM"));
    doc.CloseDocument();
    EXPECT_THAT(feed.Take(), ElementsAre("rMSFT\n"));
    EXPECT_EQ(doc.SymbolCount() + store.Size(), 0u);
}

TEST_F(CWatchlistDocTest, CommandLineSymbolsFillTheFirstRowsAndAreAnEditOverRowsInUse) {
    FeedIsReady();
    Open("Symbols=IBM:1,;\r\n");
    feed.Take();
    counts.Take();
    doc.PlaceCommandLineSymbols({"IBM", "AAPL", "IBM"});
    EXPECT_EQ(Rows(), "IBM|AAPL|IBM");
    EXPECT_THAT(feed.Take(), ElementsAre("wAAPL\n"));
    EXPECT_THAT(counts.Take(), ElementsAre("AAPL"));
    EXPECT_FALSE(doc.IsModified() || doc.Undo().CanUndo()) << "nothing was there";
    EnterCellText(doc, 1, 1, "old", "SPY");
    doc.Update()->SetAnnotation(2, "mine");
    doc.MarkSaved(); // Saved.
    doc.PlaceCommandLineSymbols({"IBM", "MSFT", "AAPL"});
    EXPECT_EQ(Rows(), "IBM|MSFT|AAPL");
    EXPECT_TRUE(doc.IsModified());
    doc.Undo().Undo();
    EXPECT_EQ(Rows(), "SPY|#mine|IBM");

    doc.NewDocument();
    EnterCellText(doc, 2, 1, "old", "SPY"); // While the feed was not ready yet.
    doc.PlaceCommandLineSymbols({"IBM", "MSFT"});
    EXPECT_TRUE(doc.IsModified());
    doc.Undo().Undo();
    EXPECT_EQ(Rows(), "|SPY");
}

TEST_F(CWatchlistDocTest, ARejectedSymbolLeavesItsMessageInItsRows) {
    FeedIsReady();
    Open("Symbols=NOPE:2,5,;IBM:3,;NOPE--NYS:6,;ERR_COMMA_SYMBOL:7,;GONE:8,;\r\n");
    feed.Take();
    shown.unwatched.clear();
    shown.TakeRows();
    doc.SymbolNotFound("NOPE");
    EXPECT_THAT(shown.TakeRows(), ElementsAre(2, 5, 6));
    EXPECT_THAT(shown.unwatched, ElementsAre("NOPE"));
    doc.SymbolNotFound(kCommaSymbol);
    std::string line = "Q,GONE,";
    FeedSays(line.append(62, ',') + "Not Found,");
    const std::string nope = "#\"NOPE\" is an Invalid or Unauthorized Symbol.";
    EXPECT_EQ(Rows(), "|" + nope + "|IBM||" + nope +
                          "|#\"NOPE--NYS\" is an Invalid or Unauthorized Symbol.|"
                          "#Symbols cannot contain commas.|#\"GONE\" is an Invalid or Unauthorized Symbol.");
    EXPECT_EQ(doc.RejectedSymbol(5), "NOPE");
    EXPECT_EQ(shown.Status(), "Symbols:  1");
    EXPECT_THAT(feed.Take(), IsEmpty());
}

TEST_F(CWatchlistDocTest, ARejectionCostsNothingForTheRegionsOfFormerLists) {
    std::string regions = "Symbols=";
    for (int row = 1; row <= 1000; ++row) regions += fmt::format("IBM--A-REGION-WITH-A-LONG-NAME-{}:{},;", row, row);
    Open(regions + "\r\n");
    Open("Symbols=IBM:1,;\r\n");
    const size_t before = Allocations();
    doc.SymbolNotFound("IBM");
    EXPECT_LT(Allocations() - before, 500u);
}

TEST_F(CWatchlistDocTest, AlertsAreJudgedOnWhatComesWhileTheirSymbolIsWatched) {
    FeedIsReady();
    AddAlert("IBM", {.enabled = 1, .value = 10, .fieldId = FieldIndex("Bid") - 1, .condition = 2, .soundFile = {}});
    doc.Update()->EnterSymbol(1, "IBM");
    doc.Update()->EmptyRow(1);
    FeedSets("IBM", "Bid", "99");
    doc.Update()->EnterSymbol(1, "IBM");
    doc.OnPaintMessage();
    EXPECT_EQ(doc.Alerts().ArmedCount("IBM"), 1) << "an old price fired it";
    FeedSets("IBM", "Bid", "9");
    store.OnLevel1Message("Q,IBM,,,,,,,11,");
    FeedSets("IBM", "Bid", "9"); // In one burst.
    EXPECT_EQ(doc.Alerts().ArmedCount("IBM"), 0);
}

TEST_F(CWatchlistDocTest, UpdatesAndHeadlinesReachTheRowsOfTheirSymbolsAtTheNextRepaint) {
    FeedIsReady();
    Open("Symbols=IBM:3,7,;MSFT:4,;\r\n");
    doc.OnPaintMessage();
    doc.RepaintChangedRows();
    shown.TakeRows();
    shown.pending = false;
    const int messages = shown.paintMessages;
    for (const char* line : {"Q,IBM,,1.5,", "Q,IBM,,1.6,", "Q,MSFTX,,1.6,"}) store.OnLevel1Message(line);
    EXPECT_EQ(shown.paintMessages, messages) << "nothing is urgent";
    EXPECT_TRUE(shown.pending);
    EXPECT_THAT(Repainted(), UnorderedElementsAre(3, 7));
    EXPECT_THAT(Repainted(), IsEmpty());
    HeadlineFor("NONE:IBM");
    EXPECT_TRUE(shown.pending);
    EXPECT_THAT(Repainted(), UnorderedElementsAre(3, 7));
    const int rebuilds = shown.rebuilds;
    doc.OnNewsCounts("<NewsCounts><symbol Name=\"IBM\" StoryCount=\"3\"/></NewsCounts>");
    EXPECT_GT(shown.rebuilds, rebuilds) << "the counts were not shown";
    HeadlineFor("NONE");
    doc.OnNewsLine("N,broken");
    EXPECT_FALSE(shown.pending);
    doc.DeleteRows(1, 9);
    doc.Update()->EnterSymbol(1, "IBM");
    EXPECT_EQ(doc.News().GetFresh("IBM"), 0u) << "a symbol that comes back counts anew";
}

TEST_F(CWatchlistDocTest, ADocumentThatGoesTakesItsListenerOffTheStore) {
    FeedIsReady();
    {
        CWatchlistDoc second(store, settings, shown);
        second.Update()->PlaceSymbol(1, "TMP");
        second.WatchSymbol("TMP");
    }
    store.OnLevel1Message("Q,TMP,,1.0,");
    EXPECT_EQ(store.FindSymbol("TMP") && store.FindSymbol("TMP")->HasListeners(), false);
}
