#include "vxconnect/Peer.h"

#include <gtest/gtest.h>

namespace vx::sim {
namespace {

// The client reads everything, the test moves the clock.
class MarketFeed : public BoardTest {
protected:
    MarketFeed() : BoardTest(size_t{1} << 20) {}

    void RunTo(MarketMs time) {
        while (m_feed.Clock().Now() < time) {
            m_feed.RunTo(std::min<MarketMs>(m_feed.Clock().Now() + 100, time));
            m_client->Flush();
            m_peer->Read();
        }
    }
};

TEST_F(MarketFeed, EventsComeAtTheirOwnTimes) {
    Command("wIBM\nwF\nwSPY\n", 3);
    for (MarketMs time = 250; time < 30'000; time += 250) {
        RunTo(time);
        for (const char* symbol : {"IBM", "F", "SPY"}) {
            ASSERT_LE(Find(symbol).Now(), time);
            ASSERT_GE(Find(symbol).Next(), time);
        }
    }
    EXPECT_GT(m_feed.EventCount(), 30'000u / 900 * 3 / 2);
    EXPECT_EQ(m_feed.Clock().Text(), "20240131 10:00:29");
}

TEST_F(MarketFeed, StepMovesTheClockToTheNextEvent) {
    Command("wIBM\nwF\n", 2);
    MarketMs before = 0;
    for (uint64_t i = 1; i <= 200'000; ++i) { // Several sessions.
        const MarketMs next = std::min(Find("IBM").Next(), Find("F").Next());
        m_feed.Step();
        ASSERT_EQ(m_feed.Clock().Now(), next);
        ASSERT_EQ(m_feed.EventCount(), i);
        ASSERT_GE(next, before);
        before = next;
    }
    EXPECT_EQ(m_feed.Clock().Date(), Find("F").Date());
}

TEST_F(MarketFeed, SymbolUnwatchedForAMinuteIsPutForwardAndAShorterPauseIsNone) {
    Command("wIBM\nwF\n", 2);
    RunTo(20'000);
    const MarketMs stood = Find("IBM").Now();
    Command("rIBM\n", 1);
    RunTo(50'000);
    Command("wIBM\n", 2);
    EXPECT_EQ(Find("IBM").Now(), stood);
    RunTo(60'000);
    EXPECT_LT(Find("IBM").Now(), 31'000) << "it went on where it stood, at its own pace";
    EXPECT_GT(Find("IBM").Now(), 27'000);
    Command("rIBM\n", 1);
    const MarketMs twoSessionsLater = 2 * kSessionMs + 60'000;
    m_feed.RunTo(twoSessionsLater);
    m_client->Flush();
    Command("wIBM\n", 2);
    EXPECT_EQ(Find("IBM").Now(), twoSessionsLater);
    EXPECT_EQ(Find("IBM").Date(), m_feed.Clock().Date());
    EXPECT_EQ(Find("IBM").Date(), 20240202);
}

} // namespace
} // namespace vx::sim
