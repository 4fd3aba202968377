// SPDX-License-Identifier: MIT
// Clients that send anything, read nothing or vanish, and the faults that can be asked for.

#include "vxconnect/Peer.h"
#include "vxconnect/common/Level1Client.h"
#include "vxconnect/market/MarketFeed.h"
#include "vxconnect/market/QuoteLine.h"

#include <algorithm>
#include <map>
#include <random>

namespace vx::sim {
namespace {

using Hostile = ServerTest;
using Faults = ServerTest;

constexpr size_t kQueueBytes = 16 * 1024;
constexpr size_t kOneAnswer = 8 * 1024; // The queue may be passed by the lines of one command or event.

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
    std::string bytes(300'000, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    CPeer level1(Server().Level1Port()), lookup(Server().LookupPort()), admin(Server().AdminPort());
    for (const std::string& garbage : {std::string(1 << 20, 'w'), bytes}) {
        for (CPeer* peer : {&level1, &lookup, &admin})
            for (size_t at = 0; at < garbage.size(); at += 10'000) {
                SendAll(*peer, std::string_view(garbage).substr(at, 10'000));
                peer->Read();
            }
        SendAll(level1, "\nwIBM\n");
        SendAll(lookup, "\nSST\n");
        EXPECT_NE(level1.TakeLine("F,IBM,"), "(none)");
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
    EXPECT_NE(Level1Peer("wGE\n")->TakeLine("F,GE,"), "(none)");
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

// One client of a market that moves only when the test says so.
class SlowClient : public testing::Test {
protected:
    SlowClient() {
        int sockets[2];
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, sockets), 0);
        m_client = std::make_unique<CLevel1Client>(sockets[0], kQueueBytes, m_feed, uint16_t{5009});
        m_peer = std::make_unique<CPeer>(sockets[1], true);
    }
    // Sends commands and lets the client carry them out.
    void Command(std::string_view commands, size_t watchesAfter) {
        m_peer->Send(commands);
        ASSERT_TRUE(WaitUntil([&] {
            m_peer->Read();
            return m_client->WatchCount() == watchesAfter;
        }));
    }
    void Watch(const std::vector<std::string>& symbols) {
        std::string commands;
        for (const std::string& symbol : symbols) commands += "w" + symbol + "\n";
        Command(commands, symbols.size());
    }
    void MoveWithoutReading(int events) {
        for (int i = 0; i < events; ++i) m_feed.Step();
        m_client->Flush();
        const size_t queued = m_client->QueuedBytes();
        EXPECT_LE(queued, kQueueBytes + kOneAnswer);
        for (int i = 0; i < 1000; ++i) m_client->TellTime();
        EXPECT_LE(m_client->QueuedBytes(), queued) << "time lines pile up";
    }
    void ReadEverything() {
        ASSERT_TRUE(WaitUntil([&] {
            m_peer->Read();
            return m_client->HeldCount() == 0 && m_client->QueuedBytes() == 0;
        }));
        m_peer->Read();
    }

    CMarket m_market{1, 0, kFirstSessionDate};
    CMarketFeed m_feed{m_market, 1000};
    std::unique_ptr<CLevel1Client> m_client;
    std::unique_ptr<CPeer> m_peer;
};

TEST_F(SlowClient, UpdatesFoldIntoTheNewestAndNothingIsLost) {
    const std::vector<std::string> symbols = {"IBM", "GE", "KO"};
    Watch(symbols);
    for (const int events : {10'000, 125'000}) { // The second time over the end of a session.
        MoveWithoutReading(events);
        EXPECT_EQ(m_client->HeldCount(), symbols.size());
        ReadEverything();
    }
    std::map<std::string, CMergedRecord> records;
    const std::vector<std::string> lines = m_peer->TakeLines();
    for (const std::string& line : lines)
        if (line[0] == 'P' || line[0] == 'Q') records[Fields(line)[0]].Merge(line);
    for (const std::string& symbol : symbols) {
        const CInstrument& now = m_market.At(m_market.Find(symbol).value());
        std::string summary(kMaxQuoteLine, '\0');
        char* const end = WriteQuoteLine(summary.data(), 'P', now, now.Present(), 0, {});
        summary.resize(static_cast<size_t>(end - summary.data()));
        EXPECT_THAT(records[symbol].DifferencesTo(summary), testing::IsEmpty()) << symbol;
    }
    EXPECT_LT(lines.size(), 20'000u);
}

TEST_F(SlowClient, HeldSymbolsMayBeUnwatched) {
    std::vector<std::string> symbols;
    std::string unwatches;
    for (CMarket::Index i = 0; i < 200; ++i) symbols.push_back(m_market.Listing(i).symbol);
    for (const std::string& symbol : symbols) unwatches += "r" + symbol + "\n";
    Watch(symbols);
    MoveWithoutReading(30'000);
    ASSERT_EQ(m_client->HeldCount(), symbols.size());
    Command(unwatches + "wKO\n", 1); // Carried out as soon as there is room, while most are still held.
    ReadEverything();
    EXPECT_EQ(m_feed.WatchedCount(), 1u);
    EXPECT_THAT(m_peer->TakeLines().back(), testing::StartsWith("P,KO,"));
    for (int i = 0; i < 3; ++i) m_feed.Step();
    m_client->Flush();
    EXPECT_THAT(m_peer->TakeLine(""), testing::StartsWith("Q,KO,"));
}

TEST_F(Faults, MuteAndRefusedPortsSayNothingAndTheOthersServe) {
    m_options.mute = kLevel1;
    m_options.refuse = kLookup;
    m_options.rate = 20'000;
    Start();
    EXPECT_EQ(Server().LookupPort(), 0);
    EXPECT_THAT(Server().Message(), testing::HasSubstr("lookup=refused"));
    CPeer level1(Server().Level1Port()), admin(Server().AdminPort());
    level1.Send("wIBM\n");
    ASSERT_TRUE(WaitUntil([&] { return Server().Board().EventCount() > 5'000; }));
    EXPECT_NE(admin.TakeLine("S,STATS"), "(none)");
    level1.Read();
    EXPECT_EQ(level1.Text(), "");
    EXPECT_FALSE(level1.IsClosedByServer());
}

} // namespace
} // namespace vx::sim
