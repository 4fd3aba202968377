// SPDX-License-Identifier: MIT
// What armed alerts cost on top of merging: the same update lines through the store and its queue with no alerts, and
// with alerts on every symbol that are judged for every line and never met. Without alerts the queue is drained once a
// beat; with them before each change of a record that waits. The difference of the two is the price of a line.

#include "LinesInput.h"
#include "alerts/rules/AlertInfo.h"
#include "alerts/rules/AlertsMap.h"
#include "data/record/ChangeQueue.h"
#include "data/store/L1DataStore.h"

#include <benchmark/benchmark.h>

#include <array>

namespace {

using namespace vx;
using namespace vx::bench;

/// The fields that people watch, with thresholds that no line of the feed meets.
A_INFO UnmetAlert(int number) {
    constexpr std::array kFields = {"Last", "Bid", "Ask", "% Chg", "Volume"};
    A_INFO alert;
    alert.enabled = 1;
    alert.noZero = 1;
    alert.fieldId = *AlertFieldId(kFields[static_cast<size_t>(number) % kFields.size()]);
    alert.condition = static_cast<uint32_t>(EAlertCondition::GreaterOrEqual);
    alert.value = 1e12 + number;
    return alert;
}

/// A store, a watchlist's queue and its alerts, without a window.
class CBoard : CChangeWaker {
public:
    CBoard(const SLines& input, int alertsPerSymbol) {
        for (const std::string& symbol : input.symbols) {
            m_store.Watch(symbol, m_queue);
            for (int i = 0; i < alertsPerSymbol; ++i) m_alerts.Add(symbol, UnmetAlert(i));
            m_store.SetArmedAlerts(symbol, m_alerts.ArmedCount(symbol));
        }
    }

    void Run(const std::string& file) {
        RunLines(
            file, [&](std::string_view line) { m_store.OnLevel1Message(line); }, [&] { DrainNow(); });
    }
    size_t Fired() const { return m_fired; }

private:
    void ChangesWait() override {}
    void PostPaint() override {}
    void DrainNow() override {
        m_queue.DrainUrgent([&](const SRecordIds& notice) {
            if (const CSymbolRec* record = m_store.FindById(notice.id1, notice.id2))
                m_fired += m_alerts.Evaluate(*record).size();
        });
    }

    CAlertsMap m_alerts;
    CChangeQueue m_queue{*this};
    CL1DataStore m_store;
    size_t m_fired = 0;
};

void BM_Lines(benchmark::State& state) {
    const SLines& input = Lines(static_cast<size_t>(state.range(0)));
    CBoard board(input, static_cast<int>(state.range(1)));
    board.Run(input.file);
    for ([[maybe_unused]] auto _ : state) board.Run(input.file);
    if (board.Fired() != 0) state.SkipWithError("an alert fired that never should");
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kLines));
    state.counters["time/line"] = benchmark::Counter(
        static_cast<double>(kLines), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Ten alerts on each of 10,000 symbols, as a watchlist file has them.
void BM_SaveAndLoad(benchmark::State& state) {
    CAlertsMap saved;
    for (int i = 0; i < 10'000; ++i)
        for (int j = 0; j < 10; ++j) saved.Add("SYM" + std::to_string(i), UnmetAlert(j));
    for ([[maybe_unused]] auto _ : state) {
        CAlertsMap loaded;
        loaded.Load(saved.Save());
        benchmark::DoNotOptimize(loaded);
    }
    state.SetItemsProcessed(state.iterations() * 100'000);
}

} // namespace

BENCHMARK(BM_Lines)
    ->ArgNames({"symbols", "alerts"})
    ->Args({1000, 0})
    ->Args({1000, 1})
    ->Args({1000, 10})
    ->Args({100, 1000})
    ->Args({10000, 0})
    ->Args({10000, 10})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveAndLoad)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
