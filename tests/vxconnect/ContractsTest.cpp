#include "vxconnect/Peer.h"
#include "vxconnect/market/Market.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace vx::sim {
namespace {

class Contracts : public testing::Test {
protected:
    CInstrument& At(std::string_view symbol) { return m_market.At(m_market.Find(symbol).value()); }
    CMarket m_market{1, 1000, kFirstSessionDate, true};
};

TEST_F(Contracts, ListedSymbolsExistByTheRule) {
    for (const std::string& known : Words("IBM240216C180 IBM240315P180 IBM240419C200 GE1240216C130 SPY240216P475 ESH24 "
                                          "CLG24 ESZ24 CLF25 SIMXX SIMGX IBM.D BRK.B S00001 S00768"))
        EXPECT_TRUE(m_market.Find(known)) << known;
    for (const std::string& unknown :
         Words("IBM240217C180 IBM240216C185 IBM240216C240 IBM240216X180 IBM240216C0180 IBM1240216C180 IBM240621C180 "
               "BRK.B240216C350 XYZ240216C10 240216C10 ESF24 ESH25 CLF24 ES SIMYX XYZ XYZ.D .D SPY.D IBM.D.D "
               "ibm240216c180 S00769 S00000 S0001 S000010 Sx0001 ibm \xC4"))
        EXPECT_FALSE(m_market.Find(unknown)) << unknown;
}

TEST(Unlisted, TickersAreMadeUpAndOtherTextsUnknown) {
    CMarket market(1, 20, kFirstSessionDate);
    struct SCase {
        const char* symbol;
        EKind kind;
    };
    for (const SCase& made : {SCase{"XYZ", EKind::Share}, SCase{"Q", EKind::Share}, SCase{"ABCD.B", EKind::Share},
                              SCase{"ABCDX", EKind::MutualFund}, SCase{"ABCXX", EKind::MoneyFund}}) {
        const SListing listing = market.Listing(market.Find(made.symbol).value());
        EXPECT_EQ(listing.symbol, made.symbol);
        EXPECT_EQ(listing.terms.kind, made.kind) << made.symbol;
        EXPECT_GT(listing.ticker.price, 0);
        EXPECT_EQ(market.Find(made.symbol), market.FindKnown(made.symbol));
    }
    EXPECT_EQ(market.Listing(market.Find("ZM").value()).name, "Zoom Video Communications")
        << "left out, but well known";
    for (const std::string& unknown :
         Words("ABCDEF xyz A1 12 A.BC A. .B A..B ABCDX.D SPY.D XYZ.D.D XYZ--X $SPX ABC/D A-B  \xC4"))
        EXPECT_FALSE(market.Find(unknown)) << unknown;
    EXPECT_FALSE(market.FindKnown("ZYX")) << "nobody has asked for it";
    const auto count = [](CMarket& from) {
        size_t listed = 0;
        from.ForEach([&](const SListing&) { return ++listed, true; });
        return listed;
    };
    CMarket untouched(1, 20, kFirstSessionDate);
    EXPECT_EQ(count(market), count(untouched)) << "asking lists nothing";
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

TEST_F(Contracts, FuturesMoveOnTheirTicksAndSettleEachDay) {
    constexpr int64_t kQuarter = kPriceUnit / 4;
    CInstrument& future = At("ESH24");
    int64_t last = 0;
    while (!future.Tick().newSession) {
        last = future.Value(EField::Last);
        ASSERT_EQ(last % kQuarter, 0);
        ASSERT_EQ(future.Value(EField::Bid) % kQuarter, 0);
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
