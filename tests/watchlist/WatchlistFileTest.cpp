// SPDX-License-Identifier: MIT
#include "watchlist/FileFixture.h"

using namespace vx;
using namespace vx::test;
using namespace std::string_literals;

namespace {

class CWatchlistFileTest : public CFileFixture {
protected:
    void OpenGolden(std::string_view name) { ASSERT_TRUE(file.Open(Golden(name)).IsDone()); }
    /// A line of what is saved of the file that is open.
    void Expect(std::string_view key, std::string_view value) { EXPECT_EQ(WrittenLine(key), value) << file.Path(); }
    void ExpectLogged(const std::string& text) { EXPECT_THAT(log.texts, Contains(HasSubstr(text))); }
};

} // namespace

TEST_F(CWatchlistFileTest, IsIdenticalByteForByteWhenOpenedAndSaved) {
    for (const char* name :
         {"good_all_kinds.vxw", "good_empty_list.vxw", "good_windows1252.vxw", "good_further_keys.vxw"}) {
        OpenGolden(name);
        EXPECT_TRUE(SaveAs("saved.vxw").IsDone());
        EXPECT_EQ(ReadFile(At("saved.vxw")), ReadFile(Golden(name))) << name;
        EXPECT_THAT(log.texts, testing::Not(Contains(HasSubstr("line ")))) << name;
    }
    OpenGolden("good_legacy.vxw");
    EXPECT_TRUE(SaveAs("saved.vxw").IsDone());
    EXPECT_EQ(ReadFile(At("saved.vxw")), ReadFile(Golden("good_legacy_as_saved.vxw")));
}

TEST_F(CWatchlistFileTest, EveryValueReachesTheDocument) {
    OpenGolden("good_all_kinds.vxw");
    EXPECT_EQ(shown.title, "good_all_kinds");
    EXPECT_EQ(shown.placement.width, 1320);
    EXPECT_TRUE(shown.placement.maximised && shown.placement.alwaysOnTop);
    EXPECT_FALSE(settings.ReadBoolean(kShowEllipsis) || settings.ReadBoolean(kShowGridLines));
    const SWatchlistOptions& options = doc.Options();
    EXPECT_TRUE(options.useGridPrecision);
    EXPECT_FALSE(options.useDefaultAlignment || options.showRowNumbers || options.showToolBar);
    EXPECT_EQ(options.lockedColumns, 1);
    EXPECT_EQ(options.sort.column, 12);
    EXPECT_EQ(doc.Notes().Get(2), "two\r\nlines");
    EXPECT_FALSE(doc.IsModified());
    // What the lines that every program knows cannot hold.
    OpenGolden("good_further_keys.vxw");
    EXPECT_EQ(Rows(), "JPM|||LSE:5||A:8,;B|#buy; 9:#sell|||#\"XYZ\" is an Invalid Symbol.|#one\r\n[line");
    EXPECT_EQ(doc.Notes().Get(9), "far\r\ndown \xFC");
    EXPECT_THAT(doc.HiddenRows(), testing::ElementsAre(2, 3, 7));
    EXPECT_EQ(doc.Alerts().Save(), "BAC:Last,<=,4.000000,TRUE,FALSE,0,FALSE,/home/a;GS:Last,=,1,TRUE;");
    EXPECT_EQ(Columns(), "Symbol=70 Last=0 Bid=70 Ask=70 Yield: net=50 ");
    EXPECT_EQ(doc.Options().sort.column, 4) << "places count with the hidden columns";
    EXPECT_EQ(doc.Formats().Effective(2, 2).colourRule, EColourRule::Sign);
    EXPECT_EQ(doc.Options().exporting, (SExportOptions{true, false, false, true, true}));
}

TEST_F(CWatchlistFileTest, ABrokenOneGivesWhatCanBeRead) {
    OpenGolden("broken_huge_rows.vxw");
    Expect("Symbols", "IBM:100000,;");
    EXPECT_EQ(doc.RowCount(), 100000);
    Expect("Annotations", "7:#yes;");
    Expect("TrailingRows", "1000");
    EXPECT_EQ(doc.Notes().Get(3), "yes");
    ExpectLogged("line 1: a symbol's row is out of range: \"IBM\"");
    ExpectLogged("line 4: cell formats that were not understood: 3");
    OpenGolden("broken_negative_widths.vxw");
    Expect("Columns", "Ask:20000;");
    OpenGolden("broken_no_equals.vxw");
    Expect("TrailingRows", "3");
    ExpectLogged("line 4: there is no \"=\" in it: \"IBM\"");
    OpenGolden("broken_lists.vxw");
    Expect("Symbols", "A:1,;MSFT:4,;");
    Expect("Annotations", "3:#a:b;");
    Expect("Alerts", "MSFT:Last,>,5.000000,TRUE,TRUE,0,FALSE,;");
    Expect("Columns", ""); // None is made up.
    EXPECT_EQ(doc.Notes().Get(4), "abc\r\nd");
    ExpectLogged("line 3: alerts that were not understood: 4");
    OpenGolden("broken_keys_twice.vxw");
    Expect("Symbols", "MSFT:1,2,;");
    Expect("TrailingRows", "2");
    Expect("Columns", "Last:900;Bid:500;");
    Expect("Notes", "1:new;");
    OpenGolden("broken_nuls.vxw");
    Expect("Symbols", "MSFT:2,;");
    EXPECT_EQ(doc.AnnotationText(3), "a\0b"s);
    EXPECT_EQ(doc.Notes().Get(1), "n\0te"s);
    ExpectLogged("line 2: this is no symbol: \"IB\\x00M\"");
    OpenGolden("broken_older_invalid_symbols.vxw");
    EXPECT_EQ(Row(2) + Row(3), "XYZA:B C");
    Expect("Annotations", "1:#Tech;4:#\"\" is an Invalid Symbol.;");
    OpenGolden("broken_legacy_lists_differ.vxw");
    EXPECT_EQ(Row(1) + Row(4) + Row(7), "IBMLSE:VOD#a");
    EXPECT_EQ(doc.LastUsedRow(), 7);
    Expect("Columns", "Symbol:1000;");
    Expect("LockedColumns", "0"); // Its line has no end.
    ExpectLogged("line 7: the alert was not understood");
    ExpectLogged("IBM:Moon,=,full,TRUE");
}

TEST_F(CWatchlistFileTest, AlertsOfTwoLinesAddUpAndAnUnendedTextIsNoSymbol) {
    OpenAs("list.vxw", "Alerts=IBM:Last,>,1,TRUE\r\nAlerts=GE:Last,>,2,TRUE\r\n"
                       "Annotations=1:#\"XYZ\" is an Invalid Symbol.\r\n");
    EXPECT_EQ(doc.Alerts().Count("IBM") + doc.Alerts().Count("GE"), 2);
    EXPECT_EQ(Row(1), "#\"XYZ\" is an Invalid Symbol.");
}

TEST_F(CWatchlistFileTest, WhatHasNoLineEndIsNotReadAndSaidSo) {
    OpenGolden("broken_truncated.vxw");
    EXPECT_EQ(doc.RowSymbol(2), "MSFT");
    ExpectLogged("line 16: the last line has no end and was not read: \"Formatting=");
    const SFileResult result = file.Open(Golden("broken_line_ends_lf_only.vxw"));
    EXPECT_TRUE(result.IsDone() && result.notices.empty());
    EXPECT_THAT(result.remark, HasSubstr("Nothing in the file"));
    ExpectLogged(result.remark);
    EXPECT_EQ(doc.LastUsedRow(), 0);
    EXPECT_TRUE(file.Open(Golden("broken_binary.vxw")).IsDone());
    EXPECT_THAT(file.Open(Golden("broken_empty.vxw")).notices, testing::IsEmpty());
    Expect("Columns", "Symbol:1000;");
}
