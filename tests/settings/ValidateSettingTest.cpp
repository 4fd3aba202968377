#include "settings/ValidateSetting.h"

#include "settings/ConfigLogger.h"

#include <gmock/gmock.h>

using namespace vx;

namespace {

class CReports final : public CConfigLogger {
public:
    void Report(std::string_view text) override { all.append(text); }
    std::string all;
};

struct SCase {
    int kind;
    std::string_view value;
    std::string_view result;
    std::string_view report;
};

constexpr std::string_view kOlder =
    "Settings: The value \"$\" for \"Some Name\" was stored in an older format and has been updated automatically.";
constexpr std::string_view kNumber =
    "Settings: The value \"$\" for \"Some Name\" is not a valid number and has been reset to the default.";
constexpr std::string_view kBoolean =
    "Settings: The value \"$\" for \"Some Name\" is not valid and has been reset to the default.";
constexpr std::string_view kColor =
    "Settings: The color value \"$\" for \"Some Name\" is not valid and has been reset to the default.";

constexpr SCase kCases[] = {
    // texts: anything
    {0, "anything {} \xFF", "anything {} \xFF", ""},
    {1, "12a", "12a", ""},
    {6, "a;b;", "a;b;", ""},
    // integers
    {2, "0", "0", ""},
    {2, "-12", "-12", ""},
    {2, "0099999999999999999999", "0099999999999999999999", ""},
    {2, "true", "1", kOlder},
    {2, "false", "0", kOlder},
    {2, "-", "dflt", kNumber},
    {2, "--1", "dflt", kNumber},
    {2, "+1", "dflt", kNumber},
    {2, "1.5", "dflt", kNumber},
    {2, " 1", "dflt", kNumber},
    {2, "1 ", "dflt", kNumber},
    {2, "True", "dflt", kNumber},
    {2, "1\xB2", "dflt", kNumber},
    {2, "{0}", "dflt", kNumber},
    // booleans
    {3, "true", "true", ""},
    {3, "false", "false", ""},
    {3, "1", "true", kOlder},
    {3, "0", "false", kOlder},
    {3, "TRUE", "dflt", kBoolean},
    {3, "yes", "dflt", kBoolean},
    {3, "01", "dflt", kBoolean},
    // numbers
    {4, "1e-3", "1e-3", ""},
    {4, " +.5", " +.5", ""},
    {4, "0x1p3", "0x1p3", ""},
    {4, "-inf", "-inf", ""},
    {4, "1e999", "1e999", ""},
    {4, "1,5", "dflt", kNumber},
    {4, "1.5x", "dflt", kNumber},
    {4, "1.5 ", "dflt", kNumber},
    {4, " ", "dflt", kNumber},
    {4, "true", "dflt", kNumber},
    // colours
    {5, "16777215", "16777215", ""},
    {5, "0xFFFFFF", "0xFFFFFF", ""},
    {5, "0Xabcdef", "0Xabcdef", ""},
    {5, "0777", "0777", ""},
    {5, "077777777", "077777777", ""},
    {5, "0", "0", ""},
    {5, " \t+1", " \t+1", ""},
    {5, "-0", "-0", ""},
    {5, "-4294967295", "-4294967295", ""},
    {5, "16777216", "dflt", kColor},
    {5, "0x1000000", "dflt", kColor},
    {5, "0100000000", "dflt", kColor},
    {5, "-1", "dflt", kColor},
    {5, "99999999999999999999", "dflt", kColor},
    {5, "089", "dflt", kColor},
    {5, "0x", "dflt", kColor},
    {5, "0xG", "dflt", kColor},
    {5, "0x-1", "dflt", kColor},
    {5, "+-1", "dflt", kColor},
    {5, "#FF0000", "dflt", kColor},
    {5, "-", "dflt", kColor},
    {5, "1 ", "dflt", kColor},
    // no kind
    {7, "1.5x", "1.5x", ""},
    {1000, "x", "x", ""},
    {-1, "x", "x", ""},
};

} // namespace

TEST(ValidateSetting, AcceptsRepairsAndResetsWithTheirReports) {
    for (const SCase& c : kCases) {
        CReports reports;
        EXPECT_EQ(ValidateSetting("Some Name", c.value, c.kind, "dflt", &reports), c.result)
            << c.kind << " " << c.value;
        std::string expected(c.report);
        if (const size_t at = expected.find('$'); at != std::string::npos) expected.replace(at, 1, c.value);
        EXPECT_EQ(reports.all, expected) << c.kind << " " << c.value;
        EXPECT_EQ(ValidateSetting("Some Name", c.value, c.kind, "dflt", nullptr), c.result) << c.value;
    }
}

TEST(ValidateSetting, NeverTouchesTheEmptyTextAndConfigError) {
    for (int kind = 0; kind <= 7; ++kind) {
        CReports reports;
        EXPECT_EQ(ValidateSetting("n", "", kind, "dflt", &reports), "");
        EXPECT_EQ(ValidateSetting("n", "Config Error", kind, "dflt", &reports), "Config Error");
        EXPECT_EQ(reports.all, "");
    }
}
