#include "support/FakeFeed.h"

#include "data/record/NumberText.h"
#include "support/Random.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <limits>

using namespace vx;
using namespace vx::test;

namespace {

struct CellTexts : testing::Test, CFakeFeed {
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
    const double values[] = {0,
                             -0.0,
                             0.5,
                             1.5,
                             2.5,
                             0.125,
                             0.375,
                             1.005,
                             2.675,
                             1e-7,
                             -1e-7,
                             0.05,
                             0.049999999999999996,
                             9.995,
                             99.99999,
                             999999999.5,
                             123456789.987654321,
                             1e15,
                             4503599627370495.5,
                             1e16,
                             1e17,
                             1.8446744073709552e19,
                             1e22,
                             1e100,
                             DBL_MAX,
                             -DBL_MAX,
                             DBL_MIN,
                             5e-324,
                             1e-300,
                             std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity(),
                             std::nan(""),
                             -std::nan("")};
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

TEST_F(CellTexts, NumbersOfEveryClass) {
    Update("Change=0.1,Bid Size=-5,Delay=20,Total Volume=4000000000,Most Recent Trade Aggressor=1,7 Day Yield=-1.5");
    EXPECT_EQ(Cell("Change", 2), "+0.10");
    EXPECT_EQ(Cell("B Size"), "-5");
    EXPECT_EQ(Cell("Delay"), "20 min");
    EXPECT_EQ(Cell("Volume"), "4000000000");
    EXPECT_EQ(Cell("7day Yield", 1), "-1.5");
    EXPECT_EQ(Cell("Trade Aggressor"), "BUY");
    Update("Most Recent Trade Aggressor=2");
    EXPECT_EQ(Cell("Trade Aggressor"), "SELL");
    Update("Most Recent Trade Aggressor=0");
    EXPECT_EQ(Cell("Trade Aggressor"), "");
}

TEST_F(CellTexts, HugeNumbersAreCutAndKeepTheirSigns) {
    Update("Percent Change=1e305,Last=-1e308,Volatility=nan,Bid=inf");
    EXPECT_EQ(Cell("% Chg", 6).size(), 255u);
    EXPECT_EQ(Cell("% Chg", 6).front(), '+');
    EXPECT_EQ(Cell("% Chg", 6).back(), '%');
    EXPECT_EQ(Cell("Last", 6).size(), 255u);
    EXPECT_EQ(Cell("Last", 6).front(), '-');
    EXPECT_EQ(Cell("Volatility", 2), "nan%");
    EXPECT_EQ(Cell("Bid", 2), "inf");
}

TEST_F(CellTexts, MessageContentsAreWordsFromTheLastLetterToTheFirst) {
    const std::pair<const char*, const char*> cases[] = {{"Cba", "ASK/BID/TRADE"},
                                                         {"v", "VOLUME"},
                                                         {"EO", "OTHER TRADE/EXTENDED TRADE"},
                                                         {"ohlcs", "SETTLEMENT/CLOSE/LOW/HIGH/OPEN"},
                                                         {"xC", "TRADE/x"},
                                                         {"SUMMARY", "SUMMARY"}};
    for (const auto& [contents, text] : cases) {
        Update(std::string("Message Contents=") + contents);
        EXPECT_EQ(Cell("Type"), text) << contents;
    }
    Update("Message Contents=" + std::string(300, 'E') + "b");
    EXPECT_EQ(Cell("Type").size(), 255u);
    EXPECT_EQ(Cell("Type").substr(0, 8), "BID/EXTE");
}

TEST_F(CellTexts, LongTextsAreCutAt255Bytes) {
    Update("Available Regions=" + std::string(300, 'N'));
    EXPECT_EQ(Cell("Available Regions"), std::string(255, 'N'));
    Update("Available Regions=N;P");
    EXPECT_EQ(Cell("Available Regions"), "N;P");
}

TEST_F(CellTexts, OnlyNumericClassesHaveANumber) {
    store.Watch("IBM", window.queue);
    EXPECT_EQ(Number("Last"), 0);
    Update("Last=1.25,Bid Size=-7,Total Volume=4000000000,Percent Change=0.5,Last Time=09:30,Most Recent Trade "
           "Aggressor=1,"
           "Last Date=1/2/2024");
    Fundamental("Strike Price=12.5,Div Amt=3,Split1 Ratio=0.5 1/2/2024");
    EXPECT_EQ(Number("Last"), 1.25);
    EXPECT_EQ(Number("B Size"), -7);
    EXPECT_EQ(Number("Volume"), 4000000000.0);
    EXPECT_EQ(Number("% Chg"), 50);
    EXPECT_EQ(Number("Strike Price"), 12.5);
    EXPECT_EQ(Number("Split1 Ratio"), 0.5);
    for (const char* column : {"T Time", "Trade Aggressor", "Trade Date", "Div Amt", "Split1 Date", "News", " "})
        EXPECT_EQ(Number(column), 0) << column;
}

TEST_F(CellTexts, PricesHaveThePlacesOfTheirSymbolOrFewerWhereSomebodyChoseThem) {
    Update("Last=1.23456,Spread=0.00012,Percent Off Average Volume=0.5");
    const SFieldEntry& last = *FindField("Last");
    const SFieldEntry& spread = *FindField("Spread");
    EXPECT_EQ(DecimalsToShow(Ibm(), last, 4), 4);
    Update("Decimal Precision=2");
    EXPECT_EQ(DecimalsToShow(Ibm(), last, 4), 2);
    EXPECT_EQ(DecimalsToShow(Ibm(), last, 1), 1);
    EXPECT_EQ(DecimalsToShow(Ibm(), *FindField("% Chg"), 4), 4);
    EXPECT_EQ(DecimalsToShow(Ibm(), last, 6), 2);
    Update("Decimal Precision=5");
    EXPECT_EQ(DecimalsToShow(Ibm(), last, 4), 5) << "nobody chose 4";
    EXPECT_EQ(DecimalsToShow(Ibm(), last, 4, true), 4);
    EXPECT_EQ(DecimalsToShow(Ibm(), last, 3), 3);
    EXPECT_EQ(DecimalsToShow(Ibm(), spread, 2), 5) << "nor the 2 of this column";
    EXPECT_EQ(DecimalsToShow(Ibm(), spread, 3), 3);
    EXPECT_EQ(DecimalsToShow(Ibm(), *FindField("% OffAvgVol"), 2), 2) << "a percentage is no price";
    EXPECT_EQ(DecimalsToShow(Ibm(), *FindField("% Chg"), 4), 4);
    EXPECT_EQ(Cell("Last", DecimalsToShow(Ibm(), last, 4)), "1.23456");
    Update("Decimal Precision=9");
    EXPECT_EQ(DecimalsToShow(Ibm(), last, 4), 6);
    Update("Decimal Precision=-5");
    EXPECT_EQ(DecimalsToShow(Ibm(), last, 4), 4);
}

TEST_F(CellTexts, DifferencesHaveTheColourOfTheirSign) {
    const auto colour = [&](const char* column, EColourRule rule = EColourRule::OfField) {
        return ColourDirection(Ibm(), *FindField(column), rule);
    };
    Update("Last=5,Open Interest=-3,Tick=173");
    const std::pair<const char*, const char*> differences[] = {{"Change", "Change"},
                                                               {"% Chg", "Percent Change"},
                                                               {"ET Chg", "Extended Trading Change"},
                                                               {"ET Diff", "Extended Trading Difference"},
                                                               {"ChgFrmOpn", "Change From Open"},
                                                               {"Bid Chg", "Bid Change"},
                                                               {"Ask Chg", "Ask Change"}};
    for (const auto& [column, field] : differences) {
        EXPECT_EQ(colour(column), EDirection::NeverSet) << column;
        for (const auto& [value, expected] : {std::pair{"-2", EDirection::Down},
                                              {"-1", EDirection::Down},
                                              {"0", EDirection::Unchanged},
                                              {"2", EDirection::Up},
                                              {"1", EDirection::Up}}) {
            Update(std::string(field) + "=" + value);
            EXPECT_EQ(colour(column), expected) << column << " " << value;
        }
    }
    EXPECT_EQ(colour("% Chg", EColourRule::Direction), EDirection::Down) << "the stored direction is another thing";
    EXPECT_EQ(colour("Last"), EDirection::Unchanged);
    EXPECT_EQ(colour("Last", EColourRule::Sign), EDirection::Up);
    EXPECT_EQ(colour("Open Int", EColourRule::Sign), EDirection::Down);
    EXPECT_EQ(colour("Tick Trend"), EDirection::Up);
}

TEST_F(CellTexts, TheProgramsOwnColumnsReadNothingOfTheRecord) {
    Update("Last=1");
    for (const char* column : {" ", "Alerts", "Notes", "News", "Latest Headline"}) {
        EXPECT_EQ(Cell(column), "") << column;
        EXPECT_EQ(Direction(column), EDirection::NeverSet) << column;
    }
}
