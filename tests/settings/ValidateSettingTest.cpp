// SPDX-License-Identifier: MIT
#include "settings/ValidateSetting.h"

#include <gtest/gtest.h>

#include <vector>

using namespace vx;

namespace {

struct SReports final : CConfigLogger {
    void Report(std::string_view text) override { all.append(text); }
    std::string all;
};

struct SCase {
    int kind;
    std::vector<std::string_view> values;
    std::string_view result; ///< "=": the value itself.
    std::string_view report; ///< "$" stands for the value; empty: none.
};

constexpr std::string_view kOlder =
    "Settings: The value \"$\" for \"Some Name\" was stored in an older format and has been updated automatically.";
constexpr std::string_view kNumber = "Settings: The value \"$\" for \"Some Name\" is not a valid number and has";
constexpr std::string_view kBoolean = "Settings: The value \"$\" for \"Some Name\" is not valid and has";
constexpr std::string_view kColor = "Settings: The color value \"$\" for \"Some Name\" is not valid and has";
constexpr std::string_view kReset = " been reset to the default.";

const SCase kCases[] = {
    {0, {"anything {} \xFF"}, "=", ""},
    {1, {"12a"}, "=", ""},
    {2, {"0", "-12", "0099999999999999999999"}, "=", ""},
    {2, {"true"}, "1", kOlder},
    {2, {"false"}, "0", kOlder},
    {2, {"-", "--1", "+1", "1.5", " 1", "1 ", "True", "1\xB2", "{0}"}, "dflt", kNumber},
    {3, {"true", "false"}, "=", ""},
    {3, {"1"}, "true", kOlder},
    {3, {"0"}, "false", kOlder},
    {3, {"TRUE", "yes", "01"}, "dflt", kBoolean},
    {4, {"1e-3", " +.5", "0x1p3", "-inf", "1e999"}, "=", ""},
    {4, {"1,5", "1.5x", "1.5 ", " ", "true"}, "dflt", kNumber},
    {5, {"16777215", "0xFFFFFF", "0Xabcdef", "0777", "077777777", "0", " \t+1", "-0", "-4294967295"}, "=", ""},
    {5, {"16777216", "0x1000000", "0100000000", "-1", "99999999999999999999", "089"}, "dflt", kColor},
    {5, {"0x", "0xG", "0x-1", "+-1", "#FF0000", "-", "1 "}, "dflt", kColor},
    {7, {"1.5x"}, "=", ""},
    {-1, {"x"}, "=", ""},
};

} // namespace

TEST(ValidateSetting, AcceptsRepairsAndResetsWithTheirReports) {
    for (const SCase& c : kCases)
        for (const std::string_view value : c.values) {
            SReports reports;
            const std::string_view result = c.result == "=" ? value : c.result;
            EXPECT_EQ(ValidateSetting("Some Name", value, c.kind, "dflt", &reports), result) << c.kind << " " << value;
            EXPECT_EQ(ValidateSetting("Some Name", value, c.kind, "dflt", nullptr), result) << c.kind << " " << value;
            std::string expected(c.report);
            if (const size_t at = expected.find('$'); at != std::string::npos) expected.replace(at, 1, value);
            if (c.result == "dflt") expected += kReset;
            EXPECT_EQ(reports.all, expected) << c.kind << " " << value;
        }
}
