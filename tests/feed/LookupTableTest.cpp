// SPDX-License-Identifier: MIT
#include "feed/lookup/LookupTables.h"
#include "support/FakeClock.h"
#include "support/LogEvents.h"
#include "support/LookupPeer.h"
#include "support/MessageBoxes.h"
#include "support/ScriptedFeed.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using namespace testing;
using enum SLookupAnswer::EThen;

namespace {

constexpr SLookupTimes kLong{60000, 60000}; // For exchanges that come to an end on their own.
constexpr SLookupTimes kShort{60000, 30};   // For those that fall silent.
constexpr SLookupTimes kBrief{30, 60000};   // For those that never come to an end.
const std::string kEnd = "!ENDMSG!,\r\n";

struct CLookupTablesTest : testing::Test {
    CTempFolder folder;
    CRegistry registry{folder.Path()};
    CMessageBoxes boxes;
    std::unique_ptr<CLookupPeer> peer;

    void PeerAnswers(std::vector<SLookupAnswer> answers) {
        peer = std::make_unique<CLookupPeer>(std::move(answers));
        PortIs(peer->Port());
    }
    void PortIs(uint16_t port) { registry.WriteText(kStartupKey, kLookupPortValue, std::to_string(port)); }

    /// A table that was loaded from an answer.
    std::unique_ptr<CListedMarkets> Loaded(SLookupAnswer answer) {
        PeerAnswers({std::move(answer)});
        auto table = std::make_unique<CListedMarkets>(registry, kLong);
        table->Load();
        return table;
    }
};

} // namespace

TEST_F(CLookupTablesTest, ACompleteReplyFillsTheTableAndIsAskedForOnce) {
    const auto markets =
        Loaded({"E,odd\r\n1,A,B,C,D\r\n\r\n2,E,F,G,H,I\n300,J\n-1,K\n1,,X\r\nno id,L\r\n" + kEnd, Stays});
    markets->Load();
    EXPECT_THAT(peer->Heard(), ElementsAre("SLM\r\n"));
    EXPECT_THAT(markets->At(1), ElementsAre("", "X", "C", "D")) << "a later line overwrites as far as it goes";
    EXPECT_THAT(markets->At(2), ElementsAre("E", "F", "G", "H"));
    EXPECT_EQ(markets->Name(0), "L") << "an id that is no number is 0";
    EXPECT_EQ(markets->Count(), 5);
    for (const int id : {-1, 256, 1000000}) EXPECT_EQ(markets->Name(id), "");
}

TEST_F(CLookupTablesTest, ARefusedRequestAndAnEarlyEndCountAsLoaded) {
    for (const SLookupAnswer& answer :
         {SLookupAnswer{"1,A\r\n!SYNTAX_ERROR!,\r\n", Stays}, SLookupAnswer{"", Closes}, SLookupAnswer{"", Resets}}) {
        const auto markets = Loaded(answer);
        EXPECT_TRUE(markets->IsLoaded());
        EXPECT_EQ(markets->Count(), 0);
        markets->Load();
        EXPECT_THAT(peer->Heard(), SizeIs(1));
    }
    std::string lines;
    for (int id = 0; id < 20; ++id) lines += std::to_string(id) + "," + std::string(65536, 'x') + ",y\r\n";
    const auto markets = Loaded({lines + "20,with no line end", Closes});
    EXPECT_EQ(markets->Count(), 21) << "long lines, and many of them, are read whole";
    EXPECT_EQ(markets->At(19)[1], "y");
    EXPECT_EQ(markets->Name(20), "with no line end");
}

TEST_F(CLookupTablesTest, APortWithoutAWholeReplyIsLeftSilentlyAndAskedAgain) {
    const CLogEvents log("LookupError");
    PortIs(FreePort());
    CListedMarkets markets(registry, kLong);
    for (int i = 0; i < 2; ++i) markets.Load();
    EXPECT_FALSE(markets.IsLoaded() || markets.WasUnanswered());
    PeerAnswers({{"", Stays}, {"", Drips}, {"1,A\r\n", Floods}, {"2,B\r\n" + kEnd, Stays}});
    for (const SLookupTimes times : {kShort, kBrief, kLong}) { // The flood is left for its size.
        markets.SetTimes(times);
        markets.Load();
        EXPECT_FALSE(markets.IsLoaded());
        EXPECT_TRUE(markets.WasUnanswered());
        EXPECT_EQ(markets.Count(), 0);
    }
    markets.Load();
    EXPECT_FALSE(markets.Has(1)) << "nothing of a reply that was left";
    EXPECT_EQ(markets.Name(2), "B");
    EXPECT_THAT(boxes.shown, IsEmpty());
    EXPECT_THAT(log.texts, SizeIs(4)) << "the same failure is not told twice";
}

TEST_F(CLookupTablesTest, AfterAFailureTheStoreWaitsLongerEachTimeItWasHeldUp) {
    CFakeClock clock;
    PeerAnswers({{"", Stays}, {"", Stays}});
    CLookupTables tables(registry, kShort);
    size_t heard = 0;
    const auto asksAfter = [&](int64_t pauseMs, size_t times) {
        if (pauseMs > 0) clock.elapsedMs += pauseMs - 1, tables.EnsureSecurityTypesLoaded();
        const bool early = peer->Heard().size() != heard;
        clock.elapsedMs += 1;
        tables.EnsureMarketsLoaded(), tables.EnsureSecurityTypesLoaded();
        heard += times;
        // The peer's thread may come to a request only after its answer was given up.
        return !early && WaitUntil([&] { return peer->Heard().size() >= heard; }) && peer->Heard().size() == heard;
    };
    EXPECT_TRUE(asksAfter(0, 1));
    EXPECT_TRUE(asksAfter(5000, 1)) << "the table that was answered in vain for is the only one asked for";
    tables.SetTimes(kLong);
    PortIs(FreePort());
    clock.elapsedMs += 10000;
    EXPECT_FALSE(tables.EnsureSecurityTypesLoaded());
    PeerAnswers({{"7,ALPHA\r\n" + kEnd, Stays}, {"1,EQUITY,Equity\r\n" + kEnd, Stays}});
    heard = 0;
    EXPECT_TRUE(asksAfter(5000, 2)) << "a port that refuses costs no time";
    EXPECT_TRUE(tables.EnsureMarketsLoaded() && tables.EnsureSecurityTypesLoaded());
    EXPECT_EQ(tables.MarketName(7), "ALPHA");
    EXPECT_EQ(tables.SecurityTypeName(1), "Equity");
    tables.EnsureSecurityTypesLoaded();
    EXPECT_EQ(peer->Heard().size(), heard) << "nothing is missing any more";
}
