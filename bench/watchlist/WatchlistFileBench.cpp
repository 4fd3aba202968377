// SPDX-License-Identifier: MIT
// How long a watchlist takes to be opened and saved, disk included, and how that grows with its rows; beside a plain
// reader that splits the same text into strings. The last lines print times and growth; growth far above that of the
// rows means that something is quadratic, and fails.

#include "base/AtomicFile.h"
#include "support/TempFolder.h"
#include "watchlist/ScratchDoc.h"
#include "watchlist/file/WatchlistFile.h"

#include <benchmark/benchmark.h>

#include <fmt/format.h>

#include <cstdlib>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

using namespace vx;
using namespace vx::test;

namespace {

constexpr int kFewRows = 1000;
constexpr int kManyRows = 100000;
constexpr double kMostGrowth = 500; // For a hundred times the rows; the caches are left behind on the way.
constexpr double kMostMs = 1000;

// Each tenth row an annotation, each fifth with a note and a format of its own, each third with an alert; every symbol
// stands in two rows far apart.
std::string ListText(int rows) {
    std::string symbols, annotations, notes, alerts, formats;
    const auto to = [](std::string& out) { return std::back_inserter(out); };
    for (int row = 1; row <= rows; ++row) {
        if (row % 10 == 0) {
            fmt::format_to(to(annotations), "{}:#Heading of part {};", row, row / 10);
        } else if (row <= rows / 2) {
            fmt::format_to(to(symbols), "S{}:{},{};", row, row,
                           (row + rows / 2) % 10 ? fmt::format("{},", row + rows / 2) : "");
        }
        if (row % 5 == 0) fmt::format_to(to(notes), "{}:bought::at {};", row, row);
        if (row % 5 == 0) fmt::format_to(to(formats), "{},2:255,,,,,,,,,TRUE,,,,,,;", row);
        if (row % 3 == 0) fmt::format_to(to(alerts), "S{}:Last,>=,{}.500000,TRUE,FALSE,1,FALSE,;", row, row);
    }
    return fmt::format("TrailingRows=3\r\nColumns=Symbol:700;Last:700;Bid:700;Ask:700;Volume:900;\r\nSymbols={}\r\n"
                       "Annotations={}\r\nAlerts={}\r\nNotes={}\r\nFormatting={}\r\n",
                       symbols, annotations, alerts, notes, formats);
}

// Every row has a symbol of its own; a third of them an alert, a third a note, a third formats of two cells.
std::string HeavyText(int rows) {
    std::string symbols, notes, alerts, formats;
    const auto to = [](std::string& out) { return std::back_inserter(out); };
    for (int row = 1; row <= rows; ++row) {
        fmt::format_to(to(symbols), "S{}:{},;", row, row);
        if (row % 3 == 0) fmt::format_to(to(notes), "{}:bought::at {};", row, row);
        if (row % 3 == 1)
            fmt::format_to(to(formats), "{},1:255,,,,,,,,,TRUE,,,,,,;{},2:,65535,,,,,,,,,,,,,,;", row, row);
        if (row % 3 == 2) fmt::format_to(to(alerts), "S{}:Last,>=,{}.500000,TRUE,FALSE,1,FALSE,;", row, row);
    }
    return fmt::format("TrailingRows=3\r\nColumns=Symbol:700;Last:700;Bid:700;Ask:700;Volume:900;\r\nSymbols={}\r\n"
                       "Annotations=\r\nAlerts={}\r\nNotes={}\r\nFormatting={}\r\n",
                       symbols, alerts, notes, formats);
}

// A list made to be slow: its symbols have one and the same SymbolHash. "AB" and "bA" have; so have two texts that are
// put together from the same number of them.
std::string CollidingText(int rows) {
    constexpr int kPairs = 17; // 2^17 texts.
    std::string symbols;
    for (int row = 1; row <= rows; ++row) {
        for (int pair = 0; pair < kPairs; ++pair) symbols += row >> pair & 1 ? "AB" : "bA";
        fmt::format_to(std::back_inserter(symbols), ":{},;", row);
    }
    return fmt::format("Columns=Symbol:700;Last:700;\r\nSymbols={}\r\n", symbols);
}

struct SBoard {
    explicit SBoard(const std::string& text) : file(list.doc, folder / "state"), path(folder / "list.vxw") {
        WriteFile(path, text);
        if (!file.Open(path).IsDone() || !file.Save({}, {.overwriteChanged = true}).IsDone()) std::abort();
    }
    CTempFolder folder;
    CScratchDoc list;
    CWatchlistFile file;
    std::string path;
};

SBoard& Board(int rows) {
    static SBoard few(ListText(kFewRows)), many(ListText(kManyRows));
    return rows == kFewRows ? few : many;
}

void Open(benchmark::State& state) {
    SBoard& board = Board(static_cast<int>(state.range(0)));
    for (auto _ : state)
        if (!board.file.Open(board.path).IsDone()) state.SkipWithError("not opened");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void OpenColliding(benchmark::State& state) {
    const int rows = static_cast<int>(state.range(0));
    SBoard board(CollidingText(rows));
    board.list.doc.SetFeedReady();
    for (auto _ : state)
        if (!board.file.Open(board.path).IsDone()) state.SkipWithError("not opened");
    state.SetItemsProcessed(state.iterations() * rows);
}

// Every save replaces another content, so that a generation is kept each time.
void Save(benchmark::State& state) {
    SBoard& board = Board(static_cast<int>(state.range(0)));
    int left = 0;
    for (auto _ : state)
        if (!board.file.Save({++left, 0, 800, 600, false, false}).IsDone()) state.SkipWithError("not saved");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The part of a save that holds the window: the text is made, not written.
void MakeText(benchmark::State& state, std::string (*listText)(int)) {
    SBoard board(listText(static_cast<int>(state.range(0))));
    for (auto _ : state) benchmark::DoNotOptimize(board.file.BeginSave({}, {}));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The text split into lines, entries and fields, each a string of its own in a map; no document.
void ReadPlainly(benchmark::State& state) {
    SBoard& board = Board(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        std::map<std::string, std::map<std::string, std::vector<std::string>>> all;
        std::istringstream text(ReadFile(board.path));
        for (std::string line; std::getline(text, line);) {
            const size_t equals = line.find('=');
            std::istringstream entries(line.substr(equals + 1));
            for (std::string entry; std::getline(entries, entry, ';');) {
                const size_t colon = entry.find(':');
                std::vector<std::string>& fields = all[line.substr(0, equals)][entry.substr(0, colon)];
                std::istringstream rest(entry.substr(colon + 1));
                for (std::string field; std::getline(rest, field, ',');) fields.push_back(field);
            }
        }
        benchmark::DoNotOptimize(all);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(Open)->Arg(kFewRows)->Arg(kManyRows)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenColliding)->Arg(kFewRows)->Arg(kManyRows)->Unit(benchmark::kMillisecond);
BENCHMARK(Save)->Arg(kFewRows)->Arg(kManyRows)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(MakeText, List, ListText)->Arg(kFewRows)->Arg(kManyRows)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(MakeText, HeavyList, HeavyText)->Arg(kFewRows)->Arg(kManyRows)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadPlainly)->Arg(kManyRows)->Unit(benchmark::kMillisecond);

class CGrowthReporter final : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) m_ms[run.benchmark_name()] = run.GetAdjustedRealTime();
    }
    bool Print() {
        bool good = true;
        for (const char* name : {"Open", "OpenColliding", "Save"}) {
            const double few = m_ms[fmt::format("{}/{}", name, kFewRows)];
            const double many = m_ms[fmt::format("{}/{}", name, kManyRows)];
            fmt::print("{}: {:.2f} ms for {} rows, {:.1f} ms for {}: grows {:.0f} times (bar {})\n", name, few,
                       kFewRows, many, kManyRows, many / few, kMostGrowth);
            good = good && many < kMostMs && many / few < kMostGrowth;
        }
        return good;
    }

private:
    std::map<std::string, double> m_ms;
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    CGrowthReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.Print() ? 0 : 1;
}
