// SPDX-License-Identifier: MIT
// Which symbols exist, and what the feed says of them besides their prices.

#include "vxconnect/Peer.h"
#include "vxconnect/market/Fundamentals.h"

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

TEST(Fundamentals, EachKindHasItsOwnFields) {
    CMarket market(1, 0, kFirstSessionDate);
    // Symbol, then places and texts: option symbols 3, shares 18, market 34, type 35, expiration 42, strike 43, root
    // 44, multiplier 45, deliverables 46, currency 49, months 51, tick 52, delivery 53, subtype 55.
    for (const char* line : {"IBM240216C180 35=2 42=2/16/2024 43=180.00 44=IBM 45=100.00 46=0 55=",
                             "ESH24 3= 35=7 42=3/15/2024 51=H;M;U;Z 52=0.25 53=3/1/2024",
                             "KO 3=KO 35=1 55= 18=4323000 42=", "EURUSD 34=64 35=10 18= 42= 49=EUR 52=0.00001",
                             "SIMXX 35=4", "IBM.D 35=1 34=64"}) {
        const auto words = Words(line);
        const auto fields = Fields(FundamentalLine(market, market.Find(words[0]).value()));
        ASSERT_EQ(fields.size(), kFundamentalSlotCount) << line;
        for (size_t i = 1; i < words.size(); ++i) {
            const size_t slot = std::stoul(words[i]);
            EXPECT_EQ(fields[slot], words[i].substr(words[i].find('=') + 1)) << words[0] << " " << slot;
        }
    }
}

} // namespace
} // namespace vx::sim
