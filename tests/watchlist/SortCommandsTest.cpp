// SPDX-License-Identifier: MIT
#include "watchlist/edit/SortCommands.h"
#include "watchlist/DocFixture.h"
#include "watchlist/edit/SortRows.h"

using namespace vx;
using namespace vx::test;

namespace {

constexpr const char* kAskDirection = "Press Yes for ascending, No for descending, or Cancel to exit the sort.";
constexpr const char* kThreeRanges =
    "Please select time between:  5 - 36000 Seconds; 1 - 600 Minute(s); or 1 - 10 Hour(s)";

/// Columns 1 Symbol, 2 Last, 3 News, 4 Notes.
class CSortCommands : public CDocFixture {
protected:
    CSortCommands() {
        FeedIsReady();
        doc.Update()->Columns().Clear();
        doc.Update()->SetColumnsByName("Symbol;Last;News;Notes;");
    }
    SSortRecord& Sort() { return doc.Update()->Options().sort; }
    SSortSelection WholeColumn(int column) { return {1, doc.RowCount(), column, column, column}; }
};

} // namespace

TEST_F(CSortCommands, SymbolsStayUnderTheirHeadingAndRejectedOnesAreNone) {
    Open("Columns=Symbol:1000;\r\nSymbols=F:1,;D:2,;C:4,;X:5,;E:6,;A:8,;B:9,;\r\nAnnotations=3:#Tech;7:#Banks;\r\n");
    doc.SymbolNotFound("X");
    const std::string message = "#\"X\" is an Invalid or Unauthorized Symbol.";
    const std::string opened = Rows();
    ManualSort(doc, WholeColumn(1));
    EXPECT_EQ(Rows(), "D|F|#Tech|C|" + message + "|E|#Banks|A|B");
    ManualSort(doc, WholeColumn(1));
    EXPECT_EQ(Rows(), "F|D|#Tech|E|" + message + "|C|#Banks|B|A");
    doc.Undo().Undo();
    doc.Undo().Undo();
    EXPECT_EQ(Rows(), opened) << "one step each";
    doc.Update()->Options().sortAcrossHeadings = true;
    ManualSort(doc, WholeColumn(1));
    EXPECT_EQ(Rows(), "A|B|#Tech|C|" + message + "|D|#Banks|E|F");
    RequestHeaderSort(doc, 1, WholeColumn(1));
    EXPECT_EQ(Rows(), "F|E|#Tech|D|" + message + "|C|#Banks|B|A");
    EXPECT_THAT(boxes.shown, IsEmpty());
}

TEST_F(CSortCommands, ColumnsSortByWhatTheirCellsShow) {
    for (const char* symbol : {"A", "B", "C", "D"}) doc.Update()->EnterSymbol(doc.LastUsedRow() + 1, symbol);
    FeedSets("A", "Last", "9.5");
    FeedSets("B", "Last", "10");
    FeedSets("C", "Last", "-1");
    SortRows(doc, *doc.Update(), 1, 9, 2, true);
    EXPECT_EQ(Rows(), "C|D|A|B") << "D shows nothing and counts as 0";
    for (int i = 0; i < 10; ++i) doc.OnNewsLine("N,S,1,A,20240131 093000,Up");
    for (int i = 0; i < 9; ++i) doc.OnNewsLine("N,S,1,C,20240131 093000,Up");
    SortRows(doc, *doc.Update(), 1, 9, 3, false);
    EXPECT_EQ(Rows().substr(0, 3), "A|C") << "news counts are numbers";
    doc.Update()->Notes().Set(doc.LastUsedRow(), "9\r\nzz");
    doc.Update()->Notes().Set(1, "10");
    SortRows(doc, *doc.Update(), 1, 9, 4, true);
    EXPECT_EQ(Row(3), "A") << "notes are texts";
}

TEST_F(CSortCommands, ASelectionIsSortedAfterAQuestionWhateverIsAnswered) {
    struct SCase {
        bool descending; ///< The direction after the column was chosen.
        EBoxAnswer answer;
        const char* rows;
        bool ascending;
    };
    const std::string autoSort = "An auto sort has been set for column \"Symbol,\" it may not be manually sorted.";
    for (const SCase& each : {SCase{false, EBoxAnswer::No, "D|A|B|C", true},
                              {true, EBoxAnswer::Yes, "D|A|B|C", true},
                              {true, EBoxAnswer::Cancel, "D|C|B|A", false}}) {
        Open("Columns=Symbol:1000;\r\nSymbols=D:1,;B:2,;C:3,;A:4,;\r\n");
        if (each.descending) Sort().column = 1;
        boxes.answer = each.answer;
        ManualSort(doc, {2, 4, 1, 1, 1});
        EXPECT_EQ(Rows(), each.rows);
        EXPECT_EQ(Sort().ascending, each.ascending);
        EXPECT_TRUE(doc.IsModified());
        EXPECT_EQ(TakeMessage(), each.descending ? autoSort : kAskDirection);
    }
}

TEST_F(CSortCommands, AutoSortSortsAtEachTickUntilItsColumnIsGone) {
    Open("Columns=Symbol:1000;Last:1000;\r\nSymbols=B:1,;A:2,;\r\nSort=1;TRUE;TRUE;2\r\n");
    EXPECT_EQ(AutoSortPeriodMs(Sort()), 5000);
    EXPECT_EQ(CAutoSort(doc).Tick(true), EAutoSortTick::Postponed);
    doc.Edit("an edit that takes its time",
             [&](CWatchlistEdit&) { EXPECT_EQ(CAutoSort(doc).Tick(false), EAutoSortTick::Postponed); });
    doc.MarkSaved();
    EXPECT_EQ(Rows(), "B|A");
    EXPECT_EQ(CAutoSort(doc).Tick(false), EAutoSortTick::Sorted);
    EXPECT_EQ(Rows(), "A|B");
    EXPECT_FALSE(doc.IsModified());

    const auto tick = [&](int column, bool autoSort) {
        Sort() = {column, true, autoSort, 60000};
        return CAutoSort(doc).Tick(true) != EAutoSortTick::Off && Sort().autoSort;
    };
    EXPECT_TRUE(tick(2, true));
    EXPECT_FALSE(tick(2, false));
    EXPECT_FALSE(tick(0, true));
    EXPECT_FALSE(tick(3, true));
    doc.Update()->Columns().SetWidth(2, 0);
    EXPECT_FALSE(tick(2, true)) << "the last column of some width is the first";
}

TEST_F(CSortCommands, AutoSortOfALongListBeginsAnewWhenItChangesBetweenTwoSlices) {
    const int rows = 2 * static_cast<int>(CAutoSort::kSliceRows);
    for (int row = 1; row <= rows; ++row) doc.Update()->PlaceSymbol(row, "S" + std::to_string(200000 - row));
    Sort() = {1, true, true, 5000};
    CAutoSort sort(doc);
    EXPECT_EQ(sort.Tick(false), EAutoSortTick::UnderWay);
    doc.DeleteRows(1, 1);
    EXPECT_EQ(sort.Tick(false), EAutoSortTick::UnderWay);
    EXPECT_EQ(sort.Tick(false), EAutoSortTick::Sorted);
    EXPECT_EQ(doc.RowSymbol(1), "S" + std::to_string(200000 - rows));
    EXPECT_EQ(doc.RowSymbol(rows - 1), "S199998");
}

TEST_F(CSortCommands, DeletingASelectionNeedsAutoSortOff) {
    EXPECT_TRUE(MayDeleteSelection(doc));
    Sort() = {1, true, true, 60000};
    boxes.answer = EBoxAnswer::No;
    EXPECT_FALSE(MayDeleteSelection(doc));
    boxes.answer = EBoxAnswer::Yes;
    EXPECT_TRUE(MayDeleteSelection(doc));
    EXPECT_EQ(Sort(), (SSortRecord{1, true, false, 5000}));
}

TEST_F(CSortCommands, TheDialogTakesWhatIsInsideTheRangesAndStaysOpenForTheRest) {
    const SSortRecord before{2, false, true, 90000};
    const struct {
        SSortEntry entry;
        const char* message; ///< Empty: accepted.
        SSortRecord record;
    } cases[] = {
        {{true, "", true, {5, ETimeUnit::Seconds}}, "Please select a column to sort the Watchlist.", before},
        {{true, "Last", true, {4, ETimeUnit::Seconds}}, kThreeRanges, before},
        {{true, "Last", true, {601, ETimeUnit::Minutes}}, kThreeRanges, before},
        {{true, "Last", true, {2147483647, ETimeUnit::Hours}}, kThreeRanges, before},
        {{true, "Last", true, {5, ETimeUnit::Seconds}}, "", {2, true, true, 5000}},
        {{true, "Symbol", false, {600, ETimeUnit::Minutes}}, "", {1, false, true, 36000000}},
        {{true, "Bid", true, {2, ETimeUnit::Minutes}}, "", {-1, true, true, 120000}},
        {{false, "", true, {0, ETimeUnit::Seconds}}, "", {2, false, false, 5000}},
    };
    for (const auto& each : cases) {
        Sort() = before;
        doc.MarkSaved();
        EXPECT_EQ(ApplySortEntry(doc, each.entry), !*each.message);
        EXPECT_EQ(Sort(), each.record) << each.entry.interval.number;
        EXPECT_EQ(doc.IsModified(), !*each.message);
        EXPECT_EQ(TakeMessage(), each.message);
    }
    doc.Update()->Columns().SetWidth(2, 0);
    EXPECT_EQ(ShownInterval(720'000), (SShownInterval{2, ETimeUnit::Minutes}));
    EXPECT_THAT(SortableColumns(doc.Columns()), ElementsAre("Symbol", "News", "Notes"));
    EXPECT_EQ(FirstSortColumn(doc.Columns(), {3, true, false, 5000}, 1), "News");
    EXPECT_EQ(FirstSortColumn(doc.Columns(), {9, true, true, 5000}, 1), "") << "it names a column that is not there";
}
