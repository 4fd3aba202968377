#include "base/Text.h"
#include "base/DateTime.h"
#include "base/Windows1252.h"

#include <gmock/gmock.h>

using namespace vx;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Split, TheTwoWaysDifferInTheTextAfterTheLastSeparator) {
    EXPECT_THAT(SplitCountingTail("S,STATS,,x", ','), ElementsAre("S", "STATS", "", "x"));
    EXPECT_THAT(SplitCountingTail("a,b,", ','), ElementsAre("a", "b"));
    EXPECT_THAT(SplitCountingTail(",", ','), ElementsAre(""));
    EXPECT_THAT(SplitCountingTail("", ','), IsEmpty());
    EXPECT_THAT(SplitTerminated("a,b,", ','), ElementsAre("a", "b"));
    EXPECT_THAT(SplitTerminated("a,b", ','), ElementsAre("a"));
    EXPECT_THAT(SplitTerminated("a", ','), IsEmpty());
}

TEST(Text, CaseFoldingTouchesOnlyAsciiLetters) {
    EXPECT_EQ(UpperAscii("ms\xE4 z@`{"), "MS\xE4 Z@`{");
    EXPECT_EQ(LowerAscii("MSFT\xC4"), "msft\xC4");
    EXPECT_EQ(CompareNoCase("ibm", "IBM"), 0);
    EXPECT_LT(CompareNoCase("ib", "IBM"), 0);
    EXPECT_GT(CompareNoCase("\xE4", "z"), 0);
    EXPECT_EQ(TrimBlanks("  a b "), "a b");
    EXPECT_EQ(TrimBlanks("   "), "");
}

TEST(Windows1252, EveryByteSurvivesTheRoundTrip) {
    std::string all;
    for (int i = 0; i < 256; ++i) all.push_back(static_cast<char>(i));
    EXPECT_EQ(Windows1252FromUtf16(Utf16FromWindows1252(all)), all);
    EXPECT_EQ(CharFromWindows1252(0x92), u'\u2019');
    EXPECT_EQ(Windows1252FromUtf16(u"\u4e2d\U0001F600."), "??.");
    EXPECT_EQ(Utf8FromWindows1252("\x80\xE9"), "\xE2\x82\xAC\xC3\xA9");
}

TEST(DateTime, CountsDaysFromTheEndOf1899) {
    EXPECT_EQ(DaysSince1899(1899, 12, 30), 0);
    EXPECT_EQ(DaysSince1899(1900, 1, 1), 2);
    EXPECT_EQ(DaysSince1899(2024, 2, 29), 45351);
    EXPECT_EQ(DaysSince1899(1899, 12, 29), -1);
    EXPECT_TRUE(IsCalendarDay(2024, 2, 29));
    EXPECT_FALSE(IsCalendarDay(2023, 2, 29));
    EXPECT_FALSE(IsCalendarDay(2100, 2, 29));
}

TEST(DateTime, ReadsTheCommonFormsAndRefusesTheRest) {
    const double day = DaysSince1899(2024, 1, 31);
    const double clock = (9 * 3600 + 30 * 60 + 5) / 86400.0;
    for (const char* text : {"20240131 09:30:05", "1/31/2024 9:30:05 AM", "2024-01-31 09:30:05", "1/31/24 9:30:05"}) {
        EXPECT_TRUE(ReadDateTime(text).valid) << text;
        EXPECT_EQ(ReadDateTime(text).days, day + clock) << text;
    }
    EXPECT_EQ(ReadDateTime("1/31/2024").days, day);
    EXPECT_EQ(ReadDateTime("12:00 PM").days, 0.5);
    for (const char* text :
         {"", "x", "2/30/2024", "20240131 25:00:00", "1/31/2024 13:00 PM", "1/2", "1/2/2024 1:2:3 AM x"})
        EXPECT_FALSE(ReadDateTime(text).valid) << text;
}
