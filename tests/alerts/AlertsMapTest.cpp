// SPDX-License-Identifier: MIT
#include "AlertsFixture.h"

#include <limits>
#include <stdexcept>

using namespace vx;
using namespace vx::test;

class CAlertsMapTest : public CAlertsFixture {
protected:
    bool Fires(std::string_view symbol, int index, double value) {
        return alerts.EvaluateFieldAlert(symbol, index, value, 0, 0, 0);
    }
};

TEST_F(CAlertsMapTest, AlertsThatDifferInWhatCountsStandInTheirOrderUntilTheyAreRemoved) {
    Add("IBM", "Last", ">", 10);
    Add("IBM", "Last", ">=", 10);
    Add("IBM", "Bid", ">", 10);
    Add("IBM", "Last", ">", 11);
    Add("IBM", "Last", ">", 10, true);
    for (const int index : {-1, 5}) alerts.Remove("IBM", index);
    ASSERT_EQ(alerts.Count("IBM"), 5);
    alerts.Remove("IBM", 1);
    EXPECT_EQ(alerts.Get("IBM")[1], Alert("Bid", ">", 10));
    EXPECT_EQ(announced["IBM"], 4);
    Add("ibm", "Last", ">", 10);
    alerts.RemoveSymbol("IBM");
    EXPECT_EQ(announced["IBM"], 0);
    alerts.Remove("ibm", 0);
    EXPECT_TRUE(alerts.IsEmpty()) << "the last alert takes its symbol along";
}

// The dialog is open while alerts fire: its OK puts the working copy in place of the live alerts.
TEST_F(CAlertsMapTest, WhatFiresOrIsArmedAgainMeanwhileDoesSoInTheWorkingCopyToo) {
    Add("IBM", "Last", ">", 10);
    Add("IBM", "Bid", ">", 10);
    Add("IBM", "News", "=", 1);
    alerts.CopyTo(EAlertMap::WorkingCopy);
    announced.clear();
    alerts.Remove("IBM", 1, EAlertMap::WorkingCopy); // Another order than that of the live ones.
    alerts.Add("IBM", Alert("Bid", ">", 10), EAlertMap::WorkingCopy);
    alerts.Add("ABC", Alert("Bid", "=", 1), EAlertMap::WorkingCopy);
    EXPECT_TRUE(announced.empty()) << "the working copy arms nothing";
    EXPECT_TRUE(Fires("IBM", 0, 11));
    EXPECT_TRUE(Fires("IBM", 1, 11));
    alerts.CheckNews("IBM,", "A headline");
    EXPECT_EQ(firedOrArmed, 3);
    EXPECT_EQ(firedAlerts, (CAlertArray{Alert("Last", ">", 10), Alert("Bid", ">", 10), Alert("News", "=", 1)}));
    EXPECT_EQ(news[0].headline, "A headline");
    alerts.ResetFromRecord("IBM,0,12.000000");
    alerts.Arm("IBM", 2);
    alerts.Arm("IBM", 7);
    EXPECT_EQ(firedOrArmed, 5);
    alerts.CopyTo(EAlertMap::Live);
    EXPECT_EQ(alerts.Save(), "ABC:Bid,=,1.000000,TRUE,FALSE,0,FALSE,;IBM:Last,>,12.000000,TRUE,FALSE,0,FALSE,;"
                             "IBM:News,=,1.000000,TRUE,FALSE,0,FALSE,;IBM:Bid,>,10.000000,FALSE,FALSE,0,FALSE,;");
    EXPECT_EQ(announced["ABC"], 1);
}

TEST_F(CAlertsMapTest, EachConditionFiresExactlyWhereItSays) {
    for (const auto& [condition, below, at, above] : {std::tuple{"equal to", false, true, false},
                                                      {"greater than", false, false, true},
                                                      {"greater than or equal to", false, true, true},
                                                      {"less than", true, false, false},
                                                      {"less than or equal to", true, true, false}})
        for (const auto& [value, fires] : {std::pair{0.2, below},
                                           {0.3, at},
                                           {0.1 + 0.2, above}, // No tolerance.
                                           {std::numeric_limits<double>::quiet_NaN(), false}}) {
            alerts.Clear(EAlertMap::Live);
            Add("IBM", "Last", condition, 0.3);
            EXPECT_EQ(Fires("IBM", 0, value), fires) << condition << ' ' << value;
        }
    alerts.Add("ODD", {1, 0, 0, 5, AlertFieldId("Last").value(), 5, 0, {}});
    EXPECT_FALSE(Fires("ODD", 0, 5));
    EXPECT_EQ(alerts.ArmedCount("ODD"), 0);
}

TEST_F(CAlertsMapTest, OnlyArmedAlertsOfNumbersCountAsArmed) {
    for (const char* field : {"Last", "Volume", "Tick Vol", "% Chg", "Split1 Ratio"}) Add("IBM", field, ">", 1);
    for (const char* field : {"News", "T Time", "Trade Date", "Type", "Trade Aggressor", "Div Amt", "Alerts"})
        Add("IBM", field, ">", 1);
    alerts.Add("IBM", {0, 0, 0, 1, AlertFieldId("Bid").value(), 1, 0, {}});
    for (const int32_t fieldId : {-2, 137, 1 << 30}) alerts.Add("IBM", {1, 0, 0, 7, fieldId, 1, 0, {}});
    EXPECT_EQ(alerts.Count("IBM"), 16);
    EXPECT_EQ(alerts.ArmedCount("IBM"), 5);
    EXPECT_EQ(announced["IBM"], 5);
}

TEST_F(CAlertsMapTest, ResettingSetsTheThresholdAndArms) {
    Add("IBM", "Last", ">", 10);
    Fires("IBM", 0, 11);
    alerts.CopyTo(EAlertMap::WorkingCopy);
    for (const char* record : {"", "IBM,0", "IBM,0,", "MSFT,0,5"})
        EXPECT_FALSE(alerts.ResetFromRecord(record)) << record;
    for (const int index : {-1, 1}) {
        EXPECT_THROW(alerts.SetEnabled("IBM", index, true), std::invalid_argument) << index;
        EXPECT_THROW(alerts.ResetFromRecord("IBM," + std::to_string(index) + ",5"), std::invalid_argument) << index;
    }
    EXPECT_EQ(announced["IBM"], 0);
    EXPECT_TRUE(alerts.ResetFromRecord("IBM,0,12.500000"));
    EXPECT_EQ(alerts.Get("IBM")[0], Alert("Last", ">", 12.5));
    EXPECT_EQ(announced["IBM"], 1);
}

TEST_F(CAlertsMapTest, NewsFiresTheArmedNewsAlertsOfTheNamedSymbols) {
    const A_INFO loud{1, 1, 1, 1, AlertFieldId("News").value(), 0, 2, "bell.wav"};
    for (const char* symbol : {"IBM", "MSFT", "ABC"}) {
        Add(symbol, "Last", ">", 10);
        alerts.Add(symbol, loud);
    }
    alerts.CheckNews("XYZ,MSFT,,IBM,MSFT,");
    ASSERT_EQ(news.size(), 2u);
    EXPECT_EQ(news[0].symbol, "MSFT");
    EXPECT_EQ(news[1].symbol, "IBM");
    EXPECT_EQ(std::tuple(news[1].soundType, news[1].loopSound, news[1].soundFile, news[1].index, news[1].isNews),
              std::tuple(2, 1, "bell.wav", 1, true));
    EXPECT_EQ(alerts.Get("IBM")[1].enabled, 0u);
    EXPECT_EQ(announced["IBM"], 1) << "the other alert stays armed";
    alerts.CheckNews("IBM,");
    EXPECT_EQ(news.size(), 2u);
}
