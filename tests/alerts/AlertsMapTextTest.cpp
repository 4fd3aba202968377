// SPDX-License-Identifier: MIT
#include "AlertsFixture.h"

using namespace vx;
using namespace vx::test;

using CAlertsMapTextTest = CAlertsFixture;
using SAlertNoticeTest = CAlertsFixture;

TEST_F(CAlertsMapTextTest, IsReadInAllItsForms) {
    for (const auto& [text, rewritten] : {
             // What older files leave out.
             std::pair{"IBM:Last,>,5", "IBM:Last,>,5.000000,FALSE,TRUE,0,FALSE,;"},
             {"IBM:Last,>,5,TRUE;", "IBM:Last,>,5.000000,TRUE,TRUE,0,FALSE,;"},
             {"IBM:Last,>,5,TRUE,;", "IBM:Last,>,5.000000,TRUE,FALSE,0,FALSE,;"},
             {"IBM:Last,>,5,TRUE,TRUE,2;", "IBM:Last,>,5.000000,TRUE,TRUE,2,FALSE,;"},
             // Conditions in words and in short; anything else is "equal to".
             {"A:Last,greater than,1,TRUE;B:Last,greater than or equal to,1,TRUE;C:Last,less than,1,TRUE;"
              "D:Last,less than or equal to,1,TRUE;E:Last,equal to,1,TRUE;F:Last,about,1,TRUE;G:Last,,1,TRUE",
              "A:Last,>,1.000000,TRUE,TRUE,0,FALSE,;B:Last,>=,1.000000,TRUE,TRUE,0,FALSE,;"
              "C:Last,<,1.000000,TRUE,TRUE,0,FALSE,;D:Last,<=,1.000000,TRUE,TRUE,0,FALSE,;"
              "E:Last,=,1.000000,TRUE,TRUE,0,FALSE,;F:Last,=,1.000000,TRUE,TRUE,0,FALSE,;"
              "G:Last,=,1.000000,TRUE,TRUE,0,FALSE,;"},
             // Both news columns are the news field.
             {"A:News,=,1,TRUE;B:Latest Headline,=,1,TRUE;",
              "A:News,=,1.000000,TRUE,TRUE,0,FALSE,;B:News,=,1.000000,TRUE,TRUE,0,FALSE,;"},
             // Only "TRUE" is true; numbers that cannot be read are 0.
             {"A:Last,=,x,true,True,x,1,f;", "A:Last,=,0.000000,FALSE,FALSE,0,FALSE,f;"},
             {"A:Last,=, 1e2z,TRUE,TRUE,-3q,TRUE,;", "A:Last,=,100.000000,TRUE,TRUE,-3,TRUE,;"},
             // A symbol ends at the first colon, a sound file at the semicolon.
             {"A,B:Last,=,1,TRUE,TRUE,2,FALSE,C:\\a,b:c.wav;", "A,B:Last,=,1.000000,TRUE,TRUE,2,FALSE,C:\\a,b:c.wav;"},
             // Equal ones merge: the first's sound, the last's flag.
             {"A:Last,=,1,TRUE,TRUE,2,TRUE,x;A:Last,=,1.0,FALSE,TRUE,1,FALSE,y;",
              "A:Last,=,1.000000,FALSE,TRUE,2,TRUE,x;"},
         }) {
        alerts.Clear(EAlertMap::Live);
        alerts.Load(text);
        EXPECT_EQ(alerts.Save(), rewritten) << text;
    }
}

TEST_F(CAlertsMapTextTest, WhatCannotBeReadIsLeftOutAndCounted) {
    const SUnreadAlerts unread =
        alerts.Load("A:last,=,1,TRUE;B:Last ,=,1,TRUE;no colon;:Last,=,1,TRUE;C: ,=,1,TRUE;A:ET Change,=,1,TRUE;"
                    "IBM:Last,=,1,TRUE;");
    EXPECT_EQ(unread.count, 6u);
    EXPECT_EQ(unread.first, "A:last,=,1,TRUE");
    EXPECT_EQ(announced["IBM"], 1);
    std::string text;
    for (size_t i = 1; i < CAlertsMap::kMostPerSymbol + 5; ++i) text += "IBM:Last,>," + std::to_string(i) + ",TRUE;";
    EXPECT_EQ(alerts.Load(text).count, 5u) << "a symbol holds only so many";
    EXPECT_EQ(alerts.Load("IBM:Last,>,1,FALSE;").count, 0u) << "equal ones still merge";
}

TEST_F(CAlertsMapTextTest, WhatItCannotCarryIsKnownBeforehand) {
    const A_INFO good = Alert("Last", ">", 10);
    const auto isCarried = [](std::string_view symbol, const A_INFO& alert) {
        CAlertsMap map;
        map.Add(symbol, alert);
        std::string text;
        return map.Save(text);
    };
    EXPECT_TRUE(isCarried("IBM", good));
    for (const char* symbol : {"A:B", "A;B", "A\nB"}) EXPECT_FALSE(isCarried(symbol, good)) << symbol;
    for (const A_INFO& bad :
         {A_INFO{1, 0, 0, 10, good.fieldId, 1, 2, "a;b.wav"}, A_INFO{1, 0, 0, 10, -1, 1, 0, {}},
          A_INFO{1, 0, 0, 0.1 + 0.2, good.fieldId, 1, 0, {}}, A_INFO{1, 0, 0, 10, good.fieldId, 9, 0, {}}})
        EXPECT_FALSE(isCarried("IBM", bad));
}

TEST_F(SAlertNoticeTest, TheRecordCarriesTheMomentAndTheOtherThresholds) {
    Add("IBM", "Last", "<", 9.5);
    Add("IBM", "Bid", ">", 99);
    alerts.Add("IBM", {1, 0, 1, 10, AlertFieldId("Last").value(), 2, 2, "C:\\bell.wav"});
    Add("IBM", "Last", ">", 10);
    Add("IBM", "Last", ">", -12);
    ASSERT_TRUE(alerts.EvaluateFieldAlert("IBM", 2, 10.25, 10.25, 10.2, 10.3));
    EXPECT_EQ(posted.at(0), "greater than or equal to,IBM,10.250000,10.250000,10.200000,10.300000,10.000000,Last,2,1,"
                            "C:\\bell.wav,2,9.500000--12.000000-,");
}

TEST_F(SAlertNoticeTest, ReadingItKeepsItsTraits) {
    const std::string head = "less than,IBM,1.500000,2.000000,3.000000,4.000000,5.000000,Last,2,1,a.wav,";
    using Texts = std::vector<std::string>;
    for (const auto& [tail, others] :
         {std::pair{"7,9.000000-8.500000-,", Texts{"9.000000", "8.500000"}}, // Index 7 is read as 0.
          std::pair{"0,1--2---,", Texts{"1", "2"}},                          // Hyphens part, a sign is one.
          std::pair{"12,9.000000-,", Texts{}}}) { // Right only while the index has one digit.
        const SAlertRecord read = ReadAlertRecord(head + tail);
        EXPECT_EQ(read.condition + read.symbol + read.fieldName + read.soundFile, "less thanIBMLasta.wav");
        EXPECT_EQ((std::vector<double>{read.value, read.last, read.bid, read.ask, read.threshold}),
                  (std::vector<double>{1.5, 2, 3, 4, 5}));
        EXPECT_EQ(read.soundType * 10 + read.loopSound, 21);
        EXPECT_EQ(read.otherThresholds, others) << tail;
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
