#include "base/Number.h"
#include "base/Text.h"
#include "vxconnect/Peer.h"
#include "vxconnect/market/Market.h"

#include <gtest/gtest.h>

namespace vx::sim {
namespace {

using Regional = ServerTest;

TEST(RegionalQuotes, RegionsMakeTheBestQuoteOrAreNotBetter) {
    CMarket market(1, 0, kFirstSessionDate);
    for (const char* symbol : {"IBM", "NKLA", "SPY"}) {
        CInstrument& instrument = market.At(market.Find(symbol).value());
        std::array<int, kRegions.size()> told{};
        int made = 0;
        for (int i = 0; i < 60'000; ++i) { // Beyond the end of a session.
            const SUpdate update = instrument.Tick();
            const int64_t bid = instrument.Value(EField::Bid);
            for (size_t region = 0; region < kRegions.size(); ++region) {
                const CRegionalQuotes::SQuote& quote = instrument.Regions().At(region);
                ASSERT_LE(quote.bid.price, bid) << symbol << i;
                ASSERT_GE(quote.ask.price, instrument.Value(EField::Ask)) << symbol << i;
                ASSERT_GT(quote.bid.price, 0);
                told[region] += update.regions >> region & 1;
                const bool isBest = instrument.Value(EField::BidMarketCenter) == kRegions[region].center;
                if (!isBest || !update.changed.Has(EField::BidTime)) continue;
                ++made;
                ASSERT_EQ(quote.bid.price, bid);
                ASSERT_EQ(quote.bid.size, instrument.Value(EField::BidSize));
            }
        }
        for (const int count : told) EXPECT_GT(count, 1'000) << symbol;
        EXPECT_GT(made, 500) << symbol;
    }
}

TEST_F(Regional, LinesComeForEveryRegionOnceAskedFor) {
    m_options.rate = 20'000;
    Start();
    const auto peer = Level1Peer("wIBM\nwESH24\n");
    const auto regions = static_cast<size_t>(EField::AvailableRegions);
    EXPECT_EQ(Fields(peer->TakeLine("P,IBM,"))[regions], "HARBOR;BRIDGE;LANTERN;QUAY");
    EXPECT_EQ(Fields(peer->TakeLine("P,ESH24,"))[regions], "") << "contracts have none";
    peer->TakeLine("Q,IBM,");
    peer->Read();
    EXPECT_EQ(peer->Text().find("\nR,"), std::string::npos) << "nobody asked";
    peer->Send("S,REGON,ESH24\nS,REGON,IBM\nS,REGON,KO\n");
    for (const SRegion& region : kRegions) {
        const std::string line = peer->TakeLine("R,IBM," + std::string(region.name) + ",");
        const auto fields = SplitTerminated(line, ',');
        ASSERT_EQ(fields.size(), 12u) << line;
        EXPECT_THAT(std::string(fields[5]), testing::MatchesRegex("[0-9][0-9]:[0-9][0-9]:[0-9][0-9]b"));
        EXPECT_THAT(std::string(fields[8]), testing::MatchesRegex("[0-9][0-9]:[0-9][0-9]:[0-9][0-9]a"));
        EXPECT_LT(ReadDouble(fields[3]), ReadDouble(fields[6]));
        EXPECT_NE(peer->TakeLine("R,IBM," + std::string(region.name) + ","), "(none)") << "and later ones";
    }
    peer->Read();
    for (const char* none : {"R,KO,", "R,ESH24,"}) EXPECT_EQ(peer->Text().find(none), std::string::npos) << none;
    peer->Send("wKO\n");
    EXPECT_NE(peer->TakeLine("R,KO,HARBOR,"), "(none)") << "asked for before the watch";
}

} // namespace
} // namespace vx::sim
