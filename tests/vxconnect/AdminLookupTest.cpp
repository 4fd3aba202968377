#include "base/Text.h"
#include "vxconnect/Peer.h"

#include <gtest/gtest.h>

namespace vx::sim {
namespace {

using Admin = ServerTest;
using Lookup = ServerTest;

std::string StatsField(const std::string& line, size_t index) {
    const auto fields = SplitCountingTail(line, ',');
    return index < fields.size() ? std::string(fields[index]) : "(missing)";
}

TEST_F(Admin, StatusBecomesConnectedOnTheThirdLine) {
    Start();
    CPeer peer(Server().AdminPort());
    peer.Send("S,SET PROTOCOL,6.2\nS,SET CLIENT NAME,Tests\n");
    for (const char* status : {"Not Connected", "Not Connected", "Connected", "Connected"}) {
        const std::string line = peer.TakeLine("");
        EXPECT_EQ(SplitCountingTail(line, ',').size(), 21u) << line;
        EXPECT_EQ(StatsField(line, 12), status);
        EXPECT_EQ(StatsField(line, 10), "20240131 10:00:00");
    }
}

TEST_F(Admin, WatchedSymbolsAndLimitAreToldOnChange) {
    m_options.limit = 77;
    Start();
    CPeer admin(Server().AdminPort());
    const auto peer = Level1Peer("wIBM\nwGE\nwNOSUCH\n");
    std::string line;
    ASSERT_TRUE(WaitUntil([&] { return StatsField(line = admin.TakeLine(""), 5) == "2"; }));
    EXPECT_EQ(StatsField(line, 4), "77");
    EXPECT_EQ(StatsField(line, 6), "1");
}

TEST_F(Lookup, TablesComeWholeWithTheirEndMarker) {
    Start();
    CPeer peer(Server().LookupPort());
    peer.Send("SLM\r\n");
    EXPECT_EQ(peer.TakeLine("7,"), "7,ALPHA,Alpha Stock Exchange,1,EQ");
    EXPECT_EQ(peer.TakeLine("!"), "!ENDMSG!,");
    EXPECT_EQ(peer.Text(), "");
    peer.Send("SST\r\n");
    EXPECT_EQ(peer.TakeLine(""), "1,EQUITY,Equity");
    EXPECT_THAT(peer.TakeLine("3,"), testing::HasSubstr("Fund"));
    EXPECT_EQ(peer.TakeLine("!"), "!ENDMSG!,");
}

TEST_F(Lookup, OtherRequestsAreSyntaxErrorsAndGreetingsAreNone) {
    Start();
    CPeer peer(Server().LookupPort());
    peer.Send("S,SET PROTOCOL,6.2\nS,SET CLIENT NAME,Tests\nslm\nSLMX\nnonsense\nSST\n");
    for (int i = 0; i < 3; ++i) EXPECT_EQ(peer.TakeLine(""), "!SYNTAX_ERROR!,");
    EXPECT_EQ(peer.TakeLine(""), "1,EQUITY,Equity");
}

TEST_F(Lookup, ClientThatHasFinishedSendingGetsItsReplyAndThenTheEnd) {
    Start();
    CPeer peer(Server().LookupPort());
    peer.Send("SST\nSLM\n");
    peer.EndSending();
    peer.TakeLine("!ENDMSG!");
    EXPECT_EQ(peer.TakeLine("!ENDMSG!"), "!ENDMSG!,");
    EXPECT_TRUE(WaitUntil([&] {
        peer.Read();
        return peer.IsClosedByServer();
    }));
}

} // namespace
} // namespace vx::sim
