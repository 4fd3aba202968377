// From a data line to a fired alert, without a window: the store, its queue of changes, and a listener that judges the
// alerts whenever the queue is drained, as a watchlist does.

#include "AlertsFixture.h"

#include "data/ChangeQueue.h"
#include "data/FundamentalFields.h"
#include "data/L1DataStore.h"
#include "data/UpdateFields.h"

using namespace vx;
using namespace vx::test;

namespace {

using Fields = std::map<std::string, std::string>;

class AlertBurst : public AlertsTest, private CChangeWaker {
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
    void PostPaint() override {}
    void DrainNow() override { Judge(); }
    void OnAlertsChanged(std::string_view symbol, int armed) override { store.SetArmedAlerts(symbol, armed); }
    void Judge() {
        queue.Drain([&](const SChangeNotice& notice) {
            ++m_judged;
            if (const CSymbolRec* record = store.FindById(notice.id1, notice.id2)) alerts.Evaluate(*record);
        });
    }

    size_t m_judged = 0;
};

std::string Price(int cents) {
    std::string out;
    return out + std::to_string(cents / 100) + '.' + std::to_string(cents % 100 / 10) + std::to_string(cents % 10);
}

} // namespace

TEST_F(AlertBurst, ATouchInTheMiddleOfAHundredUpdatesFiresWithItsOwnValues) {
    Add("IBM", "Last", ">=", 20);
    Watch("IBM");
    for (int i = 0; i < 100; ++i) {
        const int cents = i == 50 ? 2000 : 1000 + i;
        Update("IBM", {{"Last", Price(cents)}, {"Bid", Price(cents - 5)}, {"Ask", Price(cents + 5)}});
    }
    Beat();
    EXPECT_EQ(posted,
              (std::vector<std::string>{
                  "greater than or equal to,IBM,20.000000,20.000000,19.950000,20.050000,20.000000,Last,0,0,,0,,"}));
}

TEST_F(AlertBurst, EveryValueIsJudgedInItsOrder) {
    for (int i = 0; i < 100; ++i) Add("IBM", "Volume", "=", 99 - i);
    Watch("IBM");
    for (int i = 0; i < 100; ++i) Update("IBM", {{"Total Volume", std::to_string(i)}});
    Beat();
    ASSERT_EQ(posted.size(), 100u);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(ReadAlertNotice(posted[static_cast<size_t>(i)]).value, i);
    EXPECT_EQ(alerts.ArmedCount("IBM"), 0);
}

TEST_F(AlertBurst, WithoutArmedAlertsABurstIsJudgedOnce) {
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

TEST_F(AlertBurst, AlertsThatComeAndGoAreFollowed) {
    Watch("IBM");
    const auto fires = [&] {
        posted.clear();
        Update("IBM", {{"Last", "1"}});
        Beat();
        return posted.size();
    };
    EXPECT_EQ(fires(), 0u);
    Add("MSFT", "Last", "=", 1);
    EXPECT_EQ(fires(), 0u);
    Add("IBM", "Last", "=", 1);
    EXPECT_EQ(fires(), 1u);
    alerts.ResetFromRecord("IBM,0,1");
    alerts.CopyTo(EAlertMap::WorkingCopy);
    alerts.RemoveSymbol("IBM");
    EXPECT_EQ(fires(), 0u);
    alerts.CopyTo(EAlertMap::Live);
    EXPECT_EQ(fires(), 1u);
    alerts.Clear(EAlertMap::Live);
    alerts.Load("IBM:Last,>,0,TRUE;IBM:Last,=,1,FALSE;IBM:Last,=,1,TRUE;");
    EXPECT_EQ(fires(), 2u);
    alerts.Clear(EAlertMap::Live);
    EXPECT_EQ(fires(), 0u);
}

TEST_F(AlertBurst, EveryKindOfNumberIsJudgedAsItsCellShowsIt) {
    const std::map<std::string, std::pair<std::string, double>> columns = {
        {"Volume", {"Total Volume", 4e9}},
        {"Tick Vol", {"Last Size", -7}},
        {"% Chg", {"Percent Change", 0.0125}},
        {"Bid Market Center", {"Bid Market Center", 11}}};
    for (const auto& [column, field] : columns) Add("IBM", column, "=", column == "% Chg" ? 1.25 : field.second);
    Add("IBM", "Beta", "=", 1.5);
    Watch("IBM");
    Update("IBM", {{"Total Volume", "4000000000"},
                   {"Last Size", "-7"},
                   {"Percent Change", "0.0125"},
                   {"Bid Market Center", "11"}});
    Beat();
    EXPECT_EQ(posted.size(), columns.size());
    EXPECT_EQ(alerts.ArmedCount("IBM"), 1) << "the fundamental one";
    std::string line = "F,IBM,";
    for (size_t slot = 1; slot < FundamentalSlot("Beta"); ++slot) line += ',';
    store.OnLevel1Message(line + "1.5,");
    Beat();
    EXPECT_EQ(alerts.ArmedCount("IBM"), 0);
}

TEST_F(AlertBurst, ASymbolThatNeverReceivedDataFiresNothing) {
    Add("IBM", "Last", "<", 10);
    Watch("IBM");
    EXPECT_TRUE(posted.empty());
    Update("IBM", {{"Bid", "5"}});
    Beat();
    EXPECT_EQ(posted.size(), 1u) << "with data, a price that never came counts as zero";
}

TEST_F(AlertBurst, SeveralAlertsFireOnOneUpdateInTheirOrder) {
    Add("IBM", "Last", ">", 10);
    Add("IBM", "Bid", ">", 10);
    Add("IBM", "Last", ">", 20);
    Add("IBM", "Last", ">", 15);
    Watch("IBM");
    Update("IBM", {{"Last", "16"}});
    Beat();
    EXPECT_EQ(posted,
              (std::vector<std::string>{"greater than,IBM,16.000000,16.000000,0.000000,0.000000,10.000000,Last,0,0,,0,"
                                        "20.000000-15.000000-,",
                                        "greater than,IBM,16.000000,16.000000,0.000000,0.000000,15.000000,Last,0,0,,3,"
                                        "10.000000-20.000000-,"}));
    EXPECT_EQ(alerts.ArmedCount("IBM"), 2);
}

TEST_F(AlertBurst, ARegionalQuoteHasAlertsOfItsOwn) {
    Add("IBM--X", "Bid", "=", 12);
    Watch("IBM--X");
    for (const char* bid : {"11", "12", "13"})
        store.OnLevel1Message("R,IBM,X," + std::string(bid) + ",100,09:30:00b,14,200,09:30:00a,12.5,300,09:30:00t,");
    Update("IBM", {{"Bid", "12"}});
    Beat();
    ASSERT_EQ(posted.size(), 1u);
    const SAlertNotice notice = ReadAlertNotice(posted[0]);
    EXPECT_EQ(notice.symbol, "IBM--X");
    EXPECT_EQ(notice.ask, 14);
    EXPECT_EQ(notice.last, 12.5);
}
