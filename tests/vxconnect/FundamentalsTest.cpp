#include "vxconnect/Fundamentals.h"

#include "vxconnect/Peer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vx::sim {
namespace {

// Places in the line, the symbol being 0.
enum ESlot {
    Symbol = 0,
    Exchange = 1,
    Name = 2,
    YearHigh = 4,
    YearLow = 5,
    Growth = 6,
    EarningsPerShare = 10,
    DividendAmount = 11,
    DividendRate = 12,
    DividendYield = 13,
    PriceEarnings = 15,
    SharesOut = 18,
    FirstSplit = 23,
    SecondSplit = 24,
    BalanceDate = 25,
    ExDividend = 26,
    DividendPaid = 27,
    IndustryCode = 28,
    YearHighDate = 30,
    CalendarLowDate = 33,
    ListedMarket = 34,
    SecurityType = 35,
    ListedMarketName = 36,
    SecurityTypeName = 37,
    YearEndClose = 39,
    MaturityDate = 40,
    MultipleDeliverables = 46,
    SessionOpen = 47,
    BaseCurrency = 49,
    MinimumTick = 52,
    Identifier = 54,
    SubType = 55,
    SubTypeName = 56,
};

TEST(Fundamentals, EveryFieldStandsInItsPlace) {
    CMarket market(1, 2000, kFirstSessionDate);
    int splits = 0;
    for (CMarket::Index i = 0; i < 600; ++i) {
        const std::string line = FundamentalLine(market, i);
        const std::vector<std::string> field = Fields(line);
        ASSERT_EQ(line.substr(0, 2), "F,");
        ASSERT_EQ(field.size(), kFundamentalFieldCount) << line;
        ASSERT_EQ(line.substr(line.size() - 3), ",\r\n");
        EXPECT_EQ(field[Symbol], market.Listing(i).symbol);
        EXPECT_EQ(field[Exchange], "SIM");
        EXPECT_EQ(field[Name], market.Listing(i).name);
        const std::string date = "[0-9]+/[0-9]+/[0-9][0-9][0-9][0-9]";
        for (const ESlot slot : {YearHighDate, CalendarLowDate}) EXPECT_THAT(field[slot], testing::MatchesRegex(date));
        EXPECT_THAT(field[FirstSplit], testing::MatchesRegex("(0\\.[0-9][0-9] " + date + ")?"));
        if (!field[SecondSplit].empty()) {
            EXPECT_FALSE(field[FirstSplit].empty());
        }
        splits += !field[FirstSplit].empty();
        EXPECT_THAT(field[ExDividend], testing::MatchesRegex("([0-9]+/[0-9]+)?"));
        EXPECT_THAT(field[DividendPaid], testing::MatchesRegex("(" + date + ")?"));
        for (const ESlot slot : {ListedMarketName, SecurityTypeName, SubTypeName, MaturityDate, MultipleDeliverables})
            EXPECT_EQ(field[slot], "");
        EXPECT_EQ(field[SessionOpen], "09:30:00");
        EXPECT_EQ(field[BaseCurrency], "USD");
        EXPECT_GE(std::stod(field[YearHigh]), std::stod(field[YearLow]));
    }
    EXPECT_GT(splits, 100);
}

TEST(Fundamentals, FiguresAgreeWithTheMarket) {
    CMarket market(1, 0, kFirstSessionDate);
    const CMarket::Index share = market.Find("KO").value(), fund = market.Find("SPY").value();
    for (int i = 0; i < 100'000; ++i) market.At(share).Tick();
    const std::vector<std::string> field = Fields(FundamentalLine(market, share));
    const double last = static_cast<double>(market.At(share).Value(EField::Last)) / kPriceUnit;
    EXPECT_NEAR(std::stod(field[PriceEarnings]), last / std::stod(field[EarningsPerShare]), 0.006);
    EXPECT_NEAR(std::stod(field[DividendYield]), std::stod(field[DividendRate]) / last * 100, 0.006);
    EXPECT_NEAR(std::stod(field[DividendAmount]) * 4, std::stod(field[DividendRate]), 1e-9);
    EXPECT_EQ(field[SharesOut], "4323000");
    EXPECT_EQ(field[SecurityType], "1");
    EXPECT_EQ(field[SubType], "");
    EXPECT_NEAR(static_cast<double>(market.At(share).Value(EField::MarketCapitalization)), last * 4323000, 1);
    EXPECT_EQ(Fields(FundamentalLine(market, share)), field) << "told twice, told the same";
    const std::vector<std::string> fundField = Fields(FundamentalLine(market, fund));
    EXPECT_EQ(fundField[SecurityType], "3");
    EXPECT_EQ(fundField[SubType], "1");
    EXPECT_EQ(fundField[Growth], "");
}

} // namespace
} // namespace vx::sim
