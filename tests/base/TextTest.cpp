// SPDX-License-Identifier: MIT
#include "base/Text.h"
#include "base/DateTime.h"
#include "base/Windows1252.h"

#include <gmock/gmock.h>

using namespace vx;
using testing::ElementsAre;

TEST(Text, CaseFoldingTouchesOnlyAsciiLetters) {
    EXPECT_EQ(UpperAscii("ms\xE4 z@`{"), "MS\xE4 Z@`{");
    EXPECT_EQ(LowerAscii("MSFT\xC4"), "msft\xC4");
    EXPECT_LT(CompareNoCase("ib", "IBM"), 0);
    EXPECT_GT(CompareNoCase("\xE4", "z"), 0);
}

TEST(Windows1252, EveryByteSurvivesTheRoundTrip) {
    std::string all;
    for (int i = 0; i < 256; ++i) all.push_back(static_cast<char>(i));
    EXPECT_EQ(Windows1252FromUtf16(Utf16FromWindows1252(all)), all);
    EXPECT_EQ(Windows1252FromUtf16(u"\u4e2d\U0001F600."), "??.");
    EXPECT_EQ(Utf8FromWindows1252("\x80\xE9"), "\xE2\x82\xAC\xC3\xA9");
}

TEST(DateTime, ReadsTheCommonFormsAndRefusesTheRest) {
    EXPECT_EQ(DaysSince1899(1900, 1, 1), 2);
    EXPECT_EQ(DaysSince1899(2024, 2, 29), 45351);
    EXPECT_FALSE(IsCalendarDay(2100, 2, 29));
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

TEST(CLineCutter, CutsLinesAtEveryEndWhateverThePieces) {
    const std::string text = "one\r\n\ntwo\nthr\ree\r";
    for (const size_t piece : {1u, 2u, 3u, 100u}) {
        CLineCutter cutter;
        std::vector<std::string> lines;
        for (size_t at = 0; at < text.size() + piece; at += piece) {
            at < text.size() ? cutter.Append(std::string_view(text).substr(at, piece)) : cutter.End();
            while (const auto line = cutter.Next())
                lines.push_back(std::to_string(line->number) + std::string(line->text));
        }
        EXPECT_THAT(lines, ElementsAre("1one", "2", "3two", "4thr", "5ee")) << piece;
    }
}

TEST(CLineCutter, ALineThatIsTooLongIsCutAndToldOnce) {
    CLineCutter cutter(10);
    cutter.Append("0123456789\n0123456789x");
    EXPECT_FALSE(cutter.Next()->tooLong) << "the most that fits";
    EXPECT_TRUE(cutter.Next()->tooLong);
    cutter.Append("xxx\r\nnext");
    cutter.End();
    EXPECT_EQ(cutter.Next()->text, "next");
}
