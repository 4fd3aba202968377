// SPDX-License-Identifier: MIT
#include "data/store/MarketClock.h"

#include <gtest/gtest.h>

using namespace vx;

TEST(CMarketClock, TakesTimesAndIgnoresEverythingElse) {
    CMarketClock clock;
    EXPECT_TRUE(clock.OnTimeMessage("T,20240131 09:30:05"));
    for (const char* line :
         {"", "T", "T,", "T,20240131", "T,20240131 9:30:05", "T,20240231 09:30:05", "T,20240131 24:00:00",
          "T,20240131 09:61:05", "T,2024013a 09:30:05", "X,20240131 09:30:05", "T,20240131 09:30:05x"})
        EXPECT_FALSE(clock.OnTimeMessage(line)) << line;
    EXPECT_EQ(clock.Text(), "01/31/24 09:30:05");
}
