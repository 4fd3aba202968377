#include "vxconnect/Peer.h"

#include <gtest/gtest.h>

#include <random>

namespace vx::sim {
namespace {

using Hostile = ServerTest;

// Sends everything, letting the server work whenever it takes no more.
void SendAll(CPeer& peer, std::string_view bytes) {
    ASSERT_TRUE(WaitUntil([&] {
        bytes.remove_prefix(peer.Send(bytes));
        return bytes.empty();
    }));
}

TEST_F(Hostile, GarbageIsPassedOverOnEveryPort) {
    Start();
    std::mt19937 random(1);
    std::string bytes(600'000, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    const std::string withoutLineEnd(1 << 20, 'w');
    CPeer level1(Server().Level1Port()), lookup(Server().LookupPort()), admin(Server().AdminPort());
    for (const std::string& garbage : {withoutLineEnd, bytes}) {
        for (CPeer* peer : {&level1, &lookup, &admin}) {
            for (size_t at = 0; at < garbage.size(); at += 10'000) {
                SendAll(*peer, std::string_view(garbage).substr(at, 10'000));
                peer->Read();
            }
        }
        SendAll(level1, "\nwIBM\n");
        SendAll(lookup, "\nSST\n");
        EXPECT_EQ(level1.TakeLine("F,IBM").substr(0, 6), "F,IBM,");
        EXPECT_EQ(lookup.TakeLine("1,EQ"), "1,EQUITY,Equity");
        EXPECT_NE(admin.TakeLine("S,STATS"), "(none)");
    }
}

TEST_F(Hostile, CommandsOfAClientThatDoesNotReadWait) {
    m_options.queueKilobytes = 32;
    Start();
    CPeer greedy(Server().Level1Port()), lookup(Server().LookupPort());
    std::string watches, tables;
    for (int i = 0; i < 20'000; ++i) watches += "wIBM\n", tables += "SLM\nSST\n";
    for (int i = 0; i < 20; ++i) { // Whatever is not taken is dropped: both are told to wait.
        greedy.Send(watches);
        lookup.Send(tables);
        WaitUntil([turns = 20]() mutable { return --turns == 0; });
    }
    EXPECT_LE(Server().LongestQueue(), 40u * 1024);
    const auto other = Level1Peer("wGE\n");
    EXPECT_EQ(other->TakeLine("F,").substr(0, 5), "F,GE,");
    for (int i = 0; i < 2000; ++i) ASSERT_NE(greedy.TakeLine("F,IBM,"), "(none)") << "the rest is done later";
}

TEST_F(Hostile, ClientsThatVanishTakeNothingWithThem) {
    m_options.rate = 100'000;
    m_options.queueKilobytes = 32;
    Start();
    const auto witness = Level1Peer("wIBM\n");
    for (int i = 0; i < 20; ++i) {
        auto reset = Level1Peer("wIBM\nwGE\nwK");
        auto closed = Level1Peer("wIBM\nwKO\n");
        auto half = Level1Peer("wSPY\n");
        half->EndSending();
        reset->Reset();
    }
    EXPECT_TRUE(WaitUntil([&] {
        witness->Read();
        return Server().Board().WatchedCount() == 1;
    }));
    witness->TakeLines();
    EXPECT_NE(witness->TakeLine("Q,IBM,"), "(none)");
}

TEST_F(Hostile, ClientThatHasFinishedSendingStillGetsItsUpdates) {
    m_options.rate = 2000;
    Start();
    const auto peer = Level1Peer("wIBM\n");
    peer->EndSending();
    for (int i = 0; i < 500; ++i) ASSERT_NE(peer->TakeLine("Q,IBM,"), "(none)");
    EXPECT_NE(peer->TakeLine("T,"), "(none)");
}

TEST_F(Hostile, LinesThatArriveByteByByteAreLines) {
    Start();
    CPeer peer(Server().LookupPort());
    for (const char byte : std::string_view("\r\n\nS\nSS\nSST\r\n")) {
        peer.Send({&byte, 1});
        WaitUntil([turns = 3]() mutable { return --turns == 0; });
    }
    EXPECT_EQ(peer.TakeLine(""), "!SYNTAX_ERROR!,");
    EXPECT_EQ(peer.TakeLine(""), "!SYNTAX_ERROR!,");
    EXPECT_EQ(peer.TakeLine(""), "1,EQUITY,Equity");
}

} // namespace
} // namespace vx::sim
