#include "base/Text.h"
#include "vxconnect/CodeTables.h"
#include "vxconnect/Fundamentals.h"
#include "vxconnect/Market.h"
#include "vxconnect/Peer.h"
#include "vxconnect/QuoteLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace vx::sim {
namespace {

constexpr size_t kListedMarket = 34, kSecurityType = 35, kExpiration = 42, kStrike = 43, kRoot = 44, kMultiplier = 45,
                 kDeliverables = 46, kContractSize = 50, kMonths = 51, kMinimumTick = 52, kFirstDelivery = 53,
                 kSubType = 55;

class Contracts : public testing::Test {
protected:
    CInstrument& At(std::string_view symbol) { return m_market.At(m_market.Find(symbol).value()); }
    std::vector<std::string> Fundamentals(std::string_view symbol) {
        const auto fields = Fields(FundamentalLine(m_market, m_market.Find(symbol).value()));
        EXPECT_EQ(fields.size(), kFundamentalFieldCount);
        return fields;
    }
    CMarket m_market{1, 0, kFirstSessionDate};
};

TEST_F(Contracts, SymbolsExistByTheRule) {
    for (const char* known : {"IBM240216C180", "IBM240315P180", "IBM240419C200", "GE1240216C130", "SPY240216P475",
                              "ESH24", "CLG24", "ESZ24", "CLF25", "SIMXX", "SIMGX", "IBM.D"})
        EXPECT_TRUE(m_market.Find(known)) << known;
    for (const char* unknown : {"IBM240217C180",
                                "IBM240216C185",
                                "IBM240216C240",
                                "IBM240216X180",
                                "IBM240216C0180",
                                "IBM1240216C180",
                                "IBM240621C180",
                                "BRK.B240216C350",
                                "XYZ240216C10",
                                "240216C10",
                                "CP",
                                "P",
                                "IBMC",
                                "ESF24",
                                "ESH25",
                                "CLF24",
                                "ES",
                                "SIMYX",
                                "SPY.D",
                                ".D",
                                "XYZ.D",
                                "IBM.D.D",
                                "ibm240216c180"})
        EXPECT_FALSE(m_market.Find(unknown)) << unknown;
}

TEST_F(Contracts, EverySymbolListedIsFoundUnderItsNumber) {
    std::set<std::string> seen;
    m_market.ForEach([&](const SListing& listing) {
        EXPECT_TRUE(seen.insert(listing.symbol).second) << listing.symbol;
        const auto index = m_market.Find(listing.symbol);
        EXPECT_TRUE(index) << listing.symbol;
        return index && m_market.Listing(*index).name == listing.name && !listing.name.empty();
    });
    EXPECT_GT(seen.size(), 5'000u);
    EXPECT_LT(seen.size(), 50'000u);
}

TEST_F(Contracts, OptionsAndFuturesHaveTheirOwnFields) {
    const auto option = Fundamentals("IBM240216C180");
    EXPECT_EQ(option[kSecurityType], "2");
    EXPECT_EQ(option[kExpiration], "2/16/2024");
    EXPECT_EQ(option[kStrike], "180.00");
    EXPECT_EQ(option[kRoot], "IBM");
    EXPECT_EQ(option[kMultiplier], "100.00");
    EXPECT_EQ(option[kDeliverables], "0");
    EXPECT_EQ(option[kSubType], "");
    EXPECT_EQ(Fundamentals("GE1240216C130")[kSubType], "2");
    EXPECT_EQ(Fundamentals("GE1240216C130")[kDeliverables], "1");
    const auto future = Fundamentals("ESH24");
    EXPECT_EQ(future[kSecurityType], "7");
    EXPECT_EQ(future[kExpiration], "3/15/2024");
    EXPECT_EQ(future[kContractSize], "50 x index");
    EXPECT_EQ(future[kMonths], "H;M;U;Z");
    EXPECT_EQ(future[kMinimumTick], "0.25");
    EXPECT_EQ(future[kFirstDelivery], "3/1/2024");
    EXPECT_EQ(At("IBM240216C180").Value(EField::DaysToExpiration), 16);
    EXPECT_EQ(At("ESH24").Value(EField::SettlementDate), 20240130);
    EXPECT_GT(At("ESH24").Value(EField::OpenInterest), 1'000'000);
    EXPECT_FALSE(At("ESH24").Present().Has(EField::MarketCapitalization));
}

TEST_F(Contracts, FuturesMoveOnTheirTicksAndSettleEachDay) {
    CInstrument& future = At("ESH24");
    int64_t last = 0;
    while (!future.Tick().newSession) {
        last = future.Value(EField::Last);
        ASSERT_EQ(last % 2500, 0);
        ASSERT_EQ(future.Value(EField::Bid) % 2500, 0);
    }
    EXPECT_EQ(future.Value(EField::Settle), last);
    EXPECT_EQ(future.Value(EField::SettlementDate), 20240131);
    EXPECT_EQ(future.Value(EField::DaysToExpiration), 43);
    EXPECT_NE(static_cast<uint32_t>(future.Value(EField::MessageContents)) & kContentsSettlement, 0u);
}

TEST_F(Contracts, FundsArePricedOnceADay) {
    for (const char* symbol : {"SIMGX", "SIMXX"}) {
        CInstrument& fund = At(symbol);
        EXPECT_FALSE(fund.Present().Has(EField::Bid));
        EXPECT_FALSE(fund.Present().Has(EField::TotalVolume));
        for (;;) {
            const int64_t before = fund.Value(EField::Last);
            const SUpdate update = fund.Tick();
            if (update.newSession) break;
            ASSERT_EQ(fund.Value(EField::Last), before);
        }
        EXPECT_EQ(fund.Value(EField::LastDate), 20240201);
    }
    EXPECT_EQ(At("SIMXX").Value(EField::Last), kPriceUnit);
    EXPECT_NEAR(static_cast<double>(At("SIMXX").Value(EField::SevenDayYield)), 510, 60);
    EXPECT_GT(At("SIMXX").Value(EField::AverageMaturity), 0);
    EXPECT_GT(At("SIMXX").Value(EField::NetAssetValue), 500);
    EXPECT_EQ(Fundamentals("SIMXX")[kSecurityType], "4");
    EXPECT_EQ(Fundamentals("SIMGX")[kSecurityType], "3");
    EXPECT_EQ(Fundamentals("SIMGX")[kSubType], "");
}

TEST_F(Contracts, TypesAndMarketsAreThoseOfTheTables) {
    for (const char* symbol : {"IBM", "SPY", "IBM.D", "SIMXX", "SIMGX", "ESH24", "IBM240216C180"}) {
        const auto fields = Fundamentals(symbol);
        const auto isMarket = [&](const SListedMarket& m) { return std::to_string(m.id) == fields[kListedMarket]; };
        const auto isType = [&](const SSecurityType& t) { return std::to_string(t.id) == fields[kSecurityType]; };
        EXPECT_TRUE(std::any_of(ListedMarkets().begin(), ListedMarkets().end(), isMarket)) << symbol;
        EXPECT_TRUE(std::any_of(SecurityTypes().begin(), SecurityTypes().end(), isType)) << symbol;
    }
    for (const SRegion& region : kRegions) {
        const auto same = [&](const SListedMarket& m) { return m.id == region.center && m.shortName == region.name; };
        EXPECT_TRUE(std::any_of(ListedMarkets().begin(), ListedMarkets().end(), same)) << region.name;
    }
}

using Delayed = ServerTest;

TEST_F(Delayed, TimesLieFifteenMinutesBehindTheMarketAndLowPricesAreRestricted) {
    m_options.rate = 2'000;
    Start();
    const auto peer = Level1Peer("wIBM.D\nwIBM\nwNKLA\n");
    CMergedRecord delayed, prompt, low;
    delayed.Merge(peer->TakeLine("P,IBM.D,"));
    prompt.Merge(peer->TakeLine("P,IBM,"));
    low.Merge(peer->TakeLine("P,NKLA,"));
    EXPECT_EQ(delayed.Get(EField::Delay), "15");
    EXPECT_EQ(prompt.Get(EField::Delay), "0");
    EXPECT_EQ(low.Get(EField::RestrictedCode), "R");
    EXPECT_EQ(prompt.Get(EField::RestrictedCode), "N");
    EXPECT_THAT(delayed.Get(EField::LastTime), testing::StartsWith("09:4"));
    EXPECT_GT(prompt.Get(EField::LastTime), "09:59:00");
    while (delayed.Get(EField::LastTime) < "09:46:00") delayed.Merge(peer->TakeLine("Q,IBM.D,"));
    EXPECT_THAT(Server().Board().ClockText(), testing::StartsWith("20240131 10:0"));
}

} // namespace
} // namespace vx::sim
