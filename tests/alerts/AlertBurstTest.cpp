// SPDX-License-Identifier: MIT
// From a data line to a fired alert, without a window: the store, its queue of changes, and a listener that judges the
// alerts whenever the queue is drained, as a watchlist does.

#include "AlertsFixture.h"

#include "base/fields/FundamentalFields.h"
#include "data/catalogue/UpdateFields.h"
#include "data/record/ChangeQueue.h"
#include "data/store/L1DataStore.h"
#include "support/Allocations.h"
#include "support/LineGenerator.h"

using namespace vx;
using namespace vx::test;

namespace {

using Fields = std::map<std::string, std::string>;

class CAlertsMapBurstTest : public CAlertsFixture, private CChangeWaker {
protected:
    void Watch(std::string_view symbol) {
        store.Watch(symbol, queue);
        store.SetArmedAlerts(symbol, alerts.ArmedCount(symbol));
        Beat();
    }
    void Update(std::string_view symbol, const Fields& fields) {
        std::string line = "Q," + std::string(symbol) + ',';
        for (size_t slot = 1; slot < kUpdateFieldCount; ++slot) {
            const auto field = fields.find(std::string(kUpdateFields[slot].name));
            line += (field == fields.end() ? std::string{} : field->second) + ',';
        }
        store.OnLevel1Message(line);
    }
    /// The posted wake arrives: once for a whole burst.
    void Beat() { Judge(); }
    size_t Judged() const { return m_judged; }

    CChangeQueue queue{*this};
    CL1DataStore store;

private:
    void ChangesWait() override {}
    void PostPaint() override {}
    void DrainNow() override { Judge(); }
    void OnAlertsChanged(std::string_view symbol, int armed) override { store.SetArmedAlerts(symbol, armed); }
    void Judge() {
        queue.DrainUrgent([&](const SRecordIds& notice) {
            ++m_judged;
            if (const CSymbolRec* record = store.FindById(notice.id1, notice.id2)) alerts.Evaluate(*record);
        });
    }

    size_t m_judged = 0;
};

} // namespace

TEST_F(CAlertsMapBurstTest, EveryValueOfABurstIsJudgedInItsOrderAndOfItsMoment) {
    for (int i = 0; i < 100; ++i) Add("IBM", "Last", "=", 99 - i);
    Watch("IBM");
    for (int i = 0; i < 100; ++i)
        Update("IBM", {{"Last", std::to_string(i)}, {"Bid", std::to_string(i - 1)}, {"Ask", std::to_string(i + 1)}});
    Beat();
    ASSERT_EQ(posted.size(), 100u);
    for (int i = 0; i < 100; ++i) {
        const SAlertRecord notice = ReadAlertRecord(posted[static_cast<size_t>(i)]);
        EXPECT_EQ((std::vector<double>{notice.value, notice.last, notice.bid, notice.ask}),
                  (std::vector<double>{i * 1.0, i * 1.0, i - 1.0, i + 1.0}));
    }
    EXPECT_EQ(alerts.ArmedCount("IBM"), 0);
}

TEST_F(CAlertsMapBurstTest, WithoutArmedAlertsABurstIsJudgedOnce) {
    Add("IBM", "News", "=", 1);
    Watch("IBM");
    const size_t before = Judged();
    for (int i = 1; i <= 100; ++i) Update("IBM", {{"Last", std::to_string(i)}});
    Beat();
    EXPECT_EQ(Judged() - before, 1u);

    Add("IBM", "Last", "=", 150);
    for (int i = 101; i <= 200; ++i) Update("IBM", {{"Last", std::to_string(i)}});
    Beat();
    EXPECT_EQ(posted.size(), 1u) << "an alert armed while the symbol is watched misses nothing";
    EXPECT_EQ(Judged() - before, 1u + 50u + 1u) << "and once it has fired, bursts are judged once again";
}

TEST_F(CAlertsMapBurstTest, EveryKindOfNumberIsJudgedAsItsCellShowsIt) {
    Add("IBM", "Volume", "=", 4e9);
    Add("IBM", "Tick Vol", "=", -7);
    Add("IBM", "% Chg", "=", 1.25);
    Add("IBM", "NAV", "<", 1); // Never set, which counts as zero once any data came.
    Add("IBM", "Beta", "=", 1.5);
    Watch("IBM");
    Update("IBM", {{"Total Volume", "4000000000"}, {"Last Size", "-7"}, {"Percent Change", "0.0125"}});
    Beat();
    EXPECT_EQ(posted.size(), 4u);
    Add("GE", "Last", "<", 1);
    Watch("GE");
    store.OnLevel1Message("F,GE,5,12.5,");
    Beat();
    EXPECT_EQ(alerts.ArmedCount("GE"), 1) << "no quote has come";
    std::string line = "F,IBM,";
    for (size_t slot = 1; slot < FundamentalSlot("Beta"); ++slot) line += ',';
    store.OnLevel1Message(line + "1.5,");
    Beat();
    EXPECT_EQ(alerts.ArmedCount("IBM"), 0);
}

TEST_F(CAlertsMapBurstTest, JudgingAllocatesNothingWhileNothingFires) {
    CLineGenerator generator(20, 7);
    std::vector<std::string> lines;
    for (int i = 0; i < 2000; ++i) lines.push_back(generator.Next());
    for (const std::string& symbol : generator.Symbols()) {
        for (int i = 0; i < 10; ++i) Add(symbol, i % 2 == 0 ? "Last" : "Div Yield", ">", 1e12 + i);
        Watch(symbol);
    }
    const auto run = [&] {
        for (const std::string& line : lines) store.OnLevel1Message(line);
        Beat();
    };
    run();
    const size_t judgedBefore = Judged();
    const size_t before = Allocations();
    run();
    EXPECT_EQ(Allocations() - before, 0u);
    EXPECT_EQ(Judged() - judgedBefore, lines.size()) << "once for every line";
}
