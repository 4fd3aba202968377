// SPDX-License-Identifier: MIT
#include "support/FakeClock.h"
#include "support/FakeFeed.h"

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;

// How lines fill a record is compared with a plain model in AgreementTest; here, what is shown of it and when.

namespace {

struct CL1DataLineTest : testing::Test, CFakeFeed {};

} // namespace

TEST_F(CL1DataLineTest, TheMarketOfAQuoteHasTheTablesLoaded) {
    Update("Ask Market Center=3");
    EXPECT_EQ(Cell("Ask Market Center Name"), "M3");
}

TEST_F(CL1DataLineTest, NamesThatCannotBeLoadedAreAskedForAgainAfterFiveSeconds) {
    CFakeClock clock;
    names.canLoad = false;
    Fundamental("Listed Market=7,Security Type=1");
    Update("Last Market Center=5,Extended Trade Market Center=8,Most Recent Trade Market Center=9");
    EXPECT_EQ(Cell("ET Market Center"), "");
    Update("Most Recent Trade Market Center=256");
    EXPECT_EQ(names.loads, 2) << "one try for each table";
    clock.elapsedMs += 4999;
    Update("Last Market Center=5");
    EXPECT_EQ(names.loads, 2);
    names.canLoad = true, clock.elapsedMs += 1;
    Send('Q', "Last Market Center=4", "OTHER");
    EXPECT_EQ(store.FindSymbol("OTHER")->Quote().Text(UpdateSlot("Last Market Center")), "M4") << "its first line";
    // No further trade of the symbol is needed; a later id was no market's; what came before is named now; and no
    // further line is needed for the other table.
    ExpectCells("Trade Market Center=M5,ET Market Center=M8,MRT Market Center=,Security Type Name=EQUITY,"
                "Listed Market Name=A market with quite a long name,");
    Update("Last Market Center=6");
    EXPECT_EQ(names.loads, 4);
}

TEST_F(CL1DataLineTest, NotFoundMarksTheRecordUntilAPriceComes) {
    store.Watch("IBM", window.queue);
    EXPECT_EQ(Cell("Symbol"), "IBM");
    Update("Last=5"), Update("Last=nOT fOUND");
    EXPECT_EQ(Cell("Symbol"), "Not Found");
    EXPECT_EQ(Ibm().StatusText(), "Not Found");
    EXPECT_EQ(Cell("Last", 0), "5");
    Update("Bid=1"), Update("Last=junk");
    EXPECT_TRUE(Ibm().IsNotFound());
    Update("Most Recent Trade=4");
    EXPECT_EQ(Cell("Symbol"), "IBM");
}

TEST_F(CL1DataLineTest, DatesAreDaysOfTheCalendarOrInvalid) {
    ForEach("1/2/50=01/02/50,2/29/2024=02/29/24,2/29/2023=Invalid DateTime,0/0/0=,junk=,", [&](auto text, auto shown) {
        Update(std::string("Settlement Date=").append(text));
        EXPECT_EQ(Cell("Settlement Date"), shown) << text;
    });
}

TEST_F(CL1DataLineTest, ARegionalRowShowsItsQuoteAndTheFundamentalsOfItsSymbol) {
    store.Watch("IBM--X", window.queue);
    store.OnRegional("R,IBM,Y,1,1,09:00:00,2,2,09:00:00,3,3,09:00:00,");
    EXPECT_EQ(Cell("IBM--X", "Bid", 2), "") << "another region";
    window.TakeChanged();
    store.OnRegional("R,IBM,X,10.5,3,09:30:00b,10.6,4,09:30:01,10.55,5,T09:30:02,");
    EXPECT_THAT(window.TakeChanged(), ElementsAre("IBM--X"));
    Update("Bid=99,High=100");
    Fundamental("Exchange=NYSE");
    EXPECT_THAT(window.TakeChanged(), ElementsAre("IBM--X"));

    ExpectCells("Symbol=IBM--X,Bid=10.50,B Size=3,Bid Time=09:30:00,Ask=10.60,A Size=4,Ask Time=09:30:01,"
                "Last=10.55,Tick Vol=5,T Time=09:30:02,Exchange=NYSE,High=,LQT Price=,Type=,",
                2, "IBM--X");
    store.OnRegional("R,IBM,X,,,,,,,Not Found,,,");
    EXPECT_EQ(Cell("IBM--X", "Symbol", 2), "Not Found");
}
