// SPDX-License-Identifier: MIT
// Numbers into cell texts: the program's own writer beside snprintf on the same values, and whole rows of the catalogue
// as the grid asks for them. The texts are compared before anything is timed.

#include "LineGenerator.h"
#include "data/catalogue/Catalogue.h"
#include "data/record/NumberText.h"
#include "data/store/L1DataStore.h"
#include "data/text/CellText.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>

namespace {

using namespace vx;
using namespace vx::bench;
using namespace vx::test;

struct SNumber {
    double value;
    int places;
};

// Prices, changes and percentages as a board shows them.
const std::vector<SNumber>& Numbers() {
    static const std::vector<SNumber> numbers = [] {
        CRandom random(11);
        std::vector<SNumber> out;
        for (int i = 0; i < 4096; ++i)
            out.push_back({static_cast<double>(random.Below(5'000'000)) / 10000 - 50, i % 3 == 0 ? 4 : 2});
        return out;
    }();
    return numbers;
}

void BM_WriteFixed(benchmark::State& state) {
    CellBuffer buffer;
    for ([[maybe_unused]] auto _ : state)
        for (const SNumber& number : Numbers())
            benchmark::DoNotOptimize(WriteFixed(number.value, number.places, false, buffer));
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(Numbers().size()));
}

void BM_Snprintf(benchmark::State& state) {
    CellBuffer buffer;
    for ([[maybe_unused]] auto _ : state)
        for (const SNumber& number : Numbers())
            benchmark::DoNotOptimize(std::snprintf(buffer.data(), buffer.size(), "%.*f", number.places, number.value));
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(Numbers().size()));
}

void BM_DefaultColumns(benchmark::State& state) {
    CLineGenerator generator(50, 5);
    CL1DataStore store;
    for (int i = 0; i < 5000; ++i) store.OnLevel1Message(generator.Next());
    std::vector<const SFieldEntry*> columns;
    for (const char* name : {"Symbol", "Tick Trend", "Change", "% Chg", "Last", "Volume", "Bid", "Ask", "B Size",
                             "A Size", "High", "Low", "T Time", "Delay", "Type"})
        columns.push_back(FindField(name));
    CellBuffer buffer;
    int64_t cells = 0;
    for ([[maybe_unused]] auto _ : state)
        for (const std::string& symbol : generator.Symbols()) {
            const CL1SymbolRec* record = store.FindSymbol(symbol);
            if (!record) continue;
            for (const SFieldEntry* column : columns) benchmark::DoNotOptimize(CellText(*record, *column, 2, buffer));
            cells += static_cast<int64_t>(columns.size());
        }
    state.SetItemsProcessed(cells);
}

bool Agree() {
    CellBuffer ours;
    CellBuffer theirs;
    for (const SNumber& number : Numbers()) {
        const size_t size = WriteFixed(number.value, number.places, false, ours);
        const int printed = std::snprintf(theirs.data(), theirs.size(), "%.*f", number.places, number.value);
        if (size != static_cast<size_t>(printed) || std::memcmp(ours.data(), theirs.data(), size) != 0) return false;
    }
    return true;
}

} // namespace

BENCHMARK(BM_WriteFixed);
BENCHMARK(BM_Snprintf);
BENCHMARK(BM_DefaultColumns);

int main(int argc, char** argv) {
    std::printf("texts and snprintf: %s\n", Agree() ? "equal" : "different");
    if (!Agree()) return 1;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
