#include "vxconnect/WatchBoard.h"
#include "vxconnect/Level1Client.h"
#include "vxconnect/Peer.h"

#include <gtest/gtest.h>

#include <sys/socket.h>

namespace vx::sim {
namespace {

// A board with one client that reads everything, and a clock that the test moves.
class WatchBoard : public testing::Test {
protected:
    WatchBoard() {
        NeedEventLoop();
        int sockets[2];
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, sockets), 0);
        m_client = std::make_unique<CLevel1Client>(sockets[0], size_t{1} << 20, m_board, uint16_t{5009});
        m_peer = std::make_unique<CPeer>(sockets[1], true);
    }

    void Command(std::string_view command, size_t watchesAfter) {
        m_peer->Send(command);
        ASSERT_TRUE(WaitUntil([&] {
            m_peer->Read();
            return m_client->WatchCount() == watchesAfter;
        }));
    }
    std::vector<std::string> LinesUpTo(MarketMs time) {
        while (m_board.Clock().Now() < time) {
            m_board.RunTo(std::min<MarketMs>(m_board.Clock().Now() + 100, time));
            m_client->Flush();
            m_peer->Read();
        }
        return m_peer->TakeLines();
    }
    const CInstrument& Find(std::string_view symbol) { return m_market.At(m_market.Find(symbol).value()); }

    CMarket m_market{1, 0, kFirstSessionDate};
    CWatchBoard m_board{m_market, 1000};
    std::unique_ptr<CLevel1Client> m_client;
    std::unique_ptr<CPeer> m_peer;
};

TEST_F(WatchBoard, EventsComeAtTheirOwnTimes) {
    Command("wIBM\nwF\nwSPY\n", 3);
    for (MarketMs time = 250; time < 30'000; time += 250) {
        LinesUpTo(time);
        for (const char* symbol : {"IBM", "F", "SPY"}) {
            ASSERT_LE(Find(symbol).Now(), time);
            ASSERT_GE(Find(symbol).Next(), time);
        }
    }
    EXPECT_GT(m_board.EventCount(), 30'000u / 900 * 3 / 2);
    EXPECT_EQ(m_board.Clock().Text(), "20240131 10:00:29");
}

TEST_F(WatchBoard, StepMovesTheClockToTheNextEvent) {
    Command("wIBM\nwF\n", 2);
    MarketMs before = 0;
    for (uint64_t i = 1; i <= 200'000; ++i) { // Several sessions.
        const MarketMs next = std::min(Find("IBM").Next(), Find("F").Next());
        m_board.Step();
        ASSERT_EQ(m_board.Clock().Now(), next);
        ASSERT_EQ(m_board.EventCount(), i);
        ASSERT_GE(next, before);
        before = next;
    }
    EXPECT_EQ(m_board.Clock().Date(), Find("F").Date());
}

TEST_F(WatchBoard, SymbolUnwatchedForAMinuteIsPutForwardAndAShorterPauseIsNone) {
    Command("wIBM\nwF\n", 2);
    LinesUpTo(20'000);
    const MarketMs stood = Find("IBM").Now();
    Command("rIBM\n", 1);
    LinesUpTo(50'000);
    Command("wIBM\n", 2);
    EXPECT_EQ(Find("IBM").Now(), stood);
    LinesUpTo(60'000);
    EXPECT_LT(Find("IBM").Now(), 31'000) << "it went on where it stood, at its own pace";
    EXPECT_GT(Find("IBM").Now(), 27'000);
    Command("rIBM\n", 1);
    const MarketMs twoSessionsLater = 2 * kSessionMs + 60'000;
    m_board.RunTo(twoSessionsLater);
    m_client->Flush();
    Command("wIBM\n", 2);
    EXPECT_EQ(Find("IBM").Now(), twoSessionsLater);
    EXPECT_EQ(Find("IBM").Date(), m_board.Clock().Date());
    EXPECT_EQ(Find("IBM").Date(), 20240202);
}

} // namespace
} // namespace vx::sim
