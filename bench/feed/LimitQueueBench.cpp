// SPDX-License-Identifier: MIT
// What it costs to forget symbols that wait for room at the feed client, one by one, as closing a watchlist does.

#include "feed/session/SymbolLimitQueue.h"

#include <benchmark/benchmark.h>

#include <fmt/format.h>

#include <string>
#include <vector>

namespace {

void ForgetAll(benchmark::State& state) {
    std::vector<std::string> symbols;
    for (int64_t i = 0; i < state.range(0); ++i) symbols.push_back(fmt::format("S{}", i));
    for (auto _ : state) {
        state.PauseTiming();
        vx::CSymbolLimitQueue queue;
        for (const std::string& symbol : symbols) queue.Refused(symbol, true);
        state.ResumeTiming();
        for (auto symbol = symbols.rbegin(); symbol != symbols.rend(); ++symbol) queue.Forget(*symbol);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(ForgetAll)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
