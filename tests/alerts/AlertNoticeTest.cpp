#include "AlertsFixture.h"

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

TEST_F(AlertNotice, ReadingItKeepsItsTraits) {
    const std::string head = "less than,IBM,1.500000,2.000000,3.000000,4.000000,5.000000,Last,2,1,a.wav,";
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
        const SAlertRecord read = ReadAlertRecord(head + c.tail);
        EXPECT_EQ(read.condition + read.symbol + read.fieldName + read.soundFile, "less thanIBMLasta.wav");
        EXPECT_EQ((std::vector<double>{read.value, read.last, read.bid, read.ask, read.threshold}),
                  (std::vector<double>{1.5, 2, 3, 4, 5}));
        EXPECT_EQ(read.soundType * 10 + read.loopSound, 21);
        EXPECT_EQ(read.index, 0) << c.tail;
        EXPECT_EQ(read.otherThresholds, c.others) << c.tail;
    }
    // A comma in the symbol shifts what follows; a record that was cut is read as far as it goes.
    Add("A,B", "Last", "=", 1);
    alerts.EvaluateFieldAlert("A,B", 0, 1, 2, 3, 4);
    const SAlertRecord shifted = ReadAlertRecord(posted.at(0));
    EXPECT_EQ(shifted.symbol, "A");
    EXPECT_EQ(shifted.last, 1);
    EXPECT_EQ(shifted.fieldName, "1.000000");
    for (size_t size = 0; size < head.size(); ++size)
        EXPECT_EQ(ReadAlertRecord(head.substr(0, size)).threshold, size > 50 ? 5 : 0) << size;
}
