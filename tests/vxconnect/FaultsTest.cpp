#include "vxconnect/Peer.h"

#include <gtest/gtest.h>

#include <poll.h>
#include <sys/socket.h>

namespace vx::sim {
namespace {

using Faults = ServerTest;

TEST_F(Faults, MutePortsAcceptAndSayNothing) {
    m_options.mute = kLevel1 | kLookup;
    m_options.rate = 20'000;
    Start();
    CPeer level1(Server().Level1Port()), lookup(Server().LookupPort()), admin(Server().AdminPort());
    level1.Send("wIBM\n");
    lookup.Send("SST\n");
    ASSERT_TRUE(WaitUntil([&] { return Server().Board().EventCount() > 5'000; }));
    EXPECT_NE(admin.TakeLine("S,STATS"), "(none)");
    level1.Read();
    lookup.Read();
    EXPECT_EQ(level1.Text() + lookup.Text(), "");
    EXPECT_FALSE(level1.IsClosedByServer() || lookup.IsClosedByServer());
}

TEST_F(Faults, SplitSendsPiecesAndLosesNothing) {
    m_options.split = 3;
    Start();
    CPeer lookup(Server().LookupPort());
    lookup.Send("SST\n");
    size_t before = 0, largest = 0;
    ASSERT_TRUE(WaitUntil([&] {
        lookup.Read();
        largest = std::max(largest, lookup.Text().size() - before);
        before = lookup.Text().size();
        return lookup.Text().ends_with("!ENDMSG!,\r\n");
    }));
    EXPECT_EQ(lookup.TakeLine(""), "1,EQUITY,Equity");
    EXPECT_LT(largest, 60u) << "it came in a few large pieces";
}

TEST_F(Faults, DropEndsEachConnectionAfterSoManyBytes) {
    m_options.dropAfter = 100;
    Start();
    for (int i = 0; i < 2; ++i) {
        CPeer peer(Server().Level1Port());
        peer.Send("wIBM\n");
        ASSERT_TRUE(WaitUntil([&] {
            peer.Read();
            return peer.IsClosedByServer();
        }));
        EXPECT_EQ(peer.Text().size(), 100u);
    }
    EXPECT_TRUE(WaitUntil([&] { return Server().Board().WatchedCount() == 0; }));
}

TEST_F(Faults, RefusedPortIsNotOpenedAndTheOthersAre) {
    m_options.refuse = kLookup;
    Start();
    EXPECT_EQ(Server().LookupPort(), 0);
    EXPECT_NE(Server().Message().find("lookup=refused"), std::string::npos);
    EXPECT_NE(Level1Peer("wIBM\n")->TakeLine("P,IBM,"), "(none)");
}

TEST_F(Faults, BurstGathersASecondOfUpdates) {
    m_options.burst = true;
    m_options.rate = 2'000;
    Start();
    const auto peer = Level1Peer("wIBM\nwKO\n");
    ASSERT_TRUE(WaitUntil([&] { return Server().Board().EventCount() > 0; }));
    const uint64_t first = Server().Board().EventCount();
    EXPECT_GT(first, 500u) << "the first slice should have held most of a second";
    uint64_t steps = 0, before = first;
    ASSERT_TRUE(WaitUntil([&] {
        steps += Server().Board().EventCount() != before;
        before = Server().Board().EventCount();
        return before > first + 3'000;
    }));
    EXPECT_LE(steps, 8u);
}

} // namespace
} // namespace vx::sim
