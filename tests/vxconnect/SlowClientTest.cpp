#include "vxconnect/Peer.h"
#include "vxconnect/market/QuoteLine.h"

#include <gtest/gtest.h>

#include <map>

namespace vx::sim {
namespace {

constexpr size_t kQueueBytes = 16 * 1024;
constexpr size_t kOneAnswer = 8 * 1024; // The queue may be passed by the lines of one command or event.

std::string SummaryOf(const CInstrument& instrument) {
    std::string out(kMaxQuoteLine, '\0');
    out.resize(
        static_cast<size_t>(WriteQuoteLine(out.data(), 'P', instrument, instrument.Present(), 0, {}) - out.data()));
    return out;
}

class SlowClient : public BoardTest {
protected:
    SlowClient() : BoardTest(kQueueBytes) {}

    void Watch(const std::vector<std::string>& symbols) {
        std::string commands;
        for (const std::string& symbol : symbols) commands += "w" + symbol + "\n";
        Command(commands, symbols.size());
    }
    void MoveWithoutReading(int events) {
        for (int i = 0; i < events; ++i) m_feed.Step();
        m_client->Flush();
    }
    void ReadEverything() {
        ASSERT_TRUE(WaitUntil([&] {
            m_peer->Read();
            return m_client->HeldCount() == 0 && m_client->QueuedBytes() == 0;
        }));
        m_peer->Read();
    }
};

TEST_F(SlowClient, UpdatesFoldIntoTheNewestAndNothingIsLost) {
    const std::vector<std::string> symbols = {"IBM", "GE", "KO"};
    Watch(symbols);
    for (const int events : {20'000, 120'000}) { // The second time over the end of a session.
        MoveWithoutReading(events);
        EXPECT_EQ(m_client->HeldCount(), symbols.size());
        EXPECT_LE(m_client->QueuedBytes(), kQueueBytes + kOneAnswer);
        ReadEverything();
    }
    std::map<std::string, CMergedRecord> records;
    const std::vector<std::string> lines = m_peer->TakeLines();
    for (const std::string& line : lines)
        if (line[0] == 'P' || line[0] == 'Q') records[Fields(line)[0]].Merge(line);
    for (const std::string& symbol : symbols)
        EXPECT_THAT(records[symbol].DifferencesTo(SummaryOf(Find(symbol))), testing::IsEmpty()) << symbol;
    EXPECT_LT(lines.size(), 20'000u);
}

TEST_F(SlowClient, HeldSymbolsMayBeUnwatched) {
    std::vector<std::string> symbols;
    std::string unwatches;
    for (CMarket::Index i = 0; i < 200; ++i) symbols.push_back(m_market.Listing(i).symbol);
    for (const std::string& symbol : symbols) unwatches += "r" + symbol + "\n";
    Watch(symbols);
    MoveWithoutReading(50'000);
    ASSERT_EQ(m_client->HeldCount(), symbols.size());
    Command(unwatches + "wKO\n", 1); // Carried out as soon as there is room, while most are still held.
    ReadEverything();
    EXPECT_EQ(m_feed.WatchedCount(), 1u);
    EXPECT_EQ(m_peer->TakeLines().back().substr(0, 5), "P,KO,");
    MoveWithoutReading(3);
    EXPECT_EQ(m_peer->TakeLine("").substr(0, 5), "Q,KO,");
}

TEST_F(SlowClient, TimeLinesDoNotPileUp) {
    Watch({"IBM"});
    MoveWithoutReading(20'000);
    const size_t queued = m_client->QueuedBytes();
    for (int i = 0; i < 10'000; ++i) m_client->TellTime();
    EXPECT_LE(m_client->QueuedBytes(), queued);
}

using SlowAmongOthers = ServerTest;

TEST_F(SlowAmongOthers, ReadersAndLookupsAreServedWhileOneDoesNotRead) {
    m_options.rate = 100'000;
    m_options.queueKilobytes = kQueueBytes / 1024;
    Start();
    const auto silent = Level1Peer("wIBM\nwGE\nwKO\nwSPY\n");
    const auto reader = Level1Peer("wIBM\n");
    ASSERT_TRUE(WaitUntil([&] {
        reader->Read();
        return Server().HeldCount() > 0;
    }));
    reader->TakeLines();
    for (int i = 0; i < 1000; ++i) ASSERT_NE(reader->TakeLine("Q,IBM,"), "(none)");
    CPeer lookup(Server().LookupPort());
    lookup.Send("SST\r\n");
    EXPECT_EQ(lookup.TakeLine("!"), "!ENDMSG!,");
    EXPECT_LE(Server().LongestQueue(), kQueueBytes + kOneAnswer);
}

} // namespace
} // namespace vx::sim
