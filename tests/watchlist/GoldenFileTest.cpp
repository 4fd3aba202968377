#include "base/Log.h"
#include "settings/Settings.h"
#include "watchlist/FileFixture.h"

#include <algorithm>
#include <filesystem>

using namespace vx;
using namespace vx::test;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class GoldenFile : public CFileFixture {
protected:
    GoldenFile() {
        before = SetLogSink([this](const SLogEvent& event) { logged.push_back(event.text); });
    }
    ~GoldenFile() override { SetLogSink(before); }

    void OpenGolden(std::string_view name) { ASSERT_TRUE(file.Open(Golden(name)).IsDone()); }

    LogSink before;
    std::vector<std::string> logged;
};

} // namespace

TEST_F(GoldenFile, IsIdenticalByteForByteWhenOpenedAndSaved) {
    for (const char* name : {"good_all_kinds.vxw", "good_empty_list.vxw", "good_windows1252.vxw"}) {
        OpenGolden(name);
        EXPECT_TRUE(SaveAs("saved.vxw").IsDone());
        EXPECT_EQ(ReadFile(At("saved.vxw")), ReadFile(Golden(name))) << name;
        EXPECT_THAT(logged, testing::Not(Contains(HasSubstr("line ")))) << name;
    }
}

TEST_F(GoldenFile, EveryValueReachesTheDocument) {
    OpenGolden("good_all_kinds.vxw");
    EXPECT_EQ(shown.title, "good_all_kinds");
    EXPECT_EQ(shown.placement.width, 1320);
    EXPECT_TRUE(shown.placement.maximised && shown.placement.alwaysOnTop);
    EXPECT_FALSE(settings.ReadBoolean(kShowEllipsis));
    EXPECT_FALSE(settings.ReadBoolean(kShowGridLines));
    EXPECT_TRUE(doc.Options().useGridPrecision);
    EXPECT_FALSE(doc.Options().useDefaultAlignment || doc.Options().showRowNumbers || doc.Options().showToolBar);
    EXPECT_EQ(doc.Options().lockedColumns, 1);
    EXPECT_EQ(doc.Options().sort.column, 12);
    EXPECT_EQ(doc.Columns().At(2).width, 78);
    EXPECT_EQ(doc.Columns().At(4).Entry(), nullptr);
    EXPECT_EQ(doc.RowSymbol(4), "IBM");
    EXPECT_EQ(doc.RowSymbol(7), "brk.A");
    EXPECT_EQ(doc.AnnotationText(6), "a=b, c");
    EXPECT_EQ(doc.Notes().Get(2), "two\r\nlines");
    EXPECT_EQ(doc.Alerts().Count("IBM"), 2);
    EXPECT_EQ(doc.Formats().Effective(5, 2).decimals, 2);
    EXPECT_FALSE(doc.IsModified());
}

TEST_F(GoldenFile, TheOlderLayoutBecomesTheCurrentOne) {
    OpenGolden("good_legacy.vxw");
    EXPECT_TRUE(SaveAs("saved.vxw").IsDone());
    EXPECT_EQ(ReadFile(At("saved.vxw")), ReadFile(Golden("good_legacy_as_saved.vxw")));
    OpenGolden("good_legacy_as_saved.vxw");
    EXPECT_EQ(Written(), ReadFile(Golden("good_legacy_as_saved.vxw")));
}

TEST_F(GoldenFile, ABrokenOneGivesWhatCanBeRead) {
    OpenGolden("broken_huge_rows.vxw");
    EXPECT_EQ(WrittenLine("Symbols"), "IBM:100000,;");
    EXPECT_EQ(WrittenLine("Annotations"), "7:#yes;");
    EXPECT_EQ(doc.Notes().Get(3), "yes");
    EXPECT_EQ(WrittenLine("TrailingRows"), "1000");
    EXPECT_THAT(logged, Contains(HasSubstr("line 1: a symbol's row is out of range: \"IBM\"")));
    EXPECT_THAT(logged, Contains(HasSubstr("line 4: cell formats that were not understood: 3")));

    OpenGolden("broken_negative_widths.vxw");
    EXPECT_EQ(WrittenLine("Columns"), "Ask:20000;");
    OpenGolden("broken_no_equals.vxw");
    EXPECT_EQ(WrittenLine("TrailingRows"), "3");
    EXPECT_THAT(logged, Contains(HasSubstr("line 4: there is no \"=\" in it: \"IBM\"")));

    OpenGolden("broken_lists.vxw");
    EXPECT_EQ(WrittenLine("Symbols"), "A:1,;MSFT:4,;");
    EXPECT_EQ(WrittenLine("Annotations"), "3:#a:b;");
    EXPECT_EQ(WrittenLine("Alerts"), "MSFT:Last,>,5.000000,TRUE,TRUE,0,FALSE,;");
    EXPECT_EQ(doc.Notes().Get(4), "ab"
                                  "c\r\nd");
    EXPECT_EQ(WrittenLine("Columns"), "") << "no column is made up";
    EXPECT_THAT(logged, Contains(HasSubstr("line 3: alerts that were not understood: 4")));
}

TEST_F(GoldenFile, OfAKeyThatStandsTwiceTheLaterWins) {
    OpenGolden("broken_keys_twice.vxw");
    EXPECT_EQ(WrittenLine("Symbols"), "MSFT:1,2,;");
    EXPECT_EQ(WrittenLine("TrailingRows"), "2");
    EXPECT_EQ(WrittenLine("Columns"), "Last:900;Bid:500;");
    EXPECT_EQ(WrittenLine("Notes"), "1:new;");
}

TEST_F(GoldenFile, NulsAreTextButNoPartOfASymbol) {
    using namespace std::string_literals;
    OpenGolden("broken_nuls.vxw");
    EXPECT_EQ(WrittenLine("Symbols"), "MSFT:2,;");
    EXPECT_EQ(doc.AnnotationText(3), "a\0b"s);
    EXPECT_EQ(doc.Notes().Get(1), "n\0te"s);
    EXPECT_THAT(logged, Contains(HasSubstr("line 2: this is no symbol: \"IB\\x00M\"")));
}

TEST_F(GoldenFile, WhatHasNoLineEndIsNotReadAndSaidSo) {
    OpenGolden("broken_truncated.vxw");
    EXPECT_EQ(doc.RowSymbol(2), "MSFT");
    EXPECT_THAT(logged, Contains(HasSubstr("line 16: the last line has no end and was not read: \"Formatting=")));
    const SFileResult result = file.Open(Golden("broken_line_ends_lf_only.vxw"));
    EXPECT_TRUE(result.IsDone());
    EXPECT_THAT(result.notices, IsEmpty());
    EXPECT_THAT(result.remark, HasSubstr("Nothing in the file"));
    EXPECT_THAT(logged, Contains(result.remark));
    EXPECT_EQ(doc.LastUsedRow(), 0);
    EXPECT_TRUE(file.Open(Golden("broken_binary.vxw")).IsDone());
    EXPECT_EQ(doc.LastUsedRow(), 0);
    EXPECT_THAT(file.Open(Golden("broken_empty.vxw")).notices, IsEmpty());
    EXPECT_EQ(WrittenLine("Columns"), "Symbol:1000;");
}

TEST_F(GoldenFile, OlderTextsOfRejectedSymbolsBecomeSymbols) {
    OpenGolden("broken_older_invalid_symbols.vxw");
    EXPECT_EQ(doc.RowSymbol(2), "XYZ");
    EXPECT_EQ(doc.RowSymbol(3), "A:B C");
    EXPECT_EQ(WrittenLine("Annotations"), "1:#Tech;4:#\"\" is an Invalid Symbol.;");
}

TEST_F(GoldenFile, ListsOfTheOlderLayoutThatDifferAreWalkedAsFarAsBothGo) {
    OpenGolden("broken_legacy_lists_differ.vxw");
    EXPECT_EQ(doc.RowSymbol(1), "IBM");
    EXPECT_EQ(doc.RowSymbol(4), "LSE:VOD");
    EXPECT_EQ(doc.LastUsedRow(), 7);
    EXPECT_EQ(doc.AnnotationText(7), "a");
    EXPECT_EQ(WrittenLine("Columns"), "Symbol:1000;");
    EXPECT_EQ(WrittenLine("LockedColumns"), "0") << "a line without its end was read";
    EXPECT_THAT(logged, Contains(HasSubstr("line 7: the alert was not understood")));
    EXPECT_THAT(logged, Contains(HasSubstr("IBM:Moon,=,full,TRUE")));
}
