// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/FurtherKeys.h"

#include "watchlist/FileFixture.h"

using namespace vx;
using namespace vx::test;

namespace {

class CFurtherKeysTest : public CFileFixture {
protected:
    void OpenFurther(std::string_view lines) {
        ASSERT_TRUE(OpenAs("further.vxw", fmt::format("Columns=Symbol:700;Last:700;\r\nSymbols=JPM:1,;\r\n{}", lines))
                        .IsDone());
    }
};

} // namespace

TEST_F(CFurtherKeysTest, ThatAreUnknownAreKeptAsTheyAreAndOthersAreNot) {
    const std::string later = "Vx.Later=1 \xFF = \"\\q\";\r\nVx.=\r\nVx.Later=and more";
    OpenFurther("Vy.Other=1\r\n" + later + "\r\nVx.HiddenRows=1;\r\nvx.Later=no\r\n");
    EXPECT_TRUE(doc.IsRowHidden(1));
    EXPECT_THAT(Written(), testing::EndsWith("\r\nVx.HiddenRows=1;\r\n" + later + "\r\n"));
    doc.NewDocument();
    EXPECT_THAT(Written(), testing::Not(HasSubstr("Vx.")));
}

TEST_F(CFurtherKeysTest, WinOverAllOtherLinesWhereverTheyAreAndAddUp) {
    OpenAs("list.vxw",
           "Vx.Rows=1 symbol \"A:B\";2 annota\r\nVx.Columns=1 30 \"Bid\";\r\nVx.Rows=tion \"#x\";1 symbol \"C;\";\r\n"
           "Symbols=IBM:1,2,;\r\nColumns=Symbol:700;\r\n");
    EXPECT_EQ(Rows(), "C;|#x");
    EXPECT_EQ(Columns(), "Bid=30 Symbol=70 ");
    OpenAs("list.vxw", "Symbols=IBM:1,;\r\nColumns=Last:700;Size:500;\r\nVx.Columns=2 0 \"Bid\";\"Ask\";\r\n");
    EXPECT_EQ(Columns(), "Last=70 Bid=0 Size=50 ") << "a column that was added by hand is gone";
}

TEST_F(CFurtherKeysTest, OfHostileValuesGiveWhatCanBeRead) {
    for (const std::string rows : {"0 empty", "100001 empty", "2 symbol", "2 symbol X", "2 symbol \"\"", "2 symbol \"X",
                                   "2 symbol \"X\\q\"", "2 symbol \"X\" 1", "2 row \"X\"", ""}) {
        OpenFurther(fmt::format("Vx.Rows={};3 symbol \"OK\";4 symbol \"CUT\"\r\n", rows));
        EXPECT_EQ(Row(2) + Row(4), "") << "an entry without its end, or " << rows;
        EXPECT_TRUE(rows.find('"') != std::string::npos || doc.RowSymbol(3) == "OK") << rows;
        EXPECT_THAT(log.texts, Contains(HasSubstr("of Vx.Rows is not understood"))) << rows;
        log.texts.clear();
    }
    OpenFurther(
        "Vx.Columns=0 1 \"A\";1001 1 \"B\";1000 99999 \"C\";1000 5 \"Last\";3 -1 \"D\";2 5 \"D\";1 1 \"\";x;\r\n");
    EXPECT_EQ(Columns(), "Symbol=70 D=5 Last=5 ");
    OpenFurther("Vx.HiddenRows=3-2;5;4;5;0;1-100001;7-8;x;\r\n");
    EXPECT_THAT(doc.HiddenRows(), ElementsAre(5, 7, 8));
    OpenFurther("Vx.SortAcrossHeadings=2;\r\n");
    EXPECT_FALSE(doc.Options().sortAcrossHeadings);
    OpenFurther("Vx.Export=tabs later;\r\n");
    EXPECT_EQ(doc.Options().exporting, SExportOptions{}) << "a choice that is not known spoils them all";
    for (const char* scale : {"49 normal", "301 compact", "150", "compact", "150 dense", "150 compact x"}) {
        OpenFurther(fmt::format("Vx.Scale={};\r\n", scale));
        EXPECT_EQ(doc.Options().scale, SScale{}) << scale;
    }
    OpenFurther("Vx.ColumnLooks=\"Last\" short later;arrow;\"None\" arrow;\"RowNumbers\" arrow;\"Symbol\" steady;\r\n");
    EXPECT_EQ(doc.Columns().At(2).look, SColumnLook{}) << "a word that is not known spoils the entry";
    EXPECT_FALSE(doc.Columns().At(1).look.flash);
    OpenFurther("Vx.Looks=1 1 sign bold;1 1 sign;1 1 other bold;1 1 sign thin;-1 1 sign bold;1 1001 sign bold;\r\n");
    EXPECT_EQ(doc.Formats().Size(), 1u);
    OpenFurther("Vx.Notes=0 \"a\";2 \"\";3 b;4 \"c;:,\";\r\nVx.Alerts=\"\";\"IBM\" \"None\" 1;\"IBM\" \"Last\" 1;"
                "\"IBM\" \"Last\" 9 nan 5 5 9 9 \"s\";\r\n");
    EXPECT_EQ(doc.Notes().Count(), 1);
    EXPECT_EQ(doc.Alerts().Count("IBM"), 1);
    std::string columns, rows;
    for (int i = 0; i < 300'000; ++i) {
        columns += fmt::format("{} 5 \"C{}\";\"C{}\";", 1 + i % 1000, i, i - 1);
        rows += fmt::format("{};", i + 1);
    }
    OpenFurther(fmt::format("Vx.Columns={}\r\nVx.HiddenRows={}\r\n", columns, rows));
    EXPECT_EQ(doc.HiddenRows().size(), 100'000u);
    EXPECT_EQ(doc.Columns().Count(), CColumnMap::kMostColumns);
}
