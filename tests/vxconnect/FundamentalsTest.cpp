#include "vxconnect/market/Fundamentals.h"

#include "vxconnect/Peer.h"
#include "vxconnect/common/CodeTables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace vx::sim {
namespace {

// Places in the line, the symbol being 0.
constexpr size_t kName = 2, kYearHigh = 4, kYearLow = 5, kEarningsPerShare = 10, kDividendAmount = 11,
                 kDividendRate = 12, kDividendYield = 13, kPriceEarnings = 15, kFirstSplit = 23, kSecondSplit = 24,
                 kExDividend = 26, kDividendPaid = 27, kYearHighDate = 30, kCalendarLowDate = 33, kListedMarket = 34;

std::vector<std::string> Of(CMarket& market, std::string_view symbol) {
    return Fields(FundamentalLine(market, market.Find(symbol).value()));
}

TEST(Fundamentals, EveryFieldStandsInItsPlace) {
    CMarket market(1, 2000, kFirstSessionDate);
    const std::string date = "[0-9]+/[0-9]+/[0-9][0-9][0-9][0-9]";
    int splits = 0;
    for (CMarket::Index i = 0; i < 600; ++i) {
        const std::string line = FundamentalLine(market, i);
        const std::vector<std::string> field = Fields(line);
        ASSERT_EQ(field.size(), kFundamentalSlotCount) << line;
        ASSERT_TRUE(line.starts_with("F,") && line.ends_with(",\r\n")) << line;
        EXPECT_EQ(field[kName], market.Listing(i).name);
        for (const size_t slot : {kYearHighDate, kCalendarLowDate})
            EXPECT_THAT(field[slot], testing::MatchesRegex(date));
        EXPECT_THAT(field[kFirstSplit], testing::MatchesRegex("(0\\.[0-9][0-9] " + date + ")?"));
        EXPECT_TRUE(field[kSecondSplit].empty() || !field[kFirstSplit].empty()) << line;
        splits += !field[kFirstSplit].empty();
        EXPECT_THAT(field[kExDividend], testing::MatchesRegex("([0-9]+/[0-9]+)?"));
        EXPECT_THAT(field[kDividendPaid], testing::MatchesRegex("(" + date + ")?"));
        EXPECT_GE(std::stod(field[kYearHigh]), std::stod(field[kYearLow]));
    }
    EXPECT_GT(splits, 100);
}

TEST(Fundamentals, EachKindHasItsOwnFields) {
    CMarket market(1, 0, kFirstSessionDate);
    // Symbol, then places and texts: type 35, expiration 42, strike 43, root 44, multiplier 45, deliverables 46, size
    // 50, months 51, tick 52, delivery 53, subtype 55, growth 6, shares 18.
    for (const char* line :
         {"IBM240216C180 35=2 42=2/16/2024 43=180.00 44=IBM 45=100.00 46=0 55=", "GE1240216C130 35=2 46=1 55=2",
          "ESH24 35=7 42=3/15/2024 51=H;M;U;Z 52=0.25 53=3/1/2024", "KO 35=1 55= 18=4323000 42=", "SPY 35=3 55=1 6=",
          "SIMGX 35=3 55= 18=", "EURUSD 34=64 35=10 6= 10= 18= 29=7.94 38= 42= 49=EUR 52=0.00001",
          "USDJPY 49=USD 52=0.001", "SIMXX 35=4", "IBM.D 35=1 34=64"}) {
        const auto words = Words(line);
        const auto fields = Of(market, words[0]);
        for (size_t i = 1; i < words.size(); ++i) {
            const size_t slot = std::stoul(words[i]);
            EXPECT_EQ(fields[slot], words[i].substr(words[i].find('=') + 1)) << words[0] << " " << slot;
        }
        const auto isMarket = [&](const SListedMarket& m) { return std::to_string(m.id) == fields[kListedMarket]; };
        EXPECT_TRUE(std::any_of(ListedMarkets().begin(), ListedMarkets().end(), isMarket)) << line;
    }
}

TEST(Fundamentals, DelayedListingTellsTheFactsOfItsShare) {
    for (const std::string share : {"IBM", "NKLA", "XYZ"}) {
        CMarket market(1, 0, kFirstSessionDate);
        const auto prompt = Of(market, share), delayed = Of(market, share + ".D");
        // Its own: symbol, name, options, what follows from its own prices, and where it is listed.
        const std::set<size_t> own = {0, 2, 3, 4, 5, 8, 9, 13, 15, 30, 31, 32, 33, 34};
        for (size_t i = 0; i < kFundamentalSlotCount; ++i)
            EXPECT_TRUE(own.count(i) != 0 || delayed[i] == prompt[i]) << share << " " << i;
        const auto value = [&](const std::string& symbol) {
            return market.At(market.Find(symbol).value()).Value(EField::PreviousDayVolume);
        };
        EXPECT_EQ(value(share), value(share + ".D"));
    }
}

TEST(Fundamentals, FiguresAgreeWithTheMarket) {
    CMarket market(1, 0, kFirstSessionDate);
    const CMarket::Index share = market.Find("KO").value();
    for (int i = 0; i < 100'000; ++i) market.At(share).Tick();
    const std::vector<std::string> field = Fields(FundamentalLine(market, share));
    const double last = static_cast<double>(market.At(share).Value(EField::Last)) / kPriceUnit;
    EXPECT_NEAR(std::stod(field[kPriceEarnings]), last / std::stod(field[kEarningsPerShare]), 0.006);
    EXPECT_NEAR(std::stod(field[kDividendYield]), std::stod(field[kDividendRate]) / last * 100, 0.006);
    EXPECT_NEAR(std::stod(field[kDividendAmount]) * 4, std::stod(field[kDividendRate]), 1e-9);
    EXPECT_NEAR(static_cast<double>(market.At(share).Value(EField::MarketCapitalization)), last * 4323000, 1);
    EXPECT_EQ(Fields(FundamentalLine(market, share)), field) << "told twice, told the same";
}

} // namespace
} // namespace vx::sim
