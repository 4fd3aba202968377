// SPDX-License-Identifier: MIT
#include "watchlist/DocFixture.h"
#include "watchlist/edit/CellEntry.h"
#include "watchlist/edit/ColumnMoves.h"
#include "watchlist/edit/SortCommands.h"
#include "watchlist/fileformat/WatchlistWriter.h"

#include <random>

using namespace vx;
using namespace vx::test;

namespace {

class CUndoStackTest : public CDocFixture {
protected:
    CUndoStackTest() {
        FeedIsReady();
        Arrange("Symbol;Last;Notes;");
    }

    void Arrange(std::string_view columns) {
        doc.Update()->Columns().Clear();
        doc.Update()->SetColumnsByName(columns);
        doc.Undo().Clear();
        doc.MarkSaved();
    }
    void Type(int row, std::string_view text, int column = 1) { EnterCellText(doc, row, column, "old", text); }
    SUndoPlace Undo() { return doc.Undo().Undo(); }
    SUndoPlace Redo() { return doc.Undo().Redo(); }

    /// Everything that an edit can change, as text.
    std::string Look() {
        std::string out = WriteWatchlistText(doc, {});
        for (int row = 1; row <= doc.RowCount(); ++row) out.append(doc.ShownText(row)).append("|");
        return out;
    }
    void ExpectBookkeeping() {
        size_t symbols = 0;
        doc.Symbols().ForEach([&](const SYMBOL_DATA& data) {
            ++symbols;
            EXPECT_TRUE(doc.WatchTable().Has(data.symbol)) << data.symbol;
            for (const uint32_t row : data.rows) EXPECT_EQ(doc.RowSymbol(static_cast<int>(row)), data.symbol);
        });
        EXPECT_EQ(doc.WatchTable().Count(), symbols);
        EXPECT_EQ(store.Size(), symbols);
        for (const auto& [symbol, rows] : doc.InvalidSymbols())
            for (const uint32_t row : rows) EXPECT_EQ(Row(static_cast<int>(row)), InvalidSymbolText(symbol)) << row;
    }
};

} // namespace

TEST_F(CUndoStackTest, ArmsNoAlertThatFiredSince) {
    A_INFO alert{.enabled = 1, .value = 10, .condition = 1, .soundFile = {}};
    CAlertsMap& alerts = doc.AlertRules();
    const auto edit = [&](double value, uint32_t sound) { // As the dialog does: the edited alert moves to the end.
        A_INFO edited = alerts.Get("IBM")[0];
        edited.value = value;
        edited.soundType = sound;
        doc.Edit("edit alerts", [&](CWatchlistEdit& change) {
            change.Alerts().Remove("IBM", 0);
            change.Alerts().Add("IBM", edited);
        });
    };
    alerts.Add("IBM", alert);
    alert.value = 5;
    alerts.Add("IBM", alert);
    edit(20, 0); // The 10 becomes a 20, after the 5.
    edit(5, 1);  // The 5 gets a sound, after the 20.
    doc.MarkSaved();
    EXPECT_TRUE(alerts.EvaluateFieldAlert("IBM", 0, 25, 25, 25, 25));
    EXPECT_TRUE(doc.IsModified());
    const size_t steps = doc.Undo().UndoCount();
    alerts.ResetFromRecord("IBM,1,6.000000");
    EXPECT_EQ(doc.Undo().UndoCount(), steps) << "neither is an edit";
    Undo();
    EXPECT_TRUE(doc.IsModified()) << "what was saved had the alert armed";
    EXPECT_EQ(alerts.Save(), "IBM:Symbol,>,6.000000,TRUE,FALSE,0,FALSE,;IBM:Symbol,>,20.000000,FALSE,FALSE,0,FALSE,;")
        << "the sound goes, the reset stays";
    Undo();
    EXPECT_EQ(alerts.Save(), "IBM:Symbol,>,10.000000,FALSE,FALSE,0,FALSE,;IBM:Symbol,>,6.000000,TRUE,FALSE,0,FALSE,;")
        << "the threshold of before, and disarmed";
    Redo();
    Redo();
    EXPECT_EQ(alerts.Save(), "IBM:Symbol,>,20.000000,FALSE,FALSE,0,FALSE,;IBM:Symbol,>,6.000000,TRUE,FALSE,1,FALSE,;");
}

TEST_F(CUndoStackTest, AnAlertThatFiresInAnEditKeepsTheDocumentModified) {
    CAlertsMap& alerts = doc.AlertRules();
    alerts.Add("IBM", {.enabled = 1, .value = 10, .condition = 1, .soundFile = {}});
    doc.MarkSaved();
    doc.Edit("long edit", [&](CWatchlistEdit& edit) {
        alerts.EvaluateFieldAlert("IBM", 0, 15, 15, 15, 15);
        edit.Cancel();
    });
    EXPECT_TRUE(doc.IsModified());
}

TEST_F(CUndoStackTest, StepsSurviveAutoSortsAndRejectionsInBetween) {
    std::mt19937 random{17};
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<uint32_t>(limit)); };
    const auto anyRow = [&] { return 1 + below(doc.RowCount() + 2); };
    const auto anyColumn = [&] { return 1 + below(doc.Columns().Count()); };
    const auto anySymbol = [&] { return fmt::format("S{}", below(12)); };
    boxes.answer = EBoxAnswer::Yes;
    for (int round = 0; round < 40; ++round) {
        doc.NewDocument();
        Arrange("Symbol;Last;Notes;");
        for (int step = 0; step < 60; ++step) {
            const int kind = below(8);
            if (kind == 0) doc.InsertRows(anyRow(), 1 + below(3));
            if (kind == 1) doc.DeleteRows(anyRow(), 1 + below(4));
            if (kind == 2) doc.MoveRows(anyRow(), 1 + below(3), anyRow());
            if (kind == 3) MoveColumn(doc, anyColumn(), anyColumn());
            if (kind > 3) Type(anyRow(), kind < 7 ? anySymbol() : below(2) == 0 ? "three words here" : "", anyColumn());
            if (below(4) == 0) doc.SymbolNotFound(anySymbol());
            if (below(4) == 0) {
                const SSortRecord before = doc.Options().sort;
                doc.Update()->Options().sort = {anyColumn(), below(2) == 0, true, 5000};
                CAutoSort(doc).Tick(false);
                doc.Update()->Options().sort = before;
            }
        }
        const std::string end = Look();
        const size_t steps = doc.Undo().UndoCount();
        for (size_t i = 0; i < steps; ++i) ASSERT_TRUE(Undo().done);
        EXPECT_EQ(Rows() + doc.Columns().Names(), "Symbol;Last;Notes;");
        ExpectBookkeeping();
        for (size_t i = 0; i < steps; ++i) ASSERT_TRUE(Redo().done);
        ASSERT_EQ(Look(), end) << "round " << round;
        ExpectBookkeeping();
    }
}

TEST_F(CUndoStackTest, NamesStepsAndTellsWhereTheyAreSeen) {
    const auto expect = [](const SUndoPlace& place, int firstRow, int lastRow, int firstColumn, int lastColumn) {
        EXPECT_EQ(std::tuple(place.firstRow, place.lastRow, place.firstColumn, place.lastColumn),
                  std::tuple(firstRow, lastRow, firstColumn, lastColumn));
    };
    for (const char* text : {"ibm", "msft", "A heading here", "aapl"}) Type(doc.LastUsedRow() + 1, text);
    doc.DeleteRows(2, 2);
    MoveColumn(doc, 2, 3);
    expect(Undo(), 0, 0, 2, 3);
    EXPECT_EQ(doc.Undo().RedoName(), "move column Last");
    EXPECT_EQ(doc.Undo().UndoName(), "delete 2 rows");
    expect(Undo(), 2, 3, 0, 0); // Whole rows.
    EXPECT_EQ(doc.Undo().UndoName(), "type \"aapl\"");
    EXPECT_EQ(Undo().firstRow, 4);
    Redo();
    EXPECT_EQ(Redo().firstRow, 2) << "where the deleted rows were";
    doc.MoveRows(2, 1, 1);
    Undo();
    expect(Redo(), 1, 1, 0, 0); // The rows that were moved.
}

TEST_F(CUndoStackTest, TheDocumentIsUnmodifiedInTheStateThatWasSaved) {
    const auto expect = [&](bool modified, const char* when) { EXPECT_EQ(doc.IsModified(), modified) << when; };
    Type(1, "IBM");
    Type(2, "MSFT");
    doc.MarkSaved();
    Undo();
    expect(true, "before the save");
    Redo();
    expect(false, "back at the save");
    Type(2, "two words more");
    expect(false, "a text that is shown only is not saved");
    Undo();
    expect(false, "nor its absence");
    doc.Edit({}, [](CWatchlistEdit&) {});
    Type(3, "GE");
    Undo();
    expect(true, "something was changed that cannot be undone");
    doc.MarkSaved();
    Undo();
    Type(2, "GE");
    Undo();
    Redo();
    Undo();
    expect(true, "the saved state is not to be reached any more");
}

TEST_F(CUndoStackTest, NothingComesOfAnEditWhoseListHasGoneMeanwhile) {
    doc.Edit("long edit", [&](CWatchlistEdit& edit) {
        edit.EnterSymbol(1, "IBM");
        OpenText(doc, "Columns=Symbol:1000;Bid:1000;\r\nSymbols=GE:2,;\r\n", "other");
        edit.EnterSymbol(3, "MSFT");
        edit.Cancel();
    });
    EXPECT_FALSE(doc.IsModified());
    EXPECT_FALSE(doc.Undo().CanUndo());
    EXPECT_EQ(Rows(), "|GE|MSFT");
    Type(1, "IBM");
    EXPECT_EQ(doc.Undo().UndoCount(), 1U) << "the next one is recorded again";
}

TEST_F(CUndoStackTest, KeepsAtLeastAHundredStepsAndForgetsTheOldestOnes) {
    const size_t kept = CUndoStack::kMostSteps;
    for (size_t i = 0; i < kept + 50; ++i) Type(1 + static_cast<int>(i % 9), fmt::format("S{}", i));
    EXPECT_EQ(doc.Undo().UndoCount(), kept);
    ASSERT_GE(kept, 100U);
    while (Undo().done) {
    }
    EXPECT_EQ(doc.RowSymbol(5), "S49") << "the fifty oldest edits stay";
    EXPECT_TRUE(doc.IsModified());
    Open("");
    const std::string note(20 << 20, 'x');
    for (int i = 0; i < 16; ++i)
        doc.Edit("edit note", [&](CWatchlistEdit& edit) { edit.Notes().Set(1, note + std::to_string(i)); });
    EXPECT_LE(doc.Undo().Bytes(), CUndoStack::kMostBytes);
    EXPECT_GT(doc.Undo().UndoCount(), 5U);
    EXPECT_LT(doc.Undo().UndoCount(), 14U);
}
