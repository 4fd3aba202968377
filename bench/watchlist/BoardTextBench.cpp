// SPDX-License-Identifier: MIT
// What undoing, pasting, finding and exporting cost in a watchlist of 100,000 rows and 20 columns, and how long a paste
// keeps the window waiting between two of its slices.

#include "watchlist/ScratchDoc.h"
#include "watchlist/edit/ImportText.h"
#include "watchlist/edit/PasteText.h"
#include "watchlist/edit/SortRows.h"
#include "watchlist/exchange/ExportText.h"
#include "watchlist/exchange/FindText.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <memory>

namespace {

using namespace vx;

constexpr int kRows = 100'000;
constexpr const char* kColumns = "Symbol;Last;Change;% Chg;Bid;Ask;B Size;A Size;High;Low;Open;Close;Volume;Trade Time;"
                                 "Trade Date;Exchange;Tick Vol;Notes;News;Latest Headline;";

struct SBoard : test::CScratchDoc {
    SBoard() { BeginConnected(kColumns); }
};

std::string ManySymbols() {
    std::string text;
    for (int i = 0; i < kRows; ++i) text += "SYM" + std::to_string(i) + "\r\n";
    return text;
}

SBoard& FullBoard() {
    static const auto board = [] {
        auto made = std::make_unique<SBoard>();
        PasteText(made->doc, 1, 1, ManySymbols());
        for (int i = 0; i < kRows; ++i) {
            std::string line = "Q,SYM" + std::to_string(i);
            for (int field = 0; field < 69; ++field) line += field % 2 == 0 ? ",12.34" : ",5";
            made->store.OnLevel1Message(line + ",");
        }
        made->doc.OnPaintMessage();
        return made;
    }();
    return *board;
}

/// Processor time of this program.
double CpuMs() { return static_cast<double>(std::clock()) * 1000 / CLOCKS_PER_SEC; }

/// Into an empty board; the longest time from one slice to the next, first and last included, is told beside.
void BM_Paste(benchmark::State& state) {
    const std::string text = ManySymbols();
    double longestMs = 0;
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto board = std::make_unique<SBoard>();
        state.ResumeTiming();
        double lastMs = CpuMs();
        const auto beat = [&](size_t, size_t) {
            longestMs = std::max(longestMs, CpuMs() - lastMs);
            lastMs = CpuMs();
            return true;
        };
        PasteText(board->doc, 1, 1, text, EAnnotationMarks::No, beat);
        beat(0, 0);
        state.PauseTiming();
        board.reset();
        state.ResumeTiming();
    }
    state.counters["longest_slice_ms"] = longestMs;
    state.SetItemsProcessed(state.iterations() * kRows);
}

void BM_UndoAndRedoThePaste(benchmark::State& state) {
    SBoard board;
    PasteText(board.doc, 1, 1, ManySymbols());
    for ([[maybe_unused]] auto _ : state) {
        board.doc.Undo().Undo();
        board.doc.Undo().Redo();
    }
    state.counters["step_bytes"] = static_cast<double>(board.doc.Undo().Bytes());
}

void BM_DeleteOneRowAndUndo(benchmark::State& state) {
    CWatchlistDoc& doc = FullBoard().doc;
    doc.Undo().Clear();
    for ([[maybe_unused]] auto _ : state) {
        doc.DeleteRows(500, 1);
        doc.Undo().Undo();
    }
    state.counters["step_bytes"] = static_cast<double>(doc.Undo().Bytes());
}

void BM_SortAllAndUndo(benchmark::State& state) {
    CWatchlistDoc& doc = FullBoard().doc;
    bool ascending = false;
    for ([[maybe_unused]] auto _ : state) {
        doc.Edit("sort", [&](CWatchlistEdit& edit) { SortRows(doc, edit, 1, kRows, 1, ascending); });
        ascending = !ascending;
        doc.Undo().Undo();
    }
}

void BM_FindNothing(benchmark::State& state) {
    const CWatchlistDoc& doc = FullBoard().doc;
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(FindNext(doc, "nowhere", {}, 1, 1));
    state.SetItemsProcessed(state.iterations() * kRows * 20);
}

void BM_GoToSymbol(benchmark::State& state) {
    const CWatchlistDoc& doc = FullBoard().doc;
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(GoToSymbol(doc, "nowhere"));
}

void BM_Export(benchmark::State& state) {
    const CWatchlistDoc& doc = FullBoard().doc;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(ExportText(doc, {state.range(0) != 0, true, true, true}, true).size());
}

void BM_ReadImport(benchmark::State& state) {
    const SBoard board;
    const std::string text = ManySymbols();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(ReadImport(board.doc, text).toAdd.size());
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}

} // namespace

BENCHMARK(BM_Paste)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UndoAndRedoThePaste)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DeleteOneRowAndUndo)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SortAllAndUndo)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FindNothing)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GoToSymbol)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Export)->ArgName("formulas")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadImport)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
