// Counts every allocation of the program, and is one of its own for that.

#include "AlertsFixture.h"

#include "data/ChangeQueue.h"
#include "data/L1DataStore.h"
#include "support/LineGenerator.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<size_t> g_allocations = 0;

void* Allocate(size_t size) {
    ++g_allocations;
    if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}

} // namespace

void* operator new(size_t size) { return Allocate(size); }
void* operator new[](size_t size) { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, size_t) noexcept { std::free(memory); }

using namespace vx;
using namespace vx::test;

class AlertAllocation : public AlertsTest, protected CChangeWaker {
protected:
    void PostPaint() override {}
    void DrainNow() override {
        queue.Drain([&](const SChangeNotice& notice) {
            alerts.Evaluate(*store.FindById(notice.id1, notice.id2));
            ++judged;
        });
    }

    CChangeQueue queue{*this};
    CL1DataStore store;
    size_t judged = 0;
};

TEST_F(AlertAllocation, JudgingAllocatesNothingWhileNothingFires) {
    CLineGenerator generator(20, 7);
    std::vector<std::string> lines;
    for (int i = 0; i < 2000; ++i) lines.push_back(generator.Next());
    for (const std::string& symbol : generator.Symbols()) {
        for (int i = 0; i < 10; ++i) Add(symbol, i % 2 == 0 ? "Last" : "Div Yield", ">", 1e12 + i);
        store.Watch(symbol, queue);
        store.SetArmedAlerts(symbol, alerts.ArmedCount(symbol));
    }
    const auto run = [&] {
        for (const std::string& line : lines) store.OnLevel1Message(line);
        DrainNow();
    };
    run();
    const size_t judgedBefore = judged;
    const size_t before = g_allocations;
    run();
    EXPECT_EQ(g_allocations - before, 0u);
    EXPECT_EQ(judged - judgedBefore, lines.size()) << "once for every line";
}
