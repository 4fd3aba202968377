#include "AlertsFixture.h"

#include "data/ChangeQueue.h"
#include "data/L1DataStore.h"
#include "support/Allocations.h"
#include "support/LineGenerator.h"

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
    const size_t before = Allocations();
    run();
    EXPECT_EQ(Allocations() - before, 0u);
    EXPECT_EQ(judged - judgedBefore, lines.size()) << "once for every line";
}
