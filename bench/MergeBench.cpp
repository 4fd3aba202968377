// SPDX-License-Identifier: MIT
// From the bytes of update lines to merged records: the product on each of its kernels beside the plain store and
// beside the least that any reader of such lines must do, a vector scan that writes the position of every comma and
// line end. Before anything is timed the records of product and plain store are compared, slot by slot.

#include "LinesInput.h"
#include "MergeScan.h"
#include "support/Agreement.h"
#include "support/FakeCodeNames.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <sstream>

namespace {

using namespace vx;
using namespace vx::bench;
using namespace vx::test;

struct SNoWindow : CChangeWaker {
    void ChangesWait() override {}
    void PostPaint() override {}
    void DrainNow() override {}
};

/// The store with every symbol watched, and the window's queue that it fills.
class CProduct {
public:
    CProduct(const SMergeKernel& kernel, const SLines& input) : m_store(kernel) {
        m_names.EnsureMarketsLoaded();
        m_store.SetCodeNames(&m_names);
        for (const std::string& symbol : input.symbols) m_store.Watch(symbol, m_queue);
    }

    void Run(const std::string& file) {
        RunLinesAhead(
            file, [&](std::string_view line) { m_store.OnLevel1Message(line); },
            [&] { m_queue.Drain([&](const SRecordIds& notice) { m_changes += notice.id2; }); },
            [&](std::string_view later, std::string_view soon) { m_store.Expect(later, soon); });
        benchmark::DoNotOptimize(m_changes);
    }
    const CL1DataStore& Store() const { return m_store; }

private:
    SNoWindow m_window;
    CChangeQueue m_queue{m_window};
    CFakeCodeNames m_names;
    CL1DataStore m_store;
    uint64_t m_changes = 0;
};

void RunPlain(CPlainStore& store, const std::string& file) {
    std::istringstream in(file);
    for (std::string line; std::getline(in, line);) store.OnLine(line);
}

void Report(benchmark::State& state, const SLines& input) {
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kLines));
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(input.file.size()));
    state.counters["ns/line"] =
        benchmark::Counter(static_cast<double>(kLines) * 1e-9,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_Product(benchmark::State& state, const SMergeKernel* kernel) {
    if (!kernel) return state.SkipWithError("this machine cannot run the kernel");
    const SLines& input = Lines(static_cast<size_t>(state.range(0)));
    CProduct product(*kernel, input);
    product.Run(input.file);
    for ([[maybe_unused]] auto _ : state) product.Run(input.file);
    Report(state, input);
}

void BM_Plain(benchmark::State& state) {
    const SLines& input = Lines(static_cast<size_t>(state.range(0)));
    CFakeCodeNames names;
    names.EnsureMarketsLoaded();
    CPlainStore store(&names);
    RunPlain(store, input.file);
    for ([[maybe_unused]] auto _ : state) RunPlain(store, input.file);
    Report(state, input);
}

void BM_VectorScan(benchmark::State& state) {
    const SLines& input = Lines(static_cast<size_t>(state.range(0)));
    std::vector<uint32_t> positions(input.file.size() + 64);
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(bench::ScanSeparators(input.file, positions.data()));
    Report(state, input);
}

bool Agree(const SMergeKernel* kernel) {
    if (!kernel) return true;
    const SLines& input = Lines(1000);
    CProduct product(*kernel, input);
    product.Run(input.file);
    CFakeCodeNames names;
    names.EnsureMarketsLoaded();
    CPlainStore plain(&names);
    RunPlain(plain, input.file);
    for (const std::string& symbol : input.symbols) plain.Record(symbol);
    const std::string difference = Difference(product.Store(), plain);
    std::printf("%s kernel and plain store: %s\n", kernel->name, difference.empty() ? "equal" : difference.c_str());
    return difference.empty();
}

} // namespace

BENCHMARK(BM_VectorScan)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Product, best, &BestKernel())->Arg(100)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Product, avx2, Avx2Kernel())->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Product, portable, &PortableKernel())->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Plain)->Arg(1000)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    for (const SMergeKernel* kernel : {Avx512Kernel(), Avx2Kernel(), &PortableKernel()})
        if (!Agree(kernel)) return 1;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
