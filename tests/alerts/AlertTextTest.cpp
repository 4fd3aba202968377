#include "AlertsFixture.h"

using namespace vx;
using namespace vx::test;

class AlertText : public AlertsTest {};

TEST_F(AlertText, IsWrittenByteForByte) {
    A_INFO alert = Alert("Last", ">=", 250);
    alert.soundType = 1;
    alerts.Add("MSFT", alert);
    alert = Alert("% Chg", "<", -1.25, true);
    alert.enabled = 0;
    alert.soundType = 2;
    alert.loopSound = 1;
    alert.soundFile = "C:\\x, y.wav";
    alerts.Add("IBM", alert);
    alert = Alert("News", "=", 1);
    alert.condition = 77;
    alerts.Add("IBM", alert);
    alert.fieldId = 1000;
    alerts.Add("abc", alert);
    EXPECT_EQ(alerts.Save(), "IBM:% Chg,<,-1.250000,FALSE,TRUE,2,TRUE,C:\\x, y.wav;"
                             "IBM:News,=,1.000000,TRUE,FALSE,0,FALSE,;"
                             "MSFT:Last,>=,250.000000,TRUE,FALSE,1,FALSE,;"
                             "abc:,=,1.000000,TRUE,FALSE,0,FALSE,;");
}

TEST_F(AlertText, IsReadInAllItsForms) {
    struct SCase {
        const char* text;
        const char* rewritten;
    };
    for (const SCase& c : {
             SCase{"", ""},
             {";;;", ""},
             // What older files leave out.
             {"IBM:Last,>,5", "IBM:Last,>,5.000000,FALSE,TRUE,0,FALSE,;"},
             {"IBM:Last,>,5,TRUE;", "IBM:Last,>,5.000000,TRUE,TRUE,0,FALSE,;"},
             {"IBM:Last,>,5,TRUE,;", "IBM:Last,>,5.000000,TRUE,FALSE,0,FALSE,;"},
             {"IBM:Last,>,5,TRUE,FALSE;", "IBM:Last,>,5.000000,TRUE,FALSE,0,FALSE,;"},
             {"IBM:Last,>,5,TRUE,TRUE,2;", "IBM:Last,>,5.000000,TRUE,TRUE,2,FALSE,;"},
             {"IBM:Last,>,5,TRUE,TRUE,2,TRUE;", "IBM:Last,>,5.000000,TRUE,TRUE,2,TRUE,;"},
             {"IBM:Last;", "IBM:Last,=,0.000000,FALSE,TRUE,0,FALSE,;"},
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
             {"A:Last,=,1e-7,TRUE;", "A:Last,=,0.000000,TRUE,TRUE,0,FALSE,;"},
             // A symbol ends at the first colon, a sound file at the semicolon.
             {"A,B:Last,=,1,TRUE,TRUE,2,FALSE,C:\\a,b:c.wav;", "A,B:Last,=,1.000000,TRUE,TRUE,2,FALSE,C:\\a,b:c.wav;"},
             // Equal ones merge: the first's sound, the last's flag.
             {"A:Last,=,1,TRUE,TRUE,2,TRUE,x;A:Last,=,1.0,FALSE,TRUE,1,FALSE,y;",
              "A:Last,=,1.000000,FALSE,TRUE,2,TRUE,x;"},
         })
        EXPECT_EQ(Reread(c.text), c.rewritten) << c.text;
}

TEST_F(AlertText, WhatCannotBeReadIsLeftOutAndCounted) {
    const SUnreadAlerts unread =
        alerts.Load("A:last,=,1,TRUE;B:Last ,=,1,TRUE;no colon;:Last,=,1,TRUE;C: ,=,1,TRUE;A:ET Change,=,1,TRUE;"
                    "IBM:Last,=,1,TRUE;");
    EXPECT_EQ(unread.count, 6u);
    EXPECT_EQ(unread.first, "A:last,=,1,TRUE");
    EXPECT_EQ(alerts.Symbols(), (std::vector<std::string>{"IBM"}));
    EXPECT_EQ(announced["IBM"], 1);
    EXPECT_EQ(alerts.Load(std::string(1'000'000, 'x')).first.size(), 200u);

    std::string text;
    for (size_t i = 1; i < CAlertsMap::kMostPerSymbol + 5; ++i) text += "IBM:Last,>," + std::to_string(i) + ",TRUE;";
    EXPECT_EQ(alerts.Load(text).count, 5u) << "a symbol holds only so many";
    EXPECT_EQ(alerts.ArmedCount("IBM"), static_cast<int>(CAlertsMap::kMostPerSymbol));
    EXPECT_EQ(alerts.Load("IBM:Last,>,1,FALSE;").count, 0u) << "equal ones still merge";
}

TEST_F(AlertText, WhatItCannotCarryIsKnownBeforehand) {
    const A_INFO good = Alert("Last", ">", 10);
    EXPECT_TRUE(CAlertsMap::CanSave("IBM", good));
    for (const char* symbol : {"", "A:B", "A;B", "A\nB"}) EXPECT_FALSE(CAlertsMap::CanSave(symbol, good)) << symbol;
    A_INFO bad = good;
    bad.soundFile = "a;b.wav";
    EXPECT_FALSE(CAlertsMap::CanSave("IBM", bad));
    bad = good;
    bad.fieldId = -1;
    EXPECT_FALSE(CAlertsMap::CanSave("IBM", bad));
}
