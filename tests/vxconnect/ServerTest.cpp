// SPDX-License-Identifier: MIT
// The ports as clients have them: what is answered, who is served, and what they are told.

#include "base/Number.h"
#include "vxconnect/Peer.h"
#include "vxconnect/market/RegionalQuotes.h"

namespace vx::sim {
namespace {

using Admin = ServerTest;
using Lookup = ServerTest;
using Level1 = ServerTest;
using ServerLife = ServerTest;

std::string StatsField(const std::string& line, size_t index) {
    const auto fields = SplitCountingTail(line, ',');
    return index < fields.size() ? std::string(fields[index]) : "(missing)";
}

TEST_F(Admin, StatusBecomesConnectedOnTheThirdLineAndWatchesAreToldOnChange) {
    m_options.limit = 77;
    Start();
    CPeer admin(Server().AdminPort());
    admin.Send("S,SET PROTOCOL,6.2\nS,SET CLIENT NAME,Tests\n");
    std::string line;
    for (const char* status : {"Not Connected", "Not Connected", "Connected"}) {
        line = admin.TakeLine("");
        EXPECT_EQ(SplitCountingTail(line, ',').size(), 21u) << line;
        EXPECT_EQ(StatsField(line, 12), status);
        EXPECT_EQ(StatsField(line, 10), "20240131 10:00:00");
    }
    const auto peer = Level1Peer("wIBM\nwGE\nwNOSUCH\n");
    ASSERT_TRUE(WaitUntil([&] { return StatsField(line = admin.TakeLine(""), 5) == "2"; }));
    EXPECT_EQ(StatsField(line, 4) + StatsField(line, 6), "771");
}

TEST_F(Lookup, TablesComeWholeOtherRequestsAreSyntaxErrorsAndTheEndFollowsTheReply) {
    Start();
    CPeer peer(Server().LookupPort());
    peer.Send("SLM\r\n");
    EXPECT_EQ(peer.TakeLine("7,"), "7,ALPHA,Alpha Stock Exchange,1,EQ");
    EXPECT_EQ(peer.TakeLine("!"), "!ENDMSG!,");
    EXPECT_EQ(peer.Text(), "");
    peer.Send("S,SET PROTOCOL,6.2\nS,SET CLIENT NAME,Tests\nslm\nSLMX\nnonsense\nSST\n");
    peer.EndSending();
    for (int i = 0; i < 3; ++i) EXPECT_EQ(peer.TakeLine(""), "!SYNTAX_ERROR!,");
    EXPECT_EQ(peer.TakeLine(""), "1,EQUITY,Equity");
    EXPECT_EQ(peer.TakeLine("3,"), "3,FUND,Fund");
    EXPECT_EQ(peer.TakeLine("!ENDMSG!"), "!ENDMSG!,");
    EXPECT_TRUE(IsClosed(peer));
}

class Search : public ServerTest {
protected:
    Search() { Start(); }
    // The lines of a reply on a connection that has set a protocol, without the end.
    std::vector<std::string> Reply(const std::string& request, const std::string& id) {
        if (!m_peer) {
            m_peer = std::make_unique<CPeer>(Server().LookupPort());
            m_peer->Send("S,SET PROTOCOL,6.2\r\n");
        }
        m_peer->Send(request + "," + id + "\r\n");
        std::vector<std::string> out;
        for (std::string line; (line = m_peer->TakeLine("")) != id + ",!ENDMSG!,"; out.push_back(line))
            if (line == "(none)") return {line};
        return out;
    }
    std::unique_ptr<CPeer> m_peer;
};

TEST_F(Search, FindsBySymbolAndByDescriptionWithFilters) {
    const auto results = [&](const std::string& fields) { return Reply("SBF," + fields, "LSearch"); };
    const auto bySymbol = results("s,ibm,,");
    ASSERT_GT(bySymbol.size(), 20u);
    EXPECT_EQ(bySymbol[0], "LSearch,LS,IBM,2,1,International Business Machines,");
    EXPECT_THAT(bySymbol, testing::Each(testing::StartsWith("LSearch,LS,IBM")));
    EXPECT_THAT(results("s,T,,")[0], testing::StartsWith("LSearch,LS,T,")) << "the exact one, not TSLA";
    EXPECT_THAT(results("s,IBM,e,64"), testing::ElementsAre(testing::StartsWith("LSearch,LS,IBM.D,64,1,")));
    EXPECT_THAT(results("d,crude oil march,t,7 9"),
                testing::ElementsAre("LSearch,LS,CLH24,43,7,Crude Oil March 2024,"));
    EXPECT_THAT(results("d,a,,"), testing::SizeIs(500));
    for (const char* nothing : {"s,,,", "d,  ,,", "s,\xFF,,", "s,IBM,t,99", "d,no, such, name,,"})
        EXPECT_THAT(results(nothing), testing::IsEmpty()) << nothing;
    for (const char* bad : {"x,a,,", "s,a,e,one"})
        EXPECT_THAT(results(bad), testing::ElementsAre("!SYNTAX_ERROR!,")) << bad << ": told, and ended";
}

TEST_F(Level1, HeadlinesReachThoseWhoAskedAndAgreeWithTheCounts) {
    m_options.rate = 20'000;
    Start();
    CPeer quiet(Server().Level1Port()), lookup(Server().LookupPort());
    quiet.Send("wIBM\n");
    const auto peer = Level1Peer("wIBM\n");
    const std::string headline = peer->TakeLine("N,");
    const auto fields = SplitCountingTail(headline, ',');
    ASSERT_GE(fields.size(), 6u) << headline;
    lookup.Send("S,SET PROTOCOL,6.2\r\nNSC,NO SUCH:" + std::string(fields[3]) + ",x,,20990101,LNewsCounts\r\n");
    EXPECT_THAT(lookup.TakeLine(""), testing::MatchesRegex("LNewsCounts,LN,<NewsCounts>(<symbol Name=\"[A-Z.]+\" "
                                                           "StoryCount=\"[1-9][0-9]*\"/>)+</NewsCounts>"));
    quiet.Read();
    EXPECT_EQ(quiet.Text().find("\nN,"), std::string::npos);
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
    EXPECT_THAT(first->TakeLine("F,GE,"), testing::StartsWith("F,GE,"));
    const auto second = Level1Peer("wF\nwGE\n");
    EXPECT_EQ(second->TakeLine(""), "S,SYMBOL LIMIT REACHED,F");
    EXPECT_THAT(second->TakeLine(""), testing::StartsWith("F,GE,"));
    first->Send("rGE\nrIBM\n");
    ASSERT_TRUE(WaitUntil([&] { return Server().Board().WatchedCount() == 1; }));
    second->Send("wF\n");
    EXPECT_THAT(second->TakeLine("F,"), testing::StartsWith("F,F,"));
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
    EXPECT_EQ(peer->Text().find("Q,IBM,"), std::string::npos);
    peer.reset();
    EXPECT_TRUE(WaitUntil([&] { return Server().Board().WatchedCount() == 0; }));
}

TEST_F(Level1, RegionalLinesComeForEveryRegionOnceAskedFor) {
    m_options.rate = 20'000;
    Start();
    const auto peer = Level1Peer("wIBM\n");
    peer->TakeLine("Q,IBM,");
    peer->Read();
    EXPECT_EQ(peer->Text().find("\nR,"), std::string::npos) << "nobody asked";
    peer->Send("S,REGON,IBM\nS,REGON,KO\n");
    for (const SRegion& region : kRegions) {
        const std::string begin = "R,IBM," + std::string(region.name) + ",", line = peer->TakeLine(begin);
        const auto fields = SplitTerminated(line, ',');
        ASSERT_EQ(fields.size(), 12u) << line;
        EXPECT_LT(ReadDouble(fields[3]), ReadDouble(fields[6]));
        EXPECT_NE(peer->TakeLine(begin), "(none)") << "and later ones";
    }
    peer->Send("wKO\n");
    EXPECT_NE(peer->TakeLine("R,KO,HARBOR,"), "(none)") << "asked for before the watch";
}

TEST_F(ServerLife, EndsWhenTheLastClientHasGoneOrNoneEverCame) {
    bool finished = false;
    m_options.firstClientMs = 1;
    Start().OnFinished = [&] { finished = true; };
    EXPECT_TRUE(WaitUntil([&] { return finished; }));
    m_options.firstClientMs = 60'000;
    m_options.lingerMs = 1;
    finished = false;
    Start().OnFinished = [&] { finished = true; };
    auto admin = std::make_unique<CPeer>(Server().AdminPort());
    auto level1 = Level1Peer("wIBM\n");
    ASSERT_NE(admin->TakeLine("S,STATS"), "(none)");
    level1.reset();
    ASSERT_TRUE(WaitUntil([&] { return Server().Board().WatchedCount() == 0; }));
    ASSERT_NE(admin->TakeLine("S,STATS"), "(none)");
    EXPECT_FALSE(finished) << "one is still there";
    admin.reset();
    EXPECT_TRUE(WaitUntil([&] { return finished; }));
}

} // namespace
} // namespace vx::sim
