#include "vxconnect/Peer.h"

#include <gtest/gtest.h>

namespace vx::sim {
namespace {

using ServerLife = ServerTest;

TEST_F(ServerLife, EndsWhenTheLastClientHasGone) {
    m_options.lingerMs = 1;
    bool finished = false;
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

TEST_F(ServerLife, EndsWhenNoClientEverCame) {
    m_options.firstClientMs = 1;
    bool finished = false;
    Start().OnFinished = [&] { finished = true; };
    EXPECT_TRUE(WaitUntil([&] { return finished; }));
}

TEST_F(ServerLife, SecondServerOnTheSamePortsOpensNone) {
    Start();
    for (std::optional<uint16_t> SOptions::*port :
         {&SOptions::level1Port, &SOptions::lookupPort, &SOptions::adminPort}) {
        SOptions options = m_options;
        options.*port = port == &SOptions::level1Port   ? Server().Level1Port()
                        : port == &SOptions::lookupPort ? Server().LookupPort()
                                                        : Server().AdminPort();
        CServer second(options);
        EXPECT_EQ(second.Start(), CServer::EStart::AlreadyServed);
        EXPECT_THAT(second.Message(), testing::HasSubstr(std::to_string((options.*port).value())));
        EXPECT_EQ(second.Level1Port() + second.LookupPort() + second.AdminPort(), 0);
    }
}

} // namespace
} // namespace vx::sim
