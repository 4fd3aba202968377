#include "base/Number.h"
#include "base/Text.h"
#include "vxconnect/Peer.h"
#include "vxconnect/market/NewsWire.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

namespace vx::sim {
namespace {

using News = ServerTest;
using Search = ServerTest;

TEST(NewsDesk, CountsAreTheHeadlinesSoFarAndStartAnewEachDay) {
    CMarket market(1, 0, kFirstSessionDate);
    CSessionClock clock(kFirstSessionDate);
    CNewsWire wire(market, clock);
    std::map<std::string, uint32_t> counts;
    for (const STicker& ticker : market.Tickers())
        counts[std::string(ticker.symbol)] = wire.Count(market.Find(ticker.symbol).value());
    std::string lastTime;
    int stories = 0, withSeveral = 0, withCommas = 0;
    wire.OnHeadline = [&](const std::string& line) {
        const auto fields = SplitCountingTail(line, ',');
        ASSERT_GE(fields.size(), 6u) << line;
        EXPECT_EQ(fields[0], "N");
        EXPECT_TRUE(fields[5].starts_with("Simulated: ")) << line;
        EXPECT_LE(lastTime, fields[4]);
        lastTime = fields[4];
        const auto symbols = SplitCountingTail(fields[3], ':');
        for (const std::string_view symbol : symbols) ++counts[std::string(symbol)];
        ++stories;
        withSeveral += symbols.size() > 1;
        withCommas += fields.size() > 6;
    };
    for (MarketMs now = 0; now < 6 * 3600'000; now += 60'000) {
        clock.MoveTo(now);
        wire.RunTo(clock);
        std::string text = clock.Text();
        std::erase(text, ':');
        EXPECT_LE(lastTime, text);
    }
    EXPECT_GT(stories, 200);
    EXPECT_GT(withSeveral, 10);
    EXPECT_GT(withCommas, 10);
    for (const auto& [symbol, count] : counts) EXPECT_EQ(wire.Count(market.Find(symbol).value()), count) << symbol;
    clock.MoveTo(6 * 3600'000);
    counts.clear();
    wire.RunTo(clock);
    EXPECT_EQ(clock.Date(), 20240201);
    for (const STicker& ticker : market.Tickers())
        EXPECT_EQ(wire.Count(market.Find(ticker.symbol).value()), counts[std::string(ticker.symbol)]) << ticker.symbol;
}

TEST_F(News, HeadlinesReachThoseWhoAskedAndAgreeWithTheCounts) {
    m_options.rate = 20'000;
    Start();
    CPeer quiet(Server().Level1Port());
    quiet.Send("wIBM\n");
    const auto peer = Level1Peer("wIBM\n");
    const std::string headline = peer->TakeLine("N,");
    const auto fields = SplitCountingTail(headline, ',');
    ASSERT_GE(fields.size(), 6u) << headline;
    CPeer lookup(Server().LookupPort());
    lookup.Send("S,SET PROTOCOL,6.2\r\nNSC,NO SUCH:" + std::string(fields[3]) + ",x,,20990101,LNewsCounts\r\n");
    const std::string counts = lookup.TakeLine("");
    EXPECT_THAT(counts, testing::MatchesRegex("LNewsCounts,LN,<NewsCounts>(<symbol Name=\"[A-Z.]+\" "
                                              "StoryCount=\"[1-9][0-9]*\"/>)+</NewsCounts>"));
    EXPECT_EQ(lookup.TakeLine(""), "LNewsCounts,!ENDMSG!,");
    quiet.Read();
    EXPECT_EQ(quiet.Text().find("\nN,"), std::string::npos);
}

TEST_F(News, LongRepliesAreBrokenBetweenElements) {
    Start();
    CPeer lookup(Server().LookupPort());
    std::string symbols;
    for (const STicker& ticker : KnownTickers()) symbols += std::string(ticker.symbol) + ":";
    lookup.Send("S,SET PROTOCOL,6.2\nNSC," + symbols + ",x,,20240131,LNewsCounts\n");
    std::string xml;
    int lines = 0;
    for (std::string line; (line = lookup.TakeLine("")) != "LNewsCounts,!ENDMSG!,"; ++lines) {
        ASSERT_TRUE(line.starts_with("LNewsCounts,LN,<")) << line;
        ASSERT_EQ(line.back(), '>');
        xml += line.substr(15);
    }
    EXPECT_GT(lines, 5);
    EXPECT_TRUE(xml.starts_with("<NewsCounts><symbol Name=\"AAPL\"")) << xml.substr(0, 60);
    EXPECT_TRUE(xml.ends_with("</NewsCounts>"));
}

class CSearcher {
public:
    explicit CSearcher(uint16_t port) : m_peer(port) { m_peer.Send("S,SET PROTOCOL,6.2\r\n"); }
    std::vector<std::string> Results(const std::string& fields) {
        m_peer.Send("SBF," + fields + ",LSearch\r\n");
        std::vector<std::string> out;
        for (std::string line; (line = m_peer.TakeLine("")) != "LSearch,!ENDMSG!,";) {
            if (line == "(none)") return {line};
            out.push_back(line);
        }
        return out;
    }

private:
    CPeer m_peer;
};

TEST_F(Search, FindsBySymbolAndByDescriptionWithFilters) {
    Start();
    CSearcher searcher(Server().LookupPort());
    const auto bySymbol = searcher.Results("s,ibm,,");
    ASSERT_GT(bySymbol.size(), 20u);
    EXPECT_EQ(bySymbol[0], "LSearch,LS,IBM,2,1,International Business Machines,");
    for (const std::string& line : bySymbol) EXPECT_EQ(line.substr(0, 14), "LSearch,LS,IBM");
    EXPECT_THAT(searcher.Results("s,IBM,t,1"), testing::SizeIs(2)); // The share and its delayed listing.
    EXPECT_THAT(searcher.Results("s,IBM,e,64"), testing::ElementsAre(testing::StartsWith("LSearch,LS,IBM.D,64,1,")));
    EXPECT_THAT(searcher.Results("d,crude oil march,t,7 9"),
                testing::ElementsAre("LSearch,LS,CLH24,43,7,Crude Oil March 2024,"));
    EXPECT_THAT(searcher.Results("d,euro / us,t,10"),
                testing::ElementsAre("LSearch,LS,EURUSD,64,10,Euro / US Dollar,"));
    EXPECT_THAT(searcher.Results("d,no, such, name,,"), testing::IsEmpty());
    EXPECT_THAT(searcher.Results("d,a,,"), testing::SizeIs(500));
    for (const char* nothing : {"s,,,", "d,  ,,", "s,,,,", "d,, ,,", "s,\xFF,,", "s,IBM,t,99"})
        EXPECT_THAT(searcher.Results(nothing), testing::IsEmpty()) << nothing;
    for (const char* bad : {"x,a,,", "s,a,q,1", "s,a,e,", "s,a,e,one"})
        EXPECT_THAT(searcher.Results(bad), testing::ElementsAre("!SYNTAX_ERROR!,")) << bad << ": told, and ended";
}

TEST_F(Search, IdentifierComesBackAndTheTagOnlyAfterAProtocol) {
    Start();
    CPeer peer(Server().LookupPort());
    peer.Send("SBF,s,KO,t,1,Mine\r\nNSC,KO,x,,,Yours\r\nSBF,s,KO\r\nNSC,KO\r\nNSC,KO,t,,,Yours\r\n");
    EXPECT_THAT(peer.TakeLine(""), testing::StartsWith("Mine,KO,"));
    EXPECT_EQ(peer.TakeLine("Mine,!"), "Mine,!ENDMSG!,");
    EXPECT_THAT(peer.TakeLine(""), testing::StartsWith("Yours,<NewsCounts>"));
    EXPECT_EQ(peer.TakeLine(""), "Yours,!ENDMSG!,");
    for (int i = 0; i < 3; ++i) EXPECT_EQ(peer.TakeLine(""), "!SYNTAX_ERROR!,");
    EXPECT_EQ(peer.TakeLine(""), "Yours,!ENDMSG!,");
}

} // namespace
} // namespace vx::sim
