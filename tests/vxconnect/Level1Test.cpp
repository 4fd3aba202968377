#include "vxconnect/Peer.h"

#include <gtest/gtest.h>

namespace vx::sim {
namespace {

using Level1 = ServerTest;

TEST_F(Level1, WatchGivesFundamentalsThenSummaryThenUpdates) {
    m_options.rate = 2000;
    Start();
    const auto peer = Level1Peer("wIBM\nwF\n");
    ASSERT_TRUE(WaitUntil([&] {
        peer->Read();
        return peer->Text().size() > 20'000;
    }));
    const std::vector<std::string> lines = peer->TakeLines();
    std::vector<std::string> kinds;
    for (const std::string& line : lines) kinds.push_back(line.substr(0, line.find(',', 2) + 1));
    kinds.resize(4);
    EXPECT_EQ(kinds, (std::vector<std::string>{"F,IBM,", "P,IBM,", "F,F,", "P,F,"}));
    CMergedRecord record;
    record.Merge(lines[1]);
    const std::string first = record.Get(EField::TotalVolume);
    for (const std::string& line : lines)
        if (line.substr(0, 6) == "Q,IBM,") record.Merge(line);
    EXPECT_GT(std::stoll(record.Get(EField::TotalVolume)), std::stoll(first));
}

TEST_F(Level1, UnknownSymbolsAreNamedAsTheyWereAskedFor) {
    Start();
    const auto peer = Level1Peer("wNOSUCH\r\nwibm\nw \xC4ther\nwA,B\nS,REGON,IBM\nS,WHAT\nhello\nrNOPE\nwNOSUCH\n");
    for (const char* answer : {"n,NOSUCH", "n,ibm", "n, \xC4ther", "E,!SYNTAX_ERROR!,", "E,!SYNTAX_ERROR!,",
                               "E,!SYNTAX_ERROR!,", "n,NOSUCH"})
        EXPECT_EQ(peer->TakeLine(""), answer);
}

TEST_F(Level1, LimitCountsSymbolsOverAllClientsAndUnwatchingMakesRoom) {
    m_options.limit = 2;
    Start();
    const auto first = Level1Peer("wIBM\nwGE\nwIBM\n");
    EXPECT_EQ(first->TakeLine("F,GE,").substr(0, 5), "F,GE,");
    const auto second = Level1Peer("wF\nwGE\n");
    EXPECT_EQ(second->TakeLine(""), "S,SYMBOL LIMIT REACHED,F");
    EXPECT_EQ(second->TakeLine("").substr(0, 5), "F,GE,");
    first->Send("rGE\nrIBM\n");
    ASSERT_TRUE(WaitUntil([&] { return Server().Board().WatchedCount() == 1; }));
    second->Send("wF\n");
    EXPECT_EQ(second->TakeLine("F,").substr(0, 4), "F,F,");
    EXPECT_EQ(Server().Board().WatchedCount(), 2u);
}

TEST_F(Level1, UnwatchedSymbolFallsSilentAndAClosedClientWatchesNothing) {
    m_options.rate = 20'000;
    Start();
    auto peer = Level1Peer("wIBM\nwGE\n");
    peer->TakeLine("Q,IBM,");
    peer->Send("rIBM\nwKO\n");
    peer->TakeLine("F,KO,");
    const uint64_t events = Server().Board().EventCount();
    ASSERT_TRUE(WaitUntil([&] { return Server().Board().EventCount() > events + 500; }));
    peer->Read();
    for (const std::string& line : peer->TakeLines()) EXPECT_NE(line.substr(0, 6), "Q,IBM,");
    peer.reset();
    EXPECT_TRUE(WaitUntil([&] { return Server().Board().WatchedCount() == 0; }));
}

TEST_F(Level1, FieldListIsHonouredAndUpdatesOutsideItAreNotSent) {
    m_options.rate = 50'000;
    Start();
    CPeer peer(Server().Level1Port());
    peer.Send("S,SELECT UPDATE FIELDS,Last,Symbol,Nonsense,High\nwIBM\n");
    EXPECT_THAT(peer.TakeLine("P,"), testing::MatchesRegex("P,[0-9.]+,IBM,,[0-9.]+,"));
    std::string before;
    for (int i = 0; i < 50; ++i) {
        const std::string line = peer.TakeLine("Q,");
        EXPECT_THAT(line, testing::MatchesRegex("Q,[0-9.]*,IBM,,[0-9.]*,"));
        EXPECT_NE(line, "Q,,IBM,,,");
    }
}

TEST_F(Level1, SameSeedTellsTheSameStoryWhateverElseHappens) {
    m_options.rate = 3000;
    const auto story = [&](std::string_view othersFirst, std::string_view othersLater) {
        Start();
        const auto peer = Level1Peer(std::string(othersFirst) + "wIBM\n" + std::string(othersLater));
        std::vector<std::string> lines = {peer->TakeLine("F,IBM,"), peer->TakeLine("P,IBM,")};
        while (lines.size() < 300) lines.push_back(peer->TakeLine("Q,IBM,"));
        return lines;
    };
    const std::vector<std::string> alone = story("", "");
    EXPECT_EQ(story("wF\nwGE\n", "wSPY\n"), alone);
    m_options.seed = 2;
    EXPECT_NE(story("", ""), alone);
}

TEST_F(Level1, TimeComesEverySecondAndSharedSymbolsReachEveryone) {
    m_options.rate = 200;
    Start();
    const auto first = Level1Peer("wIBM\n"), second = Level1Peer("wIBM\n");
    EXPECT_THAT(first->TakeLine("T,"), testing::MatchesRegex("T,20240131 1[0-9]:[0-9][0-9]:[0-9][0-9]"));
    const std::string update = first->TakeLine("Q,IBM,");
    EXPECT_EQ(second->TakeLine(update), update);
}

} // namespace
} // namespace vx::sim
