#include "support/FakeClock.h"
#include "support/FakeFeed.h"

#include <gmock/gmock.h>

using namespace vx;
using namespace vx::test;
using testing::ElementsAre;

namespace {

struct DataLine : testing::Test, CFakeFeed {
    const CQuoteData& Quote() const { return Ibm().Quote(); }
};

constexpr EDirection kNever = EDirection::NeverSet;
constexpr EDirection kDown = EDirection::Down;
constexpr EDirection kSame = EDirection::Unchanged;
constexpr EDirection kUp = EDirection::Up;

} // namespace

TEST_F(DataLine, AnEmptyOrBlankFieldLeavesValueAndDirectionAsTheyWere) {
    Update("Bid=10,Ask=11,Bid Size=3"), Update("Bid=9");
    Update("Ask=12,Bid=   ");
    EXPECT_EQ(Cell("Bid"), "9.0000");
    EXPECT_EQ(Direction("Bid"), kDown);
    EXPECT_EQ(Direction("Ask"), kUp);
    EXPECT_EQ(Direction("B Size"), kSame);
    EXPECT_EQ(Direction("High"), kNever);
    EXPECT_EQ(Cell("High"), "");
}

TEST_F(DataLine, DirectionsCompareWithTheValueBefore) {
    const std::pair<const char*, EDirection> steps[] = {{"0", kSame}, {"0", kSame}, {"2", kUp},    {"2", kSame},
                                                        {"1", kDown}, {"x", kDown}, {"-0", kSame}, {"1e3", kUp}};
    for (const char* field : {"Bid", "Bid Size", "Last"})
        for (int i = 0; const auto& [text, direction] : steps) {
            Update(std::string(field) + "=" + text);
            EXPECT_EQ(Direction(field == std::string_view("Bid Size") ? "B Size" : field), direction) << field << ++i;
        }
    for (const auto& [text, direction] : {std::pair{"4294967295", kSame}, {"-1", kDown}, {"4294967296", kUp}}) {
        Update(std::string("Total Volume=") + text);
        EXPECT_EQ(Direction("Volume"), direction) << text;
    }
    EXPECT_EQ(Cell("Volume"), "4294967295");
}

TEST_F(DataLine, ChangesAreDirectedByTheirSign) {
    for (const auto& [text, direction] :
         {std::pair{"0.10", kUp}, {"-0.10", kDown}, {"-0.05", kDown}, {"0", kSame}, {"0.01", kUp}}) {
        Update(std::string("Change=") + text + ",Change From Open=" + text);
        EXPECT_EQ(Direction("Change"), direction) << text;
        EXPECT_EQ(Direction("ChgFrmOpn"), direction) << text;
    }
    Summary("Change=-1");
    EXPECT_EQ(Direction("Change"), kSame);
    Update("Bid=1");
    EXPECT_EQ(Direction("Change"), kSame) << "only a message that carries the change directs it";
}

TEST_F(DataLine, FractionsBecomePercentages) {
    Update("Percent Change=0.01234,Percent Off Average Volume=-0.5,Volatility=0.02");
    EXPECT_EQ(Cell("% Chg", 2), "+1.23%");
    EXPECT_EQ(Cell("% OffAvgVol", 1), "-50.0%");
    EXPECT_EQ(Cell("Volatility", 2), "2.00%");
}

TEST_F(DataLine, TheTickTrendHoldsTenMarksNewestFirst) {
    const std::string up = "\xAD", down = "\xAF", same = "\xB7";
    Update("Tick=173");
    EXPECT_EQ(Direction("Tick Trend"), kUp) << "also the first";
    Update("Tick=175"), Update("Tick=183");
    EXPECT_EQ(Cell("Tick Trend"), same + down + up);
    Update("Tick=7");
    EXPECT_EQ(Cell("Tick Trend"), same + down + up);
    EXPECT_EQ(Direction("Tick Trend"), kNever);
    for (int i = 0; i < 11; ++i) Update("Tick=173");
    EXPECT_EQ(Cell("Tick Trend"), std::string(10, '\xAD'));
    Summary("Bid=1");
    EXPECT_EQ(Direction("Tick Trend"), kUp);
}

TEST_F(DataLine, ASummaryShowsNothingAsMovingAndSaysSo) {
    Update("Bid=1,Ask=1,Bid Market Center=1,Last=1"), Update("Bid=2,Ask=0.5,Bid Market Center=2,Message Contents=ba");
    Summary("Last=3,Message Contents=C");
    for (const char* column : {"Bid", "Ask", "Last"}) EXPECT_EQ(Direction(column), kSame) << column;
    EXPECT_EQ(Direction("Bid Market Center"), kUp) << "ids are no quantities";
    EXPECT_EQ(Direction("High"), kNever);
    EXPECT_EQ(Cell("Type"), "SUMMARY");
}

TEST_F(DataLine, MarketIdsBecomeNames) {
    Update("Ask Market Center=3");
    EXPECT_EQ(Cell("Ask Market Center Name"), "M3") << "the first id that is to be named has the tables loaded";
    Update("Last Market Center=5,Extended Trade Market Center=256,Most Recent Trade Market Center=250");
    EXPECT_EQ(Cell("Trade Market Center"), "M5");
    EXPECT_EQ(Cell("Trade Market Center Name"), "M5");
    EXPECT_EQ(Cell("ET Market Center"), "");
    EXPECT_EQ(Cell("MRT Market Center"), "");
    Update("Last=1,Bid Market Center=6");
    EXPECT_EQ(Cell("LQT Market Center"), "M5") << "a name is not taken for an id by the next message";
    EXPECT_EQ(Cell("Bid Market Center"), "6");
    EXPECT_EQ(Cell("Bid Market Center Name"), "M6");
    for (const char* id : {"-1", "300", "99999999999"}) {
        Update(std::string("Last Market Center=") + id);
        EXPECT_EQ(Cell("Trade Market Center"), "") << id;
    }
}

TEST_F(DataLine, NamesThatCannotBeLoadedAreAskedForAgainAfterFiveSeconds) {
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
    EXPECT_EQ(Cell("Trade Market Center"), "M5") << "no further trade of the symbol is needed";
    EXPECT_EQ(Cell("ET Market Center"), "M8");
    EXPECT_EQ(Cell("MRT Market Center"), "") << "a later id was no market's";
    EXPECT_EQ(Cell("Listed Market Name"), "A market with quite a long name") << "what came before is named now";
    EXPECT_EQ(Cell("Security Type Name"), "EQUITY") << "and no further line is needed for the other table";
    Update("Last Market Center=6");
    EXPECT_EQ(names.loads, 4);
}

TEST_F(DataLine, NotFoundMarksTheRecordUntilAPriceComes) {
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

TEST_F(DataLine, DatesAreDaysOfTheCalendarOrInvalid) {
    const std::pair<const char*, const char*> cases[] = {{"1/2/49", "01/02/49"},
                                                         {"1/2/50", "01/02/50"},
                                                         {"2/29/2024", "02/29/24"},
                                                         {"2/29/2023", "Invalid DateTime"},
                                                         {"13/1/2024", "Invalid DateTime"},
                                                         {"0/0/0", ""},
                                                         {"junk", ""}};
    for (const auto& [text, cell] : cases) {
        Update(std::string("Settlement Date=") + text);
        EXPECT_EQ(Cell("Settlement Date"), cell) << text;
    }
    Update("Settlement Date=1/2/49");
    EXPECT_EQ(Quote().Date(UpdateSlot("Settlement Date")), (SDate{2049, 1, 2, EDateState::Valid}));
    Update("Settlement Date=1/2/50");
    EXPECT_EQ(Quote().Date(UpdateSlot("Settlement Date")), (SDate{1950, 1, 2, EDateState::Valid}));
    Update("Settlement Date=1/2/1899");
    EXPECT_EQ(Quote().Date(UpdateSlot("Settlement Date")), (SDate{1899, 1, 2, EDateState::Valid}));
}

TEST_F(DataLine, AFieldBehindTheListRepeatsTheDecimalPrecision) {
    EXPECT_EQ(CL1SymbolRec("X", 1).DecimalPrecision(), -1);
    store.OnUpdate("Q,IBM," + std::string(68, ',') + "2,9,");
    EXPECT_EQ(Ibm().DecimalPrecision(), 2);
    Update("Decimal Precision=3");
    EXPECT_EQ(Ibm().DecimalPrecision(), 3);
}

TEST_F(DataLine, AFieldThatNoCommaEndsIsLost) {
    store.OnUpdate("Q,IBM,,1.5,2.5");
    EXPECT_EQ(Quote().Number(UpdateSlot("Change")), 1.5);
    EXPECT_EQ(Quote().Direction(UpdateSlot("Percent Change")), kNever);
}

TEST_F(DataLine, QualifyingTradesMakeTheHistory) {
    Update("Last=1,Message Contents=C");
    EXPECT_EQ(Ibm().History(), nullptr) << "none is kept unless asked for";
    store.SetHistoryLimit("IBM", 2);
    Update("Bid=1");
    Update("Last=2,Last Size=20,Last Time=09:30:01.123456789012,Extended Trade=9,Message Contents=bC");
    Update("Last=3,Message Contents=E"), Update("Last=4,Message Contents=C"), Update("Last=5,Message Contents=C");
    Summary("Last=6,Message Contents=C");
    const CTimeAndSales& history = *Ibm().History();
    ASSERT_EQ(history.Size(), 2u);
    EXPECT_EQ(history.At(0).number, 2u);
    EXPECT_EQ(history.At(0).price, 4);
    EXPECT_STREQ(history.At(0).time.data(), "09:30:01.123456789");
    EXPECT_EQ(history.At(0).extendedPrice, 9);
    EXPECT_EQ(history.At(1).size, 20);
    store.SetHistoryLimit("IBM", 1);
    EXPECT_EQ(Ibm().History()->At(0).price, 5);
    store.SetHistoryLimit("IBM", 0);
    EXPECT_EQ(Ibm().History(), nullptr);
}

TEST_F(DataLine, FundamentalsFillTheirColumns) {
    Fundamental("Name=International Business Machines Corporation,52wk High=200.5,Div Amt=0.5,Avg Vol=1000,"
                "Split1 Ratio=0.5 6/2/2014,Ex Div Date=2/9,SIC=7370,Session Open Time=09:30,5yr Growth %=3.5");
    EXPECT_EQ(Cell("Name"), "International Business Machines Corporation");
    EXPECT_EQ(Cell("52wk High", 2), "200.50");
    EXPECT_EQ(Cell("Div Amt", 1), "0.5000");
    EXPECT_EQ(Cell("Split1 Ratio", 2), "0.50");
    EXPECT_EQ(Cell("Split1 Date"), "06/02/14");
    EXPECT_EQ(Cell("Split2 Date"), "");
    EXPECT_EQ(Cell("Ex Div Date"), "02/09");
    EXPECT_EQ(Cell("SIC"), "7370");
    EXPECT_EQ(Cell("Session Open Time"), "09:30");
    EXPECT_EQ(Cell("5yr Growth %", 1), "3.5%");
}

TEST_F(DataLine, FundamentalCodesGetTheirNames) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"2", "1", "Binary Option"}, {"2", "2", "Non-Standard Option"},  {"2", "3", ""},
        {"3", "2", "Fund"},          {"3", "1", "Exchange Traded Fund"}, {"1", "1", ""}};
    for (const auto& [type, subType, name] : cases) {
        Fundamental(std::string("Security Type=") + type + ",Security SubType=" + subType + ",Listed Market=9");
        EXPECT_EQ(Cell("Security SubType Name"), name) << type << " " << subType;
    }
    EXPECT_EQ(Cell("Security Type Name"), "EQUITY");
    EXPECT_EQ(Cell("Listed Market Name"), "M9");
}

TEST_F(DataLine, ARegionalRowShowsItsQuoteAndTheFundamentalsOfItsSymbol) {
    store.Watch("IBM--X", window.queue);
    store.OnRegional("R,IBM,Y,1,1,09:00:00,2,2,09:00:00,3,3,09:00:00,");
    EXPECT_EQ(Cell("IBM--X", "Bid", 2), "") << "another region";
    window.TakeChanged();
    store.OnRegional("R,IBM,X,10.5,3,09:30:00b,10.6,4,09:30:01,10.55,5,T09:30:02,");
    EXPECT_THAT(window.TakeChanged(), ElementsAre("IBM--X"));
    Update("Bid=99,High=100");
    Fundamental("Exchange=NYSE");
    EXPECT_THAT(window.TakeChanged(), ElementsAre("IBM--X"));

    const std::tuple<const char*, const char*> cells[] = {
        {"Symbol", "IBM--X"},     {"Bid", "10.50"},     {"B Size", "3"},
        {"Bid Time", "09:30:00"}, {"Ask", "10.60"},     {"A Size", "4"},
        {"Ask Time", "09:30:01"}, {"Last", "10.55"},    {"Tick Vol", "5"},
        {"T Time", "09:30:02"},   {"Exchange", "NYSE"}, {"High", ""},
        {"LQT Price", ""},        {"Type", ""}};
    for (const auto& [column, text] : cells) EXPECT_EQ(Cell("IBM--X", column, 2), text) << column;
    const sRegQuoteData& region = *Ibm().FindRegion("IBM--X");
    EXPECT_EQ(region.data.Time(RegionSlot("Bid Time")), (STimeOfDay{9, 30, 0, 'b'}));
    EXPECT_EQ(region.data.Time(RegionSlot("Ask Time")), (STimeOfDay{9, 30, 1, 't'}));
    EXPECT_EQ(CellNumber(region, *FindField("Last")), 10.55);
    store.OnRegional("R,IBM,X,,,,,,,Not Found,,,");
    EXPECT_EQ(Cell("IBM--X", "Symbol", 2), "Not Found");
}
