#include "AlertsFixture.h"

#include <cmath>
#include <limits>

using namespace vx;
using namespace vx::test;

class AlertNotice : public AlertsTest {};

TEST_F(AlertNotice, TheRecordCarriesTheMomentAndTheOtherThresholds) {
    A_INFO fired = Alert("Last", ">=", 10);
    fired.soundType = 2;
    fired.loopSound = 1;
    fired.soundFile = "C:\\bell.wav";
    Add("IBM", "Last", "<", 9.5);
    Add("IBM", "Bid", ">", 99);
    alerts.Add("IBM", fired);
    Add("IBM", "Last", ">", 10);
    Add("IBM", "Last", ">", -12);
    ASSERT_TRUE(alerts.EvaluateFieldAlert("IBM", 2, 10.25, 10.25, 10.2, 10.3));
    EXPECT_EQ(posted.at(0), "greater than or equal to,IBM,10.250000,10.250000,10.200000,10.300000,10.000000,Last,2,1,"
                            "C:\\bell.wav,2,9.500000--12.000000-,");
}

TEST_F(AlertNotice, NoNumberIsTooLongOrStrangeForIt) {
    constexpr double kHuge = 1e308;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Add("IBM", "Last", ">", -kHuge);
    Add("IBM", "Last", "<", nan);
    ASSERT_TRUE(alerts.EvaluateFieldAlert("IBM", 0, kHuge, nan, std::numeric_limits<double>::infinity(), -0.0));
    const SAlertNotice notice = ReadAlertNotice(posted.at(0));
    EXPECT_EQ(notice.value, kHuge);
    EXPECT_TRUE(std::isnan(notice.last));
    EXPECT_EQ(notice.bid, std::numeric_limits<double>::infinity());
    EXPECT_EQ(notice.threshold, -kHuge);
    EXPECT_EQ(notice.otherThresholds, (std::vector<std::string>{"nan"}));
    EXPECT_GT(posted[0].size(), 600u);
}

TEST_F(AlertNotice, ReadingItKeepsItsTraits) {
    const std::string head = "less than,IBM,1.500000,2.000000,3.000000,4.000000,5.000000,Last,2,1,a.wav,";
    const SAlertNotice notice = ReadAlertNotice(head + "7,9.000000-8.500000-,");
    EXPECT_EQ(notice.condition, "less than");
    EXPECT_EQ(notice.symbol, "IBM");
    EXPECT_EQ(notice.value, 1.5);
    EXPECT_EQ(notice.last, 2);
    EXPECT_EQ(notice.bid, 3);
    EXPECT_EQ(notice.ask, 4);
    EXPECT_EQ(notice.threshold, 5);
    EXPECT_EQ(notice.fieldName, "Last");
    EXPECT_EQ(notice.soundType, 2);
    EXPECT_EQ(notice.loopSound, 1);
    EXPECT_EQ(notice.soundFile, "a.wav");
    EXPECT_FALSE(notice.isNews);

    struct SCase {
        const char* tail;
        std::vector<std::string> others;
    };
    for (const SCase& c : {SCase{"7,9.000000-8.500000-,", {"9.000000", "8.500000"}}, // Index 7 is read as 0.
                           {"0,,", {}},
                           {"0,-9.000000-,", {"9.000000"}}, // The hyphens part, a sign is one of them.
                           {"0,1--2---,", {"1", "2"}},
                           {"12,9.000000-,", {}}, // Right only while the index has one digit.
                           {"", {}}}) {
        const SAlertNotice read = ReadAlertNotice(head + c.tail);
        EXPECT_EQ(read.index, 0) << c.tail;
        EXPECT_EQ(read.otherThresholds, c.others) << c.tail;
    }
}

TEST_F(AlertNotice, ACommaInASymbolShiftsTheFieldsAndACutRecordReadsEmpty) {
    Add("A,B", "Last", "=", 1);
    alerts.EvaluateFieldAlert("A,B", 0, 1, 2, 3, 4);
    const SAlertNotice shifted = ReadAlertNotice(posted.at(0));
    EXPECT_EQ(shifted.symbol, "A");
    EXPECT_EQ(shifted.value, 0);
    EXPECT_EQ(shifted.last, 1);
    EXPECT_EQ(shifted.fieldName, "1.000000");

    const std::string whole = "less than,IBM,1,2,3,4,5,Last,2,1,a.wav,0,9-,";
    for (size_t size = 0; size < whole.size(); ++size) {
        const SAlertNotice cut = ReadAlertNotice(whole.substr(0, size));
        EXPECT_EQ(cut.otherThresholds.size(), size > 41 ? 1u : 0u) << size;
    }
    EXPECT_EQ(ReadAlertNotice("less than,IBM").value, 0);
}
