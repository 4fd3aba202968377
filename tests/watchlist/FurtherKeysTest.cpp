#include "watchlist/fileformat/FurtherKeys.h"

#include "base/Log.h"
#include "watchlist/FileFixture.h"

using namespace vx;
using namespace vx::test;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

class FurtherKeys : public CFileFixture {
protected:
    FurtherKeys() {
        before = SetLogSink([this](const SLogEvent& event) { logged.push_back(event.text); });
        OpenAs("list.vxw", "Columns=Symbol:700;Last:700;Bid:700;Ask:700;\r\nSymbols=JPM:1,;\r\n");
    }
    ~FurtherKeys() override { SetLogSink(before); }

    /// The lines behind those that every program knows.
    std::vector<std::string> FurtherLines() const {
        std::vector<std::string> out;
        const std::string text = Written();
        for (size_t at = text.find("\r\nVx."); at != std::string::npos; at = text.find("\r\nVx.", at + 1))
            out.push_back(text.substr(at + 2, text.find("\r\n", at + 2) - at - 2));
        return out;
    }
    /// Saves the list and opens a copy of its file as another user would, who has nothing else of it.
    void Travel() {
        const std::string text = Written();
        ASSERT_TRUE(SaveAs("list.vxw").IsDone());
        std::filesystem::copy(At("list.vxw"), elsewhere / "copy.vxw",
                              std::filesystem::copy_options::overwrite_existing);
        doc.NewDocument();
        logged.clear();
        CWatchlistFile copy(doc, elsewhere / "state");
        ASSERT_TRUE(copy.Open(elsewhere / "copy.vxw").IsDone());
        EXPECT_EQ(Written(), text);
        EXPECT_THAT(logged, Not(Contains(HasSubstr("line "))));
    }
    void OpenFurther(std::string_view lines) {
        ASSERT_TRUE(OpenAs("further.vxw", fmt::format("Columns=Symbol:700;Last:700;\r\nSymbols=JPM:1,;\r\n{}", lines))
                        .IsDone());
    }
    std::string Columns() const {
        std::string out;
        for (int i = 1; i < doc.Columns().Count(); ++i)
            out += fmt::format("{}={} ", doc.Columns().At(i).name, doc.Columns().At(i).width);
        return out;
    }

    CTempFolder elsewhere;
    LogSink before;
    std::vector<std::string> logged;
};

A_INFO AlertBelow(double threshold, std::string_view sound = {}) {
    A_INFO alert;
    alert.enabled = 1;
    alert.value = threshold;
    alert.fieldId = FieldIndex("Last") - 1;
    alert.condition = 4;
    alert.soundFile = sound;
    return alert;
}

} // namespace

TEST_F(FurtherKeys, AreNotWrittenForAListThatNeedsNone) {
    doc.Update()->SetAnnotation(2, "plain, with a colon: and \"quotes\"");
    doc.Update()->Notes().Set(1, "two\r\nlines");
    doc.AlertRules().Add("JPM", AlertBelow(0.000001));
    EXPECT_THAT(FurtherLines(), IsEmpty());
    EXPECT_THAT(Written(), testing::EndsWith(";\r\n"));
}

TEST_F(FurtherKeys, BringBackEveryRowAndTakeOutThoseThatTheOtherLinesAdd) {
    doc.Update()->PlaceSymbol(4, "LSE:5");
    doc.Update()->PlaceSymbol(6, "A:8,;B");
    doc.Update()->SetAnnotation(7, "buy; 9:#sell");
    doc.Update()->SetAnnotation(10, "\"XYZ\" is an Invalid Symbol.");
    doc.Update()->SetAnnotation(11, "one\r\n[line");
    doc.Update()->Notes().Set(9, "far\r\ndown \xFC");
    EXPECT_EQ(WrittenLine("Symbols"), "JPM:1,;LSE:5:4,;A:8,;B:6,;");
    EXPECT_EQ(WrittenLine("Annotations"), "7:#buy; 9:#sell;10:#\"XYZ\" is an Invalid Symbol.;11:#one;");
    EXPECT_THAT(FurtherLines(), ElementsAre("Vx.Rows=4 symbol \"LSE:5\";5 empty;6 symbol \"A:8,;B\";"
                                            "7 annotation \"#buy; 9:#sell\";8 empty;9 empty;"
                                            "10 annotation \"#\\\"XYZ\\\" is an Invalid Symbol.\";"
                                            "11 annotation \"#one\\r\\n[line\";",
                                            "Vx.Notes=9 \"far\\r\\ndown \\xFC\";"));
    Travel();
    EXPECT_EQ(doc.RowSymbol(4), "LSE:5");
    EXPECT_EQ(doc.RowKind(5), ERowKind::Empty);
    EXPECT_EQ(doc.RowSymbol(6), "A:8,;B");
    EXPECT_EQ(doc.AnnotationText(7), "buy; 9:#sell");
    EXPECT_EQ(doc.AnnotationText(11), "one\r\n[line");
    EXPECT_EQ(doc.Notes().Get(9), "far\r\ndown \xFC");
    EXPECT_EQ(doc.LastUsedRow(), 11);
}

TEST_F(FurtherKeys, BringBackTheAlertsOfEachSymbolThatLostOne) {
    doc.AlertRules().Add("JPM", AlertBelow(1e-7));
    doc.AlertRules().Add("JPM", AlertBelow(5));
    doc.AlertRules().Add("JPM", AlertBelow(2e-7));
    doc.AlertRules().Add("LSE:VOD", AlertBelow(3));
    doc.AlertRules().Add("BAC", AlertBelow(4, "/home/a;GS:Last,=,1,TRUE"));
    doc.AlertRules().Add("IBM", AlertBelow(6));
    EXPECT_EQ(WrittenLine("Alerts").substr(0, 56), "BAC:Last,<=,4.000000,TRUE,FALSE,0,FALSE,/home/a;GS:Last,");
    const CAlertArray ofJpm = doc.Alerts().Get("JPM");
    Travel();
    EXPECT_EQ(doc.Alerts().Get("JPM"), ofJpm);
    EXPECT_THAT(doc.Alerts().Get("LSE:VOD"), ElementsAre(AlertBelow(3)));
    EXPECT_THAT(doc.Alerts().Get("BAC"), ElementsAre(AlertBelow(4, "/home/a;GS:Last,=,1,TRUE")));
    EXPECT_THAT(doc.Alerts().Symbols(), ElementsAre("BAC", "IBM", "JPM", "LSE:VOD"));
    EXPECT_THAT(FurtherLines(),
                ElementsAre(testing::StartsWith("Vx.Alerts=\"GS\";\"BAC\" \"Last\" 4 4 1 0 0 0 \"/home")));
}

TEST_F(FurtherKeys, BringBackColumnsWithWhatCountsByTheirPlaces) {
    SCellFormat format;
    format.fontSizePt = 13;
    doc.Update()->Formats().Set(1, 3, format);
    doc.Update()->Options().sort.column = 4;
    doc.Update()->Options().lockedColumns = 3;
    doc.Update()->Columns().SetWidth(2, 0);
    EXPECT_EQ(WrittenLine("Columns"), "Symbol:700;Bid:700;Ask:700;");
    EXPECT_EQ(WrittenLine("Sort").substr(0, 2), "4;") << "places count with the hidden columns";
    EXPECT_EQ(WrittenLine("LockedColumns"), "3");
    EXPECT_THAT(WrittenLine("Formatting"), HasSubstr(";1,3:"));
    EXPECT_THAT(FurtherLines(), ElementsAre("Vx.Columns=2 0 \"Last\";"));
    Travel();
    EXPECT_EQ(Columns(), "Symbol=70 Last=0 Bid=70 Ask=70 ");
    EXPECT_EQ(doc.Options().sort.column, 4);
    EXPECT_EQ(doc.Formats().Effective(1, 3).fontSizePt, 13);

    for (const char* name : {"Yield: net", "a;Ask", "RowNumbers", "two\r\nlines"}) doc.Update()->Columns().Append(name, 50);
    doc.Update()->Columns().Move(5, 1);
    Travel();
    EXPECT_EQ(Columns(), "Yield: net=50 Symbol=70 Last=0 Bid=70 Ask=70 a;Ask=50 RowNumbers=50 two\r\nlines=50 ");
    EXPECT_EQ(doc.Columns().At(0).width, kRowNumberWidthPx);
    doc.Update()->Columns().SetWidth(0, 45);
    Travel();
    EXPECT_EQ(doc.Columns().At(0).width, 45);
    while (doc.Columns().Count() > 1) doc.Update()->Columns().Remove(1);
    Travel();
    EXPECT_EQ(Columns(), "");
}

TEST_F(FurtherKeys, RememberHowTheListIsExported) {
    doc.Update()->Options().exporting = {true, false, false, true, true};
    EXPECT_THAT(FurtherLines(), ElementsAre("Vx.Export=formulas tabs headless append utf8;"));
    Travel();
    EXPECT_EQ(doc.Options().exporting, (SExportOptions{true, false, false, true, true}));
    OpenFurther("Vx.Export=append;\r\n");
    EXPECT_EQ(doc.Options().exporting, (SExportOptions{false, true, true, true, false}));
    OpenFurther("Vx.Export=tabs later;\r\n");
    EXPECT_EQ(doc.Options().exporting, SExportOptions{}) << "a choice that is not known spoils them all";
}

TEST_F(FurtherKeys, BringBackWhatFormatsHaveNoFieldFor) {
    CCellFormatStore& formats = doc.Update()->Formats();
    const auto set = [&](int row, int column, EColourRule rule, bool regular, int points = 9) {
        SCellFormat format;
        format.colourRule = rule;
        format.regular = regular;
        format.fontSizePt = points;
        formats.Set(row, column, format);
    };
    set(0, 2, EColourRule::Sign, true);
    set(1, 2, EColourRule::OfField, false); // Its column's text, but another look.
    set(2, 2, EColourRule::Sign, true);     // As its column in all.
    set(3, 2, EColourRule::Direction, false, 12);
    set(4, 2, EColourRule::OfField, false, 12);
    EXPECT_THAT(FurtherLines(), ElementsAre("Vx.Looks=0 2 sign regular;1 2 field bold;3 2 direction bold;"));
    EXPECT_THAT(WrittenLine("Formatting"), testing::EndsWith("TRUE,;3,2:,,,,,,,,,,,12,,,,;4,2:,,,,,,,,,,,12,,,,;"));
    const auto looks = [&] {
        std::vector<SCellFormat> out;
        for (int row = 0; row <= 5; ++row) out.push_back(formats.Effective(row, 2));
        return out;
    };
    const std::vector<SCellFormat> saved = looks();
    Travel();
    EXPECT_EQ(looks(), saved);
    OpenFurther("Vx.Looks=1 1 sign bold;1 1 sign;1 1 other bold;1 1 sign thin;-1 1 sign bold;1 1001 sign bold;\r\n");
    EXPECT_EQ(formats.Size(), 1u);
}

TEST_F(FurtherKeys, CarryEveryByteInLinesOfBoundedLength) {
    std::string all;
    for (int i = 0; i < 5000; ++i) all += static_cast<char>(i % 256);
    doc.Update()->SetAnnotation(2, all);
    doc.Update()->PlaceSymbol(3, fmt::format("LSE:{}", std::string(400, 'V')));
    EXPECT_THAT(FurtherLines(), SizeIs(testing::Gt(5u)));
    for (const std::string& line : FurtherLines()) {
        EXPECT_LE(line.size(), kMostFurtherBytes);
        EXPECT_TRUE(std::ranges::all_of(line, [](char c) { return c >= ' ' && c <= '~'; }));
    }
    Travel();
    EXPECT_EQ(doc.AnnotationText(2), all);
    EXPECT_EQ(doc.RowSymbol(3).size(), 404u);
}

TEST_F(FurtherKeys, ThatAreUnknownAreKeptAsTheyAreAndOthersAreNot) {
    const std::string later = "Vx.Later=1 \xFF = \"\\q\";\r\nVx.=\r\nVx.Later=and more";
    OpenFurther("Vy.Other=1\r\n" + later + "\r\nVx.HiddenRows=1;\r\nvx.Later=no\r\n");
    EXPECT_TRUE(doc.IsRowHidden(1));
    EXPECT_THAT(Written(), testing::EndsWith("\r\nVx.HiddenRows=1;\r\n" + later + "\r\n"));
    Travel();
    doc.NewDocument();
    EXPECT_THAT(FurtherLines(), IsEmpty());
}

TEST_F(FurtherKeys, WinOverAllOtherLinesWhereverTheyAreAndAddUp) {
    OpenAs("list.vxw",
           "Vx.Rows=1 symbol \"A:B\";2 annota\r\nVx.Columns=1 30 \"Bid\";\r\nVx.Rows=tion \"#x\";1 symbol \"C;\";\r\n"
           "Symbols=IBM:1,2,;\r\nColumns=Symbol:700;\r\n");
    EXPECT_EQ(doc.RowSymbol(1), "C;");
    EXPECT_EQ(doc.AnnotationText(2), "x");
    EXPECT_EQ(Columns(), "Bid=30 Symbol=70 ");
    OpenAs("list.vxw", "Symbols=IBM:1,;\r\nColumns=Last:700;Size:500;\r\nVx.Columns=2 0 \"Bid\";\"Ask\";\r\n");
    EXPECT_EQ(Columns(), "Last=70 Bid=0 Size=50 ") << "a column that was added by hand is gone";
}

TEST_F(FurtherKeys, OfHostileValuesGiveWhatCanBeRead) {
    for (const char* rows :
         {"0 empty", "100001 empty", "-3 symbol \"X\"", "2 symbol", "2 symbol X", "2 symbol \"\"", "2 symbol \"X",
          "2 symbol \"X\\q\"", "2 symbol \"X\" 1", "2 row \"X\"", "", " ", "\"", "2 symbol \"X\"\"Y\""}) {
        OpenFurther(fmt::format("Vx.Rows={};3 symbol \"OK\";4 symbol \"CUT\"\r\n", rows));
        EXPECT_EQ(doc.RowSymbol(2), "") << rows;
        EXPECT_TRUE(std::string_view(rows).find('"') != std::string_view::npos || doc.RowSymbol(3) == "OK") << rows;
        EXPECT_EQ(doc.RowSymbol(4), "") << "an entry without its end";
        EXPECT_THAT(logged, Contains(HasSubstr("of Vx.Rows is not understood"))) << rows;
        logged.clear();
    }
    OpenFurther(
        "Vx.Columns=0 1 \"A\";1001 1 \"B\";1000 99999 \"C\";1000 5 \"Last\";3 -1 \"D\";2 5 \"D\";1 1 \"\";x;\r\n");
    EXPECT_EQ(Columns(), "Symbol=70 D=5 Last=5 ");
    OpenFurther("Vx.HiddenRows=3-2;5;4;0;1-100001;7-8;x;\r\n");
    EXPECT_THAT(doc.HiddenRows(), ElementsAre(5, 7, 8));
    for (const char* flag : {"0;", "2;", "1 1;", "\"1\";", "yes;", "1"}) {
        OpenFurther(fmt::format("Vx.SortAcrossHeadings={}\r\n", flag));
        EXPECT_FALSE(doc.Options().sortAcrossHeadings) << flag;
    }
    OpenFurther("Vx.Notes=0 \"a\";2 \"\";3 b;4 \"c;:,\";\r\nVx.Alerts=\"\";\"IBM\" \"None\" 1;\"IBM\" \"Last\" 1;"
                "\"IBM\" \"Last\" 9 nan 5 5 9 9 \"s\";\r\n");
    EXPECT_EQ(doc.Notes().Count(), 1);
    EXPECT_EQ(doc.Alerts().Count("IBM"), 1);
    std::string many = "Vx.Columns=";
    for (int i = 0; i < 1'000'000; ++i) many += fmt::format("{} 5 \"C{}\";\"C{}\";", 1 + i % 1000, i, i - 1);
    many += "\r\nVx.HiddenRows=";
    for (int i = 1; i <= 1'000'000; ++i) many += fmt::format("{};", i);
    OpenFurther(many + "\r\n");
    EXPECT_EQ(doc.HiddenRows().size(), 100'000u);
    EXPECT_EQ(doc.Columns().Count(), CColumnMap::kMostColumns);
}
