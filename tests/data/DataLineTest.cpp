// SPDX-License-Identifier: MIT
#include "data/CellList.h"
#include "support/FakeClock.h"

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;

// How lines fill a record is compared with a plain model in AgreementTest; here, what is shown of it and when.

namespace {

struct CL1DataLineTest : testing::Test, CCellLists {};

} // namespace

TEST_F(CL1DataLineTest, TheTickTrendHoldsTenMarksNewestFirst) {
    const std::string up = "\xAD", down = "\xAF", same = "\xB7";
    Update("Tick=173");
    EXPECT_EQ(Direction("Tick Trend"), EDirection::Up) << "also the first";
    Update("Tick=175"), Update("Tick=183");
    EXPECT_EQ(Cell("Tick Trend"), same + down + up);
    Update("Tick=7");
    EXPECT_EQ(Cell("Tick Trend"), same + down + up);
    EXPECT_EQ(Direction("Tick Trend"), EDirection::NeverSet);
    for (int i = 0; i < 11; ++i) Update("Tick=173");
    EXPECT_EQ(Cell("Tick Trend"), std::string(10, '\xAD'));
    Summary("Bid=1");
    EXPECT_EQ(Direction("Tick Trend"), EDirection::Up);
}

TEST_F(CL1DataLineTest, MarketIdsBecomeNames) {
    Update("Ask Market Center=3");
    EXPECT_EQ(Cell("Ask Market Center Name"), "M3") << "the first id that is to be named has the tables loaded";
    Update("Last Market Center=5,Extended Trade Market Center=256,Most Recent Trade Market Center=250");
    ExpectCells("Trade Market Center=M5,Trade Market Center Name=M5,ET Market Center=,MRT Market Center=,");
    Update("Last=1,Bid Market Center=6");
    EXPECT_EQ(Cell("LQT Market Center"), "M5") << "a name is not taken for an id by the next message";
    ExpectCells("Bid Market Center=6,Bid Market Center Name=M6,");
    Update("Last Market Center=300");
    EXPECT_EQ(Cell("Trade Market Center"), "");
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
