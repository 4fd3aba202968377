// SPDX-License-Identifier: MIT
#include "data/text/DrawnNumber.h"

#include "support/FakeFeed.h"

#include "base/Text.h"
#include "data/text/ColumnScale.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <string>
#include <utility>

using namespace vx;
using namespace vx::test;

TEST(CColumnScale, MeasuresByRoundNumbersThatWidenAtOnceAndNarrowWithAPass) {
    CColumnScale scale;
    const auto pass = [&](std::initializer_list<double> numbers) {
        for (const double number : numbers) scale.Take(number);
        return scale.EndPass();
    };
    EXPECT_FALSE(scale.Share(1)) << "nothing is known";
    for (const double number : {3.0, -4.0}) EXPECT_TRUE(scale.Take(number));
    EXPECT_EQ(scale.Share(4), 0.8);
    EXPECT_EQ(scale.Share(-4), -0.8);
    EXPECT_TRUE(scale.Take(1e12));
    EXPECT_EQ(scale.Share(-4), -4e-12);
    EXPECT_FALSE(pass({3, -4, 1})) << "it is among them";
    EXPECT_TRUE(pass({3, -4, 1}));
    EXPECT_EQ(scale.Share(4), 0.8);
    EXPECT_FALSE(pass({2.5, -3.5, 2}) || pass({-4, 3})) << "bars do not jump to and fro";
    EXPECT_EQ(scale.Level(-4), 0);
    EXPECT_GT(*scale.Level(2), *scale.Level(1));
    EXPECT_LE(*scale.Level(3), 1);
}

TEST(CColumnScale, NumbersThatCannotBeDrawnAreNot) {
    CColumnScale scale;
    for (const double number : {std::nan(""), HUGE_VAL, -HUGE_VAL, std::numeric_limits<double>::max()}) {
        EXPECT_FALSE(scale.Take(number));
        EXPECT_FALSE(scale.Share(number) || scale.Level(number));
    }
    for (const double number : {0.0, 5e-324, 123.456, 123.456000001, -1e300, 1e300}) {
        scale.Take(number);
        const std::optional<double> share = scale.Share(number), level = scale.Level(number);
        EXPECT_TRUE(number == 0 || (share && std::abs(*share) <= 1 && std::abs(*share) >= 0.1)) << number;
        EXPECT_TRUE(!level || (*level >= 0 && *level <= 1)) << number;
    }
}

namespace {

struct DayRangeTest : testing::Test, CFakeFeed {
    /// "0.25 0.75": where Open and Last are; "-" for one that is not shown, empty for no range.
    std::string Shown(std::string_view fields) {
        Update(fields);
        const std::optional<SDayRange> range = DayRange(Ibm());
        if (!range) return {};
        const auto text = [](const std::optional<double>& part) { return part ? fmt::format("{}", *part) : "-"; };
        return text(range->open) + " " + text(range->last);
    }
};

} // namespace

TEST_F(DayRangeTest, ShowsOnlyWhatIsKnownAndInside) {
    EXPECT_EQ(Shown("Last=12"), "");
    EXPECT_EQ(Shown("High=14"), "");
    EXPECT_EQ(Shown("Low=0"), "") << "not known";
    EXPECT_EQ(Shown("Low=10"), "- 0.5");
    EXPECT_EQ(Shown("Open=13,Last=15"), "0.75 -") << "traded outside, or the high is yet to come";
    EXPECT_EQ(Shown("Low=14"), "") << "no range to be in";
    EXPECT_EQ(Shown("Low=1e300"), "");
    EXPECT_EQ(Shown("Low=-1.7e308,High=1.7e308,Open=0,Last=-1.7e308"), "- 0");
}

TEST(DrawnNumber, ColumnsShowWhatTheirFieldsMean) {
    using enum ECellKind;
    const auto kinds = [](std::string_view column) {
        std::string out;
        for (const ECellKind kind : {Bar, Range, Heat}) out += CanShow(*FindField(column), kind) ? 'y' : 'n';
        return out + (HasTwoSides(*FindField(column)) ? "+" : "");
    };
    for (const auto& [columns, shown] : {std::pair{"Last,Bid,High,Close,VWAP,", "yyy"},
                                         {"Volume,Spread,Range,P/E,", "yny"},
                                         {"Change,% Chg,ET Diff,7day Yield,", "yny+"},
                                         {"Symbol,Notes,T Time,Type,Trade Date,Tick Trend,", "nnn"}})
        for (const std::string_view column : SplitTerminated(columns, ',')) EXPECT_EQ(kinds(column), shown) << column;
}
