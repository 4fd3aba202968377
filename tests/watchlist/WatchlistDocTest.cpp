#include "watchlist/DocFixture.h"

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {
using CWatchlistDocTest = CDocFixture;
}

TEST_F(CWatchlistDocTest, ANewOneHasTheDefaultColumnsOneEmptyRowAndNoTitle) {
    EXPECT_EQ(
        doc.Columns().Names(),
        "Symbol;Tick Trend;News;Latest Headline;Change;% Chg;Last;Volume;Bid;Ask;B Size;A Size;High;Low;T Time;Delay;");
    EXPECT_EQ(doc.RowCount(), 1);
    EXPECT_EQ(shown.title, "");
    EXPECT_THAT(shown.statuses, testing::Contains("Creating New Document"));
    EXPECT_EQ(shown.Status(), "Ready");
    EXPECT_FALSE(doc.IsModified());
}

TEST_F(CWatchlistDocTest, ASymbolIsAskedForOnceHoweverManyRowsItStandsIn) {
    Open("Symbols=IBM:3,7,;MSFT:4,;\r\n");
    EXPECT_THAT(feed.Take(), IsEmpty()) << "the feed was not ready";
    FeedIsReady();
    EXPECT_THAT(feed.Take(), UnorderedElementsAre("wIBM\n", "wMSFT\n"));
    EXPECT_EQ(shown.Status(), "Symbols:  2");
    EXPECT_EQ(doc.RowCount(), 8);
    FeedIsReady();
    EXPECT_THAT(feed.Take(), IsEmpty()) << "a second ready line asked again";
}

TEST_F(CWatchlistDocTest, SymbolsAreWatchedAndNewsAskedForFromTheFirstRowToTheLast) {
    constexpr int kRows = 40; // One less than a prime: each multiple of 17 is another remainder.
    std::string text = "Symbols=";
    std::vector<std::string> watched(kRows);
    std::vector<std::string> named(kRows);
    for (int i = 1; i <= kRows; ++i) {
        const int row = i * 17 % (kRows + 1);
        text += "S" + std::to_string(i) + ":" + std::to_string(row) + "," + std::to_string(200 - row) + ",;";
        named[static_cast<size_t>(row) - 1] = "S" + std::to_string(i);
        watched[static_cast<size_t>(row) - 1] = "wS" + std::to_string(i) + "\n";
    }
    Open(text + "\r\n");
    FeedIsReady();
    EXPECT_EQ(feed.Take(), watched);
    std::string list;
    for (const std::string& symbol : named) list += (list.empty() ? "" : ":") + symbol;
    EXPECT_THAT(counts.Take(), ElementsAre(list));
}

TEST_F(CWatchlistDocTest, OnlyTheLastRowOfASymbolUnwatchesIt) {
    FeedIsReady();
    Open("Symbols=IBM:3,7,;MSFT:4,;\r\n");
    feed.Take();
    doc.Update()->EmptyRow(3);
    EXPECT_THAT(feed.Take(), IsEmpty());
    EXPECT_EQ(shown.Status(), "Symbols:  2");
    doc.Update()->EmptyRow(7);
    EXPECT_THAT(feed.Take(), ElementsAre("rIBM\n"));
    EXPECT_THAT(shown.unwatched, ElementsAre("IBM"));
    EXPECT_EQ(shown.Status(), "Symbols:  1");
    doc.CloseDocument();
    EXPECT_THAT(feed.Take(), ElementsAre("rMSFT\n"));
    EXPECT_EQ(shown.Status(), "Symbols:  0");
    EXPECT_EQ(doc.SymbolCount(), 0u);
    EXPECT_EQ(store.Size(), 0u);
}

TEST_F(CWatchlistDocTest, CommandLineSymbolsFillTheFirstRowsAndLeaveWhatIsThere) {
    FeedIsReady();
    Open("Symbols=IBM:1,;MSFT:2,;\r\n");
    feed.Take();
    doc.PlaceCommandLineSymbols({"IBM", "AAPL", "IBM"});
    EXPECT_EQ(doc.RowSymbol(1), "IBM");
    EXPECT_EQ(doc.RowSymbol(2), "AAPL");
    EXPECT_EQ(doc.RowSymbol(3), "IBM");
    EXPECT_THAT(feed.Take(), ElementsAre("rMSFT\n", "wAAPL\n"));
    EXPECT_EQ(doc.RowCount(), 6);
    doc.PlaceCommandLineSymbols({"IBM", "AAPL", "IBM"});
    EXPECT_THAT(feed.Take(), IsEmpty());
}

TEST_F(CWatchlistDocTest, CommandLineSymbolsOverRowsInUseAreOneEditThatTheStatusBarTells) {
    FeedIsReady();
    doc.PlaceCommandLineSymbols({"IBM", "MSFT", "AAPL"});
    EXPECT_FALSE(doc.IsModified() || doc.Undo().CanUndo()) << "nothing was there";
    doc.Edit("edit", [](CWatchlistEdit& edit) {
        edit.EnterSymbol(1, "SPY");
        edit.SetAnnotation(2, "mine");
        edit.EmptyRow(3);
    });
    doc.MarkSaved(); // Saved.
    doc.PlaceCommandLineSymbols({"IBM", "MSFT", "AAPL"});
    EXPECT_EQ(Rows(), "IBM|MSFT|AAPL");
    EXPECT_TRUE(doc.IsModified());
    EXPECT_THAT(shown.Status(), testing::HasSubstr("symbols of the command line took the place of rows"));
    EXPECT_EQ(doc.Undo().UndoName(), "place command-line symbols");
    doc.Undo().Undo();
    EXPECT_EQ(Rows(), "SPY|#mine");
    EXPECT_FALSE(doc.IsModified());

    doc.NewDocument();
    doc.Edit("edit", [](CWatchlistEdit& edit) { edit.EnterSymbol(2, "SPY"); }); // Before the feed was ready.
    doc.PlaceCommandLineSymbols({"IBM", "MSFT"});
    EXPECT_TRUE(doc.IsModified());
    doc.Undo().Undo();
    EXPECT_EQ(Rows(), "|SPY");
}

TEST_F(CWatchlistDocTest, ARejectedSymbolLeavesItsMessageInItsRows) {
    FeedIsReady();
    Open("Symbols=NOPE:2,5,;IBM:3,;\r\n");
    feed.Take();
    shown.TakeRows();
    doc.SymbolNotFound("NOPE");
    EXPECT_THAT(shown.TakeRows(), ElementsAre(2, 5));
    EXPECT_EQ(doc.RowKind(2), ERowKind::Annotation);
    EXPECT_EQ(doc.AnnotationText(5), "\"NOPE\" is an Invalid or Unauthorized Symbol.");
    EXPECT_TRUE(doc.InvalidSymbols().Has("NOPE"));
    EXPECT_EQ(doc.RejectedSymbol(5), "NOPE");
    EXPECT_EQ(shown.Status(), "Symbols:  1");
    EXPECT_THAT(feed.Take(), IsEmpty());

    doc.SymbolNotFound("NEVER");
    EXPECT_FALSE(doc.InvalidSymbols().Has("NEVER"));
    doc.Update()->PlaceSymbol(5, "IBM");
    EXPECT_EQ(doc.RejectedSymbol(5), "");
    EXPECT_EQ(doc.RowKind(5), ERowKind::Symbol);
}

TEST_F(CWatchlistDocTest, ARecordThatReadsNotFoundIsRejectedLikeTheFeedsOwnLine) {
    FeedIsReady();
    Place(1, "GONE");
    std::string line = "Q,GONE,";
    line.append(62, ',');
    FeedSays(line + "Not Found,");
    EXPECT_EQ(doc.AnnotationText(1), "\"GONE\" is an Invalid or Unauthorized Symbol.");
    EXPECT_EQ(doc.SymbolCount(), 0u);
}

TEST_F(CWatchlistDocTest, ARejectedSymbolTakesItsRegionsRowsWithIt) {
    Open("Symbols=GONE--NYS:1,;IBM:2,;\r\n");
    FeedIsReady();
    doc.SymbolNotFound("GONE");
    EXPECT_EQ(doc.AnnotationText(1), "\"GONE--NYS\" is an Invalid or Unauthorized Symbol.");
    EXPECT_EQ(shown.Status(), "Symbols:  1");
}

TEST_F(CWatchlistDocTest, WhatCameWhileNobodyWatchedFiresNoAlert) {
    FeedIsReady();
    A_INFO alert;
    alert.enabled = 1;
    alert.fieldId = FieldIndex("Bid") - 1;
    alert.condition = 2;
    alert.value = 10;
    doc.AlertRules().Add("IBM", alert);
    Place(1, "IBM");
    doc.Update()->EmptyRow(1);
    store.OnLevel1Message("Q,IBM,,,,,,,99,");
    Place(1, "IBM");
    doc.OnPaintMessage();
    EXPECT_EQ(doc.Alerts().ArmedCount("IBM"), 1) << "an old price fired it";
    FeedSays("Q,IBM,,,,,,,11,");
    EXPECT_EQ(doc.Alerts().ArmedCount("IBM"), 0);
}

TEST_F(CWatchlistDocTest, TheCommaSymbolHasAMessageOfItsOwn) {
    FeedIsReady();
    Place(4, kCommaSymbol);
    doc.SymbolNotFound(kCommaSymbol);
    EXPECT_EQ(doc.AnnotationText(4), "Symbols cannot contain commas.");
}

TEST_F(CWatchlistDocTest, AnUpdateReachesEveryRowOfItsSymbolAtTheNextRepaintAndOnlyThen) {
    FeedIsReady();
    Open("Symbols=IBM:3,7,;MSFT:4,;\r\n");
    doc.OnPaintMessage();
    doc.RepaintChangedRows();
    shown.TakeRows();
    shown.pending = false;
    const int messages = shown.paintMessages;

    store.OnLevel1Message("Q,IBM,,1.5,");
    store.OnLevel1Message("Q,IBM,,1.6,");
    store.OnLevel1Message("Q,MSFTX,,1.6,");
    EXPECT_EQ(shown.paintMessages, messages + 1) << "one message wakes the view for a burst";
    EXPECT_FALSE(shown.pending);
    doc.OnPaintMessage();
    EXPECT_TRUE(shown.pending);
    EXPECT_THAT(shown.TakeRows(), IsEmpty());
    doc.RepaintChangedRows();
    EXPECT_THAT(shown.TakeRows(), UnorderedElementsAre(3, 7));
    doc.RepaintChangedRows();
    EXPECT_THAT(shown.TakeRows(), IsEmpty());
}

TEST_F(CWatchlistDocTest, ARegionalRowAsksForItsRegionAtEveryReadyLine) {
    Open("Symbols=IBM--NYS:1,;IBM:2,;\r\n");
    FeedIsReady();
    EXPECT_THAT(feed.Take(), UnorderedElementsAre("wIBM\n", "S,REGON,IBM\n"));
    EXPECT_FALSE(doc.WatchTable().Has("IBM--NYS"));
    FeedIsReady();
    EXPECT_THAT(feed.Take(), ElementsAre("S,REGON,IBM\n"));
}

TEST_F(CWatchlistDocTest, RowsBeyondWhatAGridCanHoldAreRefused) {
    Open("Symbols=IBM:2147483647,-3,0,100001,100000,;\r\nAnnotations=999999999:#far;-1:#no;2:#yes;\r\n");
    EXPECT_EQ(doc.RowSymbol(100000), "IBM");
    EXPECT_EQ(doc.LastUsedRow(), 100000);
    EXPECT_EQ(doc.RowCount(), 100000);
    EXPECT_EQ(doc.AnnotationText(2), "yes");
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
