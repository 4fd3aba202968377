// SPDX-License-Identifier: MIT
#include "data/catalogue/UpdateFields.h"
#include "watchlist/LiteralInsertion.h"
#include "watchlist/ScratchDoc.h"
#include "watchlist/edit/SortRows.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <random>

// What sorting and moving rows of a long watchlist costs, with everything that belongs to a row: symbols and their
// rows, annotations, notes, formats. Before the times of single operations, the order of a sort is computed beside the
// literal insertion of 10,000 rows from the same keys; the program fails when the two differ or when ours is not at
// least 100 times as fast.

namespace {

using namespace vx;

constexpr int kManyRows = 100'000;
constexpr size_t kComparedRows = 10'000;
constexpr double kLeastRatio = 100;
constexpr int kLastColumn = 2;

std::string SymbolName(int row) { return "SYM" + std::to_string(row); }

struct SList : test::CScratchDoc {
    SList() { BeginConnected("Symbol;Last;Bid;Ask;"); }

    /// Every row a symbol of its own with a price; each `annotations`th row an annotation, each fiftieth with a note
    /// and a format.
    void Fill(int rows, int annotations = 100) {
        std::mt19937 random(5);
        SCellFormat bold;
        bold.bold = true;
        for (int row = 1; row <= rows; ++row) {
            if (row % annotations == 0) {
                doc.Update()->SetAnnotation(row, "a heading");
                continue;
            }
            const std::string symbol = SymbolName(static_cast<int>(random() % 9'000'000));
            doc.Update()->EnterSymbol(row, symbol);
            SetLast(symbol, static_cast<double>(random() % 5'000'000) / 100);
            if (row % 50 == 1) {
                doc.Update()->Notes().Set(row, "a note");
                doc.Update()->Formats().Set(row, 2, bold);
            }
        }
        doc.OnPaintMessage();
    }

    void SetLast(const std::string& symbol, double value) {
        std::string line = "Q," + symbol;
        for (size_t i = 0; kUpdateFields[i].name != "Last"; ++i) line += ',';
        store.OnLevel1Message(line + std::to_string(value) + ",");
    }
};

SList& LongList() {
    static const auto list = [] {
        auto made = std::make_unique<SList>();
        made->Fill(kManyRows);
        return made;
    }();
    return *list;
}

void Sort(SList& list, benchmark::State& state) {
    bool ascending = true;
    for ([[maybe_unused]] auto _ : state) {
        SortRows(list.doc, *list.doc.Update(), 1, kManyRows, static_cast<int>(state.range(0)), ascending);
        ascending = !ascending;
    }
    state.SetItemsProcessed(state.iterations() * kManyRows);
}

void BM_SortWholeList(benchmark::State& state) {
    SList& list = LongList();
    list.doc.Update()->Options().sortAcrossHeadings = state.range(1) != 0;
    Sort(list, state);
    list.doc.Update()->Options().sortAcrossHeadings = false;
}

/// Two symbols under each heading.
void BM_SortManyBlocks(benchmark::State& state) {
    SList list;
    list.Fill(kManyRows, 3);
    Sort(list, state);
}

void BM_MoveBlockToTheEndAndBack(benchmark::State& state) {
    CWatchlistDoc& doc = LongList().doc;
    for ([[maybe_unused]] auto _ : state) {
        doc.MoveRows(1, 1000, kManyRows + 1);
        doc.MoveRows(kManyRows - 999, 1000, 1);
    }
}

void BM_DeleteAndInsertAtTheTop(benchmark::State& state) {
    SList list;
    list.Fill(kManyRows - 1000);
    for ([[maybe_unused]] auto _ : state) {
        list.doc.InsertRows(1, 500);
        list.doc.DeleteRows(1, 500);
    }
}

void BM_PlaceOneByOneAndDeleteAll(benchmark::State& state) {
    const int rows = static_cast<int>(state.range(0));
    SList list;
    for ([[maybe_unused]] auto _ : state) {
        for (int row = 1; row <= rows; ++row) list.doc.Update()->EnterSymbol(row, SymbolName(row));
        list.doc.DeleteRows(1, rows);
    }
    state.SetItemsProcessed(state.iterations() * rows);
}

/// One symbol in every row, placed from the last row to the first and emptied from the first to the last.
void BM_OneSymbolEverywhere(benchmark::State& state) {
    const int rows = static_cast<int>(state.range(0));
    SList list;
    for ([[maybe_unused]] auto _ : state) {
        for (int row = rows; row >= 1; --row) list.doc.Update()->EnterSymbol(row, "IBM");
        for (int row = 1; row <= rows; ++row) list.doc.Update()->EmptyRow(row);
    }
    state.SetItemsProcessed(state.iterations() * rows);
}

/// As many rejected symbols as rows, each overwritten by an annotation.
void BM_RejectAndOverwriteEveryRow(benchmark::State& state) {
    const int rows = static_cast<int>(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        SList list;
        for (int row = 1; row <= rows; ++row) {
            list.doc.Update()->EnterSymbol(row, SymbolName(row));
            list.doc.SymbolNotFound(SymbolName(row));
        }
        for (int row = 1; row <= rows; ++row) list.doc.Update()->SetAnnotation(row, "over");
    }
    state.SetItemsProcessed(state.iterations() * rows);
}

template <typename Function> double MedianMs(int runs, Function function) {
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        const auto start = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(function());
        times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

template <typename Ours, typename Literal> bool Compare(const char* what, Ours ours, Literal literal) {
    const bool equal = ours() == literal();
    const double oursMs = MedianMs(25, ours);
    const double literalMs = MedianMs(5, literal);
    const bool good = equal && literalMs / oursMs >= kLeastRatio;
    std::printf("order of %zu rows by %s: %.2f ms, literal insertion %.0f ms, ratio %.0f, %s%s\n", kComparedRows, what,
                oursMs, literalMs, literalMs / oursMs, equal ? "equal" : "DIFFERENT", good ? "" : "  FAILED");
    return good;
}

bool CompareWithLiteral() {
    std::mt19937 random(9);
    std::vector<std::string> texts;
    std::vector<double> numbers;
    for (size_t i = 0; i < kComparedRows; ++i) {
        texts.push_back(SymbolName(static_cast<int>(random() % 900'000)));
        numbers.push_back(static_cast<double>(random() % 500'000) / 100);
    }
    const std::vector<std::string_view> keys(texts.begin(), texts.end());
    const bool byText = Compare(
        "text", [&] { return OrderByText(keys, true); }, [&] { return test::InsertTexts(keys, true); });
    const bool byNumber = Compare(
        "number", [&] { return OrderByNumber(numbers, true); }, [&] { return test::InsertNumbers(numbers, true); });
    return byText && byNumber;
}

} // namespace

BENCHMARK(BM_SortWholeList)
    ->ArgNames({"column", "across"})
    ->ArgsProduct({{1, kLastColumn}, {0, 1}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SortManyBlocks)->ArgName("column")->Arg(1)->Arg(kLastColumn)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MoveBlockToTheEndAndBack)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DeleteAndInsertAtTheTop)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlaceOneByOneAndDeleteAll)->Arg(10'000)->Arg(kManyRows)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OneSymbolEverywhere)->Arg(10'000)->Arg(kManyRows)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RejectAndOverwriteEveryRow)->Arg(10'000)->Arg(kManyRows)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    const bool good = CompareWithLiteral();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return good ? 0 : 1;
}
