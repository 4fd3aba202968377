// SPDX-License-Identifier: MIT
// What the traffic log costs the road of an update line, from the socket's hand-over to the merged record: switched
// off, as it is until a user switches it on, and switched on with its file, beside the same road with the log compiled
// out. CPU of the receiving thread alone; the writing of the file has a thread of its own.

#include "LineGenerator.h"
#include "base/Log.h"
#include "data/store/L1DataStore.h"
#include "feed/socket/ClientAppSocket.h"
#include "feed/socket/FeedLog.h"
#include "feed/socket/FeedOwner.h"
#include "feed/socket/Ports.h"
#include "support/FakeCodeNames.h"
#include "support/TempFolder.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

using namespace vx;
using namespace vx::bench;
using namespace vx::test;

namespace {

constexpr size_t kLines = 200'000;
constexpr size_t kSymbols = 1000;
constexpr uint64_t kSeed = 20240131;
constexpr size_t kBatchBytes = 100'000;
constexpr int kPasses = 40;
constexpr double kBar = 1.05;

double g_ratio = 0;

const std::string& Lines() {
    static const std::string lines = GenerateFile(kLines, kSymbols, kSeed);
    return lines;
}

class CStoreOwner final : public CFeedOwner {
public:
    CStoreOwner() {
        m_names.EnsureMarketsLoaded();
        m_store.SetCodeNames(&m_names);
        const CLineGenerator generator(kSymbols, kSeed);
        for (const std::string& symbol : generator.Symbols()) m_store.Watch(symbol, m_queue);
    }
    void OnUpdateMessage(std::string_view line) override { m_store.OnUpdate(line); }
    void ReceiveSystemLine(std::string_view) override {}
    void ReceiveTimeLine(std::string_view) override {}
    void ReceiveFundamentalLine(std::string_view) override {}
    void PostMessageBox(SMessageBox) override { std::abort(); }

    void Drain() {
        m_queue.Drain([&](const SRecordIds& notice) { m_changes += notice.id2; });
        benchmark::DoNotOptimize(m_changes);
    }

private:
    struct SNoWindow : CChangeWaker {
        void ChangesWait() override {}
        void PostPaint() override {}
        void DrainNow() override {}
    };
    SNoWindow m_window;
    CChangeQueue m_queue{m_window};
    CFakeCodeNames m_names;
    CL1DataStore m_store;
    uint64_t m_changes = 0;
};

/// The product's socket, given lines that are cut already.
class CSocket : public CZantrelClientAppSocket {
public:
    explicit CSocket(CFeedOwner& owner) : CZantrelClientAppSocket(0), m_owner(owner) {
        SetOwner(&owner);
        SetLog(&FeedLogOf(kLevel1Socket));
    }
    void Take(std::string_view line) { OnMessage(line); }

protected:
    CFeedOwner& m_owner;
};

class CSocketWithoutLog final : public CSocket {
public:
    using CSocket::CSocket;

protected:
    void OnMessage(std::string_view line) override {
        (m_owner.*kLineHandlers[static_cast<unsigned char>(line.front())])(line);
    }
};

double ThreadCpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// The lines in batches short enough that most run through without another program in between.
std::vector<std::string_view> Batches() {
    std::vector<std::string_view> batches;
    std::string_view left = Lines();
    while (!left.empty()) {
        const size_t end = std::min(left.find('\n', kBatchBytes), left.size() - 1) + 1;
        batches.push_back(left.substr(0, end));
        left.remove_prefix(end);
    }
    return batches;
}

double SecondsOf(CSocket& socket, std::string_view batch) {
    const double before = ThreadCpuSeconds();
    for (const char *at = batch.data(), *end = at + batch.size(); at != end;) {
        const char* lf = static_cast<const char*>(std::memchr(at, '\n', static_cast<size_t>(end - at)));
        socket.Take({at, static_cast<size_t>(lf - at)});
        at = lf + 1;
    }
    return ThreadCpuSeconds() - before;
}

// Both roads by turns, batch by batch over the same records; of each batch the least time of all passes counts.
void OffBesideCompiledOut(benchmark::State& state) {
    CStoreOwner owner;
    CSocket product(owner);
    CSocketWithoutLog bare(owner);
    SetLogCategories(ReadLogCategories(kDefaultLogCategories));
    const std::vector<std::string_view> batches = Batches();
    constexpr double kNever = 1e9;
    std::vector<double> off(batches.size(), kNever);
    std::vector<double> without(batches.size(), kNever);
    int pass = 0;
    for ([[maybe_unused]] auto _ : state) {
        for (size_t i = 0; i < batches.size(); ++i) {
            const bool productFirst = (pass + static_cast<int>(i)) % 2 == 0;
            if (productFirst) off[i] = std::min(off[i], SecondsOf(product, batches[i]));
            without[i] = std::min(without[i], SecondsOf(bare, batches[i]));
            if (!productFirst) off[i] = std::min(off[i], SecondsOf(product, batches[i]));
            owner.Drain();
        }
        ++pass;
    }
    const auto nanoseconds = [](const std::vector<double>& seconds) {
        return std::accumulate(seconds.begin(), seconds.end(), 0.0) * 1e9 / kLines;
    };
    state.counters["off ns/line"] = nanoseconds(off);
    state.counters["compiled out ns/line"] = nanoseconds(without);
    g_ratio = nanoseconds(off) / nanoseconds(without);
    state.counters["ratio"] = g_ratio;
}

void On(benchmark::State& state) {
    CStoreOwner owner;
    CSocket product(owner);
    SetLogCategories(ReadLogCategories("L1Data"));
    double seconds = 0;
    for ([[maybe_unused]] auto _ : state) {
        seconds += SecondsOf(product, Lines());
        owner.Drain();
    }
    FlushLog();
    state.counters["on ns/line"] = seconds * 1e9 / kLines / static_cast<double>(state.iterations());
}

BENCHMARK(OffBesideCompiledOut)->Name("traffic log off beside compiled out")->Iterations(kPasses);
BENCHMARK(On)->Name("traffic log on, with its file")->Iterations(3);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const CTempFolder folder;
    SLogConfig config;
    config.folder = folder.Path();
    if (!ConfigureLog(config)) return 1;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    std::printf("off beside compiled out: ratio %.3f (bar %.2f)\n", g_ratio, kBar);
    return g_ratio <= kBar ? 0 : 1;
}
