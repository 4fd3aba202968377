// SPDX-License-Identifier: MIT
#include "news/HeadlineLog.h"

#include <gtest/gtest.h>

using namespace vx;

TEST(CHeadlineLog, KeepsEveryHeadlineWhoeverItIsAbout) {
    CHeadlineLog log;
    log.Add("N,SIM,1001,IBM:MSFT,20240131 093000,Up, up, and %s <b>away</b>");
    log.Add("N,SIM,1002,IBM,20240131 093000"); // No headline: nothing.
    log.Add("N,SIM,1003,,today,of nobody");
    ASSERT_EQ(log.Size(), 2u);
    EXPECT_EQ(log.Find(1)->text, "Up, up, and %s <b>away</b>");
    EXPECT_EQ(log.Find(log.LastNumber())->text, "of nobody");
    EXPECT_TRUE(log.Find(1)->IsAbout("MSFT"));
    for (const char* symbol : {"", "IB", "SFT", "IBM:MSFT"}) EXPECT_FALSE(log.Find(1)->IsAbout(symbol)) << symbol;

    log.Clear();
    EXPECT_EQ(log.Find(2), nullptr);
    log.Add("N,SIM,1004,IBM,today,the next list's");
    EXPECT_EQ(log.FirstNumber(), 3u) << "a window tells by the number what it has seen";
    EXPECT_EQ(log.Find(3)->text, "the next list's");
    // It is bounded in number and in bytes.
    for (size_t i = 0; i < CHeadlineLog::kMostHeadlines + 5; ++i) log.Add("N,SIM,1,IBM,today," + std::to_string(i));
    EXPECT_EQ(log.Size(), CHeadlineLog::kMostHeadlines);
    EXPECT_EQ(log.Find(log.FirstNumber())->text, "5");
    for (int i = 0; i < 1000; ++i) log.Add("N,SIM,1,IBM,today," + std::string(60'000, 'x'));
    EXPECT_LE(log.Bytes(), CHeadlineLog::kMostBytes);
    EXPECT_GT(log.Size(), 100u);
}
