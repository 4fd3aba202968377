// SPDX-License-Identifier: MIT
// Which symbols exist, and what the feed says of them besides their prices.

#include "base/Text.h"
#include "vxconnect/Peer.h"
#include "vxconnect/common/CodeTables.h"
#include "vxconnect/market/Fundamentals.h"
#include "vxconnect/market/NewsWire.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace vx::sim {
namespace {

TEST(Market, ListedSymbolsExistByTheRuleAndUnderTheirNumber) {
    CMarket market(1, 1000, kFirstSessionDate, true);
    for (const std::string& known : Words("IBM240216C180 IBM240315P180 IBM240419C200 GE1240216C130 SPY240216P475 ESH24 "
                                          "CLG24 ESZ24 CLF25 SIMXX SIMGX IBM.D BRK.B S00001 S00768"))
        EXPECT_TRUE(market.Find(known)) << known;
    for (const std::string& unknown :
         Words("IBM240217C180 IBM240216C185 IBM240216C140 IBM240216C240 IBM240216X180 IBM240216C0180 IBM1240216C180 "
               "IBM240621C180 BRK.B240216C350 XYZ240216C10 240216C10 ESF24 ESH25 CLF24 ES SIMYX XYZ XYZ.D .D SPY.D "
               "IBM.D.D ibm240216c180 S00769 S00000 S0001 S000010 Sx0001 ibm \xC4"))
        EXPECT_FALSE(market.Find(unknown)) << unknown;
    std::set<std::string> seen;
    market.ForEach([&](const SListing& listing) {
        const auto index = market.Find(listing.symbol);
        EXPECT_TRUE(seen.insert(listing.symbol).second && index) << listing.symbol;
        return index && market.Listing(*index).name == listing.name && !listing.name.empty();
    });
    EXPECT_GT(seen.size(), 5'000u);
}

TEST(Market, TickersThatAreNotListedAreMadeUpAndOtherTextsUnknown) {
    CMarket market(1, 20, kFirstSessionDate);
    for (const auto& [symbol, kind] :
         {std::pair("XYZ", EKind::Share), std::pair("Q", EKind::Share), std::pair("ABCD.B", EKind::Share),
          std::pair("ABCDX", EKind::MutualFund), std::pair("ABCXX", EKind::MoneyFund)}) {
        const SListing listing = market.Listing(market.Find(symbol).value());
        EXPECT_EQ(listing.symbol, symbol);
        EXPECT_EQ(listing.terms.kind, kind) << symbol;
        EXPECT_GT(listing.ticker.price, 0);
        EXPECT_EQ(market.Find(symbol), market.FindKnown(symbol));
    }
    EXPECT_EQ(market.Listing(market.Find("ZM").value()).name, "Zoom Video Communications") << "left out, but known";
    for (const std::string& unknown :
         Words("ABCDEF xyz A1 12 A.BC A. .B A..B ABCDX.D SPY.D XYZ.D.D XYZ--X $SPX ABC/D A-B  \xC4"))
        EXPECT_FALSE(market.Find(unknown)) << unknown;
    EXPECT_FALSE(market.FindKnown("ZYX")) << "nobody has asked for it";
    CMarket untouched(1, 20, kFirstSessionDate);
    const auto count = [](const CMarket& from) {
        size_t listed = 0;
        from.ForEach([&](const SListing&) { return ++listed, true; });
        return listed;
    };
    EXPECT_EQ(count(market), count(untouched)) << "asking lists nothing";
}

std::vector<std::string> Facts(CMarket& market, std::string_view symbol) {
    return Fields(FundamentalLine(market, market.Find(symbol).value()));
}

TEST(Fundamentals, EveryFieldHasItsForm) {
    CMarket market(1, 2000, kFirstSessionDate);
    const std::string date = "[0-9]+/[0-9]+/[0-9][0-9][0-9][0-9]", split = "(0\\.[0-9][0-9] " + date + ")?";
    const std::pair<size_t, std::string> forms[] = {
        {30, date}, {33, date}, {23, split}, {24, split}, {26, "([0-9]+/[0-9]+)?"}, {27, "(" + date + ")?"}};
    int splits = 0;
    for (CMarket::Index i = 0; i < 400; ++i) {
        const std::string line = FundamentalLine(market, i);
        const std::vector<std::string> field = Fields(line);
        ASSERT_EQ(field.size(), kFundamentalSlotCount) << line;
        ASSERT_TRUE(line.starts_with("F,") && line.ends_with(",\r\n")) << line;
        for (const auto& [slot, form] : forms) EXPECT_THAT(field[slot], testing::MatchesRegex(form));
        EXPECT_TRUE(field[24].empty() || !field[23].empty()) << "a second split without a first: " << line;
        EXPECT_GE(std::stod(field[4]), std::stod(field[5])) << "the year's high and low";
        splits += !field[23].empty();
    }
    EXPECT_GT(splits, 60);
}

TEST(Fundamentals, EachKindHasItsOwnFields) {
    CMarket market(1, 0, kFirstSessionDate);
    // Symbol, then places and texts: option symbols 3, growth 6, shares 18, type 35, expiration 42, strike 43, root 44,
    // multiplier 45, deliverables 46, size 50, months 51, tick 52, delivery 53, subtype 55.
    for (const char* line :
         {"IBM240216C180 35=2 42=2/16/2024 43=180.00 44=IBM 45=100.00 46=0 55=", "GE1240216C130 35=2 46=1 55=2",
          "ESH24 3= 35=7 42=3/15/2024 51=H;M;U;Z 52=0.25 53=3/1/2024", "KO 3=KO 35=1 55= 18=4323000 42=",
          "SPY 35=3 55=1 6=", "SIMGX 35=3 55= 18=", "EURUSD 34=64 35=10 6= 10= 18= 29=7.94 38= 42= 49=EUR 52=0.00001",
          "USDJPY 49=USD 52=0.001", "SIMXX 35=4", "IBM.D 35=1 34=64"}) {
        const auto words = Words(line);
        const auto fields = Facts(market, words[0]);
        for (size_t i = 1; i < words.size(); ++i) {
            const size_t slot = std::stoul(words[i]);
            EXPECT_EQ(fields[slot], words[i].substr(words[i].find('=') + 1)) << words[0] << " " << slot;
        }
        const auto isMarket = [&](const SListedMarket& m) { return std::to_string(m.id) == fields[34]; };
        EXPECT_TRUE(std::any_of(ListedMarkets().begin(), ListedMarkets().end(), isMarket)) << line;
    }
}

TEST(Fundamentals, DelayedListingTellsTheFactsOfItsShare) {
    for (const std::string share : {"IBM", "NKLA", "XYZ"}) {
        CMarket market(1, 0, kFirstSessionDate);
        const auto prompt = Facts(market, share), delayed = Facts(market, share + ".D");
        // Its own: symbol, name, options, what follows from its own prices, and where it is listed.
        const std::set<size_t> own = {0, 2, 3, 4, 5, 8, 9, 13, 15, 30, 31, 32, 33, 34};
        for (size_t i = 0; i < kFundamentalSlotCount; ++i)
            EXPECT_TRUE(own.count(i) != 0 || delayed[i] == prompt[i]) << share << " " << i;
        const auto volume = [&](const std::string& symbol) {
            return market.At(market.Find(symbol).value()).Value(EField::PreviousDayVolume);
        };
        EXPECT_EQ(volume(share), volume(share + ".D"));
    }
}

TEST(Fundamentals, FiguresAgreeWithTheMarket) {
    CMarket market(1, 0, kFirstSessionDate);
    CInstrument& share = market.At(market.Find("KO").value());
    for (int i = 0; i < 50'000; ++i) share.Tick();
    const std::vector<std::string> field = Facts(market, "KO");
    const auto number = [&](size_t slot) { return std::stod(field[slot]); };
    const double last = static_cast<double>(share.Value(EField::Last)) / kPriceUnit;
    EXPECT_NEAR(number(15), last / number(10), 0.006) << "price-earnings ratio";
    EXPECT_NEAR(number(13), number(12) / last * 100, 0.006) << "dividend yield";
    EXPECT_NEAR(number(11) * 4, number(12), 1e-9) << "dividend";
    EXPECT_NEAR(static_cast<double>(share.Value(EField::MarketCapitalization)), last * 4323000, 1);
    EXPECT_EQ(Facts(market, "KO"), field) << "told twice, told the same";
}

TEST(NewsDesk, CountsAreTheHeadlinesSoFarAndStartAnewEachDay) {
    CMarket market(1, 0, kFirstSessionDate);
    CSessionClock clock(kFirstSessionDate);
    CNewsWire desk(market, clock);
    std::map<std::string, uint32_t> counts;
    const auto count = [&](std::string_view symbol) { return desk.Count(market.Find(symbol).value()); };
    for (const STicker& ticker : market.Tickers()) counts[std::string(ticker.symbol)] = count(ticker.symbol);
    std::string lastTime;
    int stories = 0, withSeveral = 0, withCommas = 0;
    desk.OnHeadline = [&](const std::string& line) {
        const auto fields = SplitCountingTail(line, ',');
        ASSERT_GE(fields.size(), 6u) << line;
        EXPECT_TRUE(line.starts_with("N,SIM,") && fields[5].starts_with("Simulated: ")) << line;
        EXPECT_LE(lastTime, fields[4]);
        lastTime = fields[4];
        const auto symbols = SplitCountingTail(fields[3], ':');
        for (const std::string_view symbol : symbols) ++counts[std::string(symbol)];
        ++stories;
        withSeveral += symbols.size() > 1;
        withCommas += fields.size() > 6;
    };
    const auto expectCounts = [&] {
        for (const STicker& ticker : market.Tickers())
            EXPECT_EQ(count(ticker.symbol), counts[std::string(ticker.symbol)]) << ticker.symbol;
    };
    for (MarketMs now = 0; now < 6 * 3600'000; now += 60'000) {
        clock.MoveTo(now);
        desk.RunTo(clock);
        std::string text = clock.Text();
        std::erase(text, ':');
        EXPECT_LE(lastTime, text);
    }
    EXPECT_TRUE(stories > 200 && withSeveral > 10 && withCommas > 10);
    expectCounts();
    clock.MoveTo(6 * 3600'000);
    counts.clear();
    desk.RunTo(clock);
    EXPECT_EQ(clock.Date(), 20240201);
    expectCounts();
}

} // namespace
} // namespace vx::sim
