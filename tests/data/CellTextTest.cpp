// SPDX-License-Identifier: MIT
#include "support/FakeFeed.h"

#include "data/record/NumberText.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <sstream>

using namespace vx;
using namespace vx::test;

namespace {

using enum EDirection;

struct CellTextTest : testing::Test, CFakeFeed {
    double Number(std::string_view column) const { return CellNumber(Ibm(), *FindField(column)); }
};

std::string Fixed(double value, int places, bool plus) {
    std::array<char, 512> out;
    return {out.data(), WriteFixed(value, places, plus, out)};
}

std::string Printed(double value, int places, bool plus) {
    char text[512];
    std::snprintf(text, sizeof(text), plus ? "%+.*f" : "%.*f", places, value);
    return text;
}

} // namespace

TEST(NumberText, FixedNumbersAreThoseOfPrintf) {
    std::vector<double> values{std::numeric_limits<double>::infinity(), std::nan("")};
    std::istringstream numbers(
        "0 0.5 1.5 2.5 0.125 0.375 1.005 2.675 1e-7 0.05 0.049999999999999996 9.995 99.99999 999999999.5 "
        "123456789.987654321 1e15 4503599627370495.5 1e16 1e17 1.8446744073709552e19 1e22 1e100 1e-300 "
        "1.7976931348623157e308 2.2250738585072014e-308");
    for (double value; numbers >> value;) values.push_back(value);
    values.push_back(5e-324); // Not all stream libraries read it.
    for (size_t i = values.size(); i-- > 0;) values.push_back(-values[i]);
    for (const double value : values)
        for (int places = 0; places <= 15; ++places)
            for (const bool plus : {false, true})
                EXPECT_EQ(Fixed(value, places, plus), Printed(value, places, plus)) << value << " " << places;
    CRandom random(3);
    for (int i = 0; i < 100000; ++i) {
        double value;
        const uint64_t bits = random.Next();
        std::memcpy(&value, &bits, sizeof(value));
        if (i % 2 == 0) value = static_cast<double>(static_cast<int64_t>(bits >> 30)) / 1000; // Near ties.
        const int places = static_cast<int>(random.Below(8));
        ASSERT_EQ(Fixed(value, places, i % 3 == 0), Printed(value, places, i % 3 == 0)) << value << " " << places;
    }
}

TEST(NumberText, PlacesAreBroughtInsideAndTheBufferIsNeverLeft) {
    EXPECT_EQ(Fixed(1.5, -3, false), "2");
    EXPECT_EQ(Fixed(1, 99, false), "1." + std::string(15, '0'));
    std::array<char, 4> small{};
    EXPECT_EQ(WriteFixed(-123.456, 2, false, std::span(small).first(3)), 3u);
    EXPECT_EQ(std::string_view(small.data(), 4), std::string_view("-12\0", 4));
    EXPECT_EQ(WriteInteger(INT32_MIN, small), 4u);
    EXPECT_EQ(WriteUnsigned(99, std::span(small).first(0)), 0u);
}

TEST_F(CellTextTest, NumbersOfEveryClassAreCutAndKeepTheirSigns) {
    Update("Change=0.1,Bid Size=-5,Delay=20,Total Volume=4000000000,7 Day Yield=-1.5,Volatility=nan,Bid=inf");
    ExpectCells("Change=+0.10,B Size=-5,Delay=20 min,Volume=4000000000,7day Yield=-1.50,Volatility=nan%,Bid=inf,", 2);
    Update("Most Recent Trade Aggressor=2");
    EXPECT_EQ(Cell("Trade Aggressor"), "SELL");
    Update("Percent Change=1e305,Last=-1e308,Available Regions=" + std::string(300, 'N'));
    for (const auto& [column, ends] : {std::pair{"% Chg", "+%"}, {"Last", "-0"}, {"Available Regions", "NN"}}) {
        const std::string text = Cell(column, 6);
        EXPECT_EQ(text.size(), 255u) << column;
        EXPECT_TRUE(text.front() == ends[0] && (text.back() == ends[1] || ends[1] == '0')) << column;
    }
}

TEST_F(CellTextTest, MessageContentsAreWordsFromTheLastLetterToTheFirst) {
    ForEach("Cba=ASK/BID/TRADE,v=VOLUME,EO=OTHER TRADE/EXTENDED TRADE,ohlcs=SETTLEMENT/CLOSE/LOW/HIGH/OPEN,xC=TRADE/x,"
            "SUMMARY=SUMMARY,",
            [&](auto contents, auto text) {
                Update(std::string("Message Contents=").append(contents));
                EXPECT_EQ(Cell("Type"), text) << contents;
            });
    Update("Message Contents=" + std::string(300, 'E') + "b");
    EXPECT_EQ(Cell("Type").size(), 255u);
    EXPECT_EQ(Cell("Type").substr(0, 8), "BID/EXTE");
}

TEST_F(CellTextTest, OnlyNumericClassesHaveANumber) {
    store.Watch("IBM", window.queue);
    EXPECT_EQ(Number("Last"), 0);
    Update("Last=1.25,Bid Size=-7,Total Volume=4000000000,Percent Change=0.5,Last Time=09:30,Most Recent Trade "
           "Aggressor=1,"
           "Last Date=1/2/2024");
    Fundamental("Strike Price=12.5,Div Amt=3,Split1 Ratio=0.5 1/2/2024");
    ForEach(
        "Last=1.25,B Size=-7,Volume=4000000000,% Chg=50,Strike Price=12.5,Split1 Ratio=0.5,T Time=0,Trade Aggressor=0,"
        "Trade Date=0,Div Amt=0,Split1 Date=0,News=0, =0,",
        [&](auto column, auto number) { EXPECT_EQ(Number(column), std::stod(std::string(number))) << column; });
}

TEST_F(CellTextTest, PricesHaveThePlacesOfTheirSymbolOrFewerWhereSomebodyChoseThem) {
    Update("Last=1.23456,Spread=0.00012,Percent Off Average Volume=0.5");
    EXPECT_EQ(DecimalsToShow(Ibm(), *FindField("Last"), 4), 4) << "it has no precision yet";
    // Precision of the symbol, column, chosen places; nobody chose 4, nor the 2 of the spread.
    ForEach("2 4 Last=2,2 1 Last=1,2 4 % Chg=4,2 6 Last=2,5 4 Last=5,5 3 Last=3,5 2 Spread=5,5 3 Spread=3,"
            "5 2 % OffAvgVol=2,9 4 Last=6,- 4 Last=4,",
            [&](auto what, auto places) {
                Update(std::string("Decimal Precision=").append(what[0] == '-' ? "-5" : what.substr(0, 1)));
                EXPECT_EQ(std::to_string(DecimalsToShow(Ibm(), *FindField(what.substr(4)), what[2] - '0')), places)
                    << what;
            });
    Update("Decimal Precision=5");
    EXPECT_EQ(DecimalsToShow(Ibm(), *FindField("Last"), 4, true), 4);
    EXPECT_EQ(Cell("Last", 5), "1.23456");
}

TEST_F(CellTextTest, DifferencesHaveTheColourOfTheirSign) {
    const auto colour = [&](std::string_view column, EColourRule rule = EColourRule::OfField) {
        return ColourDirection(Ibm(), *FindField(column), rule);
    };
    Update("Last=5,Open Interest=-3,Tick=173");
    ForEach("Change=Change,% Chg=Percent Change,ET Chg=Extended Trading Change,ET Diff=Extended Trading Difference,"
            "ChgFrmOpn=Change From Open,Bid Chg=Bid Change,Ask Chg=Ask Change,",
            [&](auto column, auto field) {
                EXPECT_EQ(colour(column), NeverSet) << column;
                for (const auto& [value, expected] :
                     {std::pair{"=-2", Down}, {"=-1", Down}, {"=0", Unchanged}, {"=2", Up}, {"=1", Up}}) {
                    Update(std::string(field) + value);
                    EXPECT_EQ(colour(column), expected) << column << value;
                }
            });
    EXPECT_EQ(colour("% Chg", EColourRule::Direction), Down) << "the stored direction is another thing";
    EXPECT_EQ(colour("Last"), Unchanged);
    EXPECT_EQ(colour("Last", EColourRule::Sign), Up);
    EXPECT_EQ(colour("Open Int", EColourRule::Sign), Down);
    EXPECT_EQ(colour("Tick Trend"), Up);
}
