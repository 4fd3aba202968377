// SPDX-License-Identifier: MIT
// From a data line to a fired alert, without a window: the store, its queue of changes, and a listener that judges the
// alerts whenever the queue is drained, as a watchlist does.

#include "AlertsFixture.h"

#include "support/Allocations.h"
#include "support/FakeFeed.h"

#include <cmath>
#include <random>

using namespace vx;
using namespace vx::test;

namespace {

class CAlertsMapBurstTest : public CAlertsFixture {
protected:
    CAlertsMapBurstTest() {
        window.onChange = [this](const CSymbolRec& record) {
            ++judged;
            alerts.Evaluate(record);
        };
    }
    void Watch(std::string_view symbol) {
        store.Watch(symbol, window.queue);
        store.SetArmedAlerts(symbol, alerts.ArmedCount(symbol));
        Beat();
    }
    void Update(std::string_view symbol, std::string_view fields) {
        store.OnLevel1Message(DataLine('Q', symbol, fields));
    }
    /// The posted wake arrives: once for a whole burst.
    void Beat() { window.DrainNow(); }

    CL1DataStore store;
    CFakeWindow window{store};
    size_t judged = 0;

private:
    void OnAlertsChanged(std::string_view symbol, int armed) override { store.SetArmedAlerts(symbol, armed); }
};

} // namespace

TEST_F(CAlertsMapBurstTest, EveryValueOfABurstIsJudgedInItsOrderAndOfItsMoment) {
    for (int i = 0; i < 100; ++i) Add("IBM", "Last", "=", 99 - i);
    Watch("IBM");
    for (int i = 0; i < 100; ++i) Update("IBM", fmt::format("Last={},Bid={},Ask={}", i, i - 1, i + 1));
    Beat();
    ASSERT_EQ(posted.size(), 100u);
    for (int i = 0; i < 100; ++i) {
        const SAlertRecord notice = ReadAlertRecord(posted[static_cast<size_t>(i)]);
        EXPECT_EQ((std::vector<double>{notice.value, notice.last, notice.bid, notice.ask}),
                  (std::vector<double>{i * 1.0, i * 1.0, i - 1.0, i + 1.0}));
    }
    EXPECT_EQ(alerts.ArmedCount("IBM"), 0);
}

TEST_F(CAlertsMapBurstTest, WithoutArmedAlertsNothingIsJudged) {
    Add("IBM", "News", "=", 1);
    Watch("IBM");
    const size_t before = judged;
    for (int i = 1; i <= 100; ++i) Update("IBM", fmt::format("Last={}", i));
    Beat();
    EXPECT_EQ(judged, before);

    Add("IBM", "Last", "=", 150);
    for (int i = 101; i <= 200; ++i) Update("IBM", fmt::format("Last={}", i));
    Beat();
    EXPECT_EQ(posted.size(), 1u) << "an alert armed while the symbol is watched misses nothing";
    EXPECT_EQ(judged - before, 50u) << "and once it has fired, nothing is judged again";
}

// Thresholds are kept in order and not compared one by one; a plain loop over the alerts says what must fire.
TEST_F(CAlertsMapBurstTest, FiresWhatAPlainLoopFiresWhileAlertsComeGoAndAreArmed) {
    constexpr std::array kNames = {std::pair("Last", "Last"), std::pair("Bid", "Bid"),
                                   std::pair("Volume", "Total Volume")};
    constexpr std::array kConditions = {"=", ">", ">=", "<", "<="};
    std::mt19937 random(7);
    const auto draw = [&](size_t below) { return random() % below; };
    CAlertArray plain;
    std::map<int32_t, double> values;
    CAlertArray expected;
    bool waits = false;
    const auto canFire = [](const A_INFO& alert) { return alert.enabled != 0 && !std::isnan(alert.value); };
    const auto judge = [&] {
        for (A_INFO& alert : plain) {
            const double value = values[alert.fieldId];
            if (!canFire(alert) || !IsMet(MeetingResults(alert.condition), value, alert.value, alert.noZero != 0))
                continue;
            expected.push_back(alert);
            alert.enabled = 0;
        }
        waits = false;
    };
    const auto update = [&](size_t field, int value) {
        if (waits && std::ranges::any_of(plain, canFire)) judge();
        values[*AlertFieldId(kNames[field].first)] = value;
        waits = waits || std::ranges::any_of(plain, canFire);
        Update("IBM", fmt::format("{}={}", kNames[field].second, value));
    };
    Watch("IBM");
    for (size_t field = 0; field < kNames.size(); ++field) update(field, 5);
    for (int step = 0; step < 5000; ++step) {
        const size_t what = draw(12), at = plain.empty() ? 0 : draw(plain.size());
        if (what == 0 && plain.size() < 40) {
            const double threshold = draw(20) == 0 ? std::nan("") : static_cast<double>(draw(10));
            const A_INFO alert =
                Alert(kNames[draw(3)].first, kConditions[draw(kConditions.size())], threshold, draw(4) == 0);
            if (std::ranges::any_of(plain, [&](const A_INFO& other) { return IsSameAlert(other, alert); })) continue;
            plain.push_back(alert);
            alerts.Add("IBM", alert);
        } else if (what == 1 && plain.size() > 1) {
            plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(at));
            alerts.Remove("IBM", static_cast<int>(at));
        } else if (what < 5 && !plain.empty()) {
            plain[at].enabled = 1;
            alerts.Arm("IBM", static_cast<int>(at));
        } else if (what < 10) {
            update(draw(3), static_cast<int>(draw(10)));
        } else {
            if (waits) judge();
            Beat();
        }
        ASSERT_EQ(std::exchange(firedAlerts, {}), std::exchange(expected, {})) << "step " << step;
    }
    EXPECT_GT(firedOrArmed, 1000);
}

TEST_F(CAlertsMapBurstTest, EveryKindOfNumberIsJudgedAsItsCellShowsIt) {
    Add("IBM", "Volume", "=", 4e9);
    Add("IBM", "Tick Vol", "=", -7);
    Add("IBM", "% Chg", "=", 1.25);
    Add("IBM", "NAV", "<", 1); // Never set, which counts as zero once any data came.
    Add("IBM", "Beta", "=", 1.5);
    Watch("IBM");
    Update("IBM", "Total Volume=4000000000,Last Size=-7,Percent Change=0.0125");
    Beat();
    EXPECT_EQ(posted.size(), 4u);
    Add("GE", "Last", "<", 1);
    Watch("GE");
    store.OnLevel1Message("F,GE,5,12.5,");
    Beat();
    EXPECT_EQ(alerts.ArmedCount("GE"), 1) << "no quote has come";
    store.OnLevel1Message(DataLine('F', "IBM", "Beta=1.5"));
    Beat();
    EXPECT_EQ(alerts.ArmedCount("IBM"), 0);
}

TEST_F(CAlertsMapBurstTest, JudgingAllocatesNothingWhileNothingFires) {
    CFeedLines feed(20, 7);
    std::vector<std::string> lines;
    for (int i = 0; i < 2000; ++i) lines.push_back(feed.Next());
    for (const std::string& symbol : feed.Symbols()) {
        for (int i = 0; i < 10; ++i) Add(symbol, i % 2 == 0 ? "Last" : "Div Yield", ">", 1e12 + i);
        Watch(symbol);
    }
    const auto run = [&] {
        for (const std::string& line : lines) store.OnLevel1Message(line);
        Beat();
    };
    run();
    const size_t judgedBefore = judged;
    const size_t before = Allocations();
    run();
    EXPECT_EQ(Allocations() - before, 0u);
    EXPECT_EQ(judged - judgedBefore, lines.size()) << "once for every line";
}
