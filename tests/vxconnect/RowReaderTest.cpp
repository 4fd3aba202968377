// SPDX-License-Identifier: MIT
#include "vxconnect/data/RowReader.h"
#include "vxconnect/data/DataRecord.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace vx::sim {
namespace {

using testing::ElementsAre;

// What data say, in pieces of some size: a row as "SYMBOL slot=text ...", an error as "line: text", "" for a blank
// line.
std::vector<std::string> ReadText(std::string_view text, const std::string& map = {},
                                  CRowReader::EOrigin origin = CRowReader::EOrigin::File, size_t piece = 7) {
    CFieldNames names;
    EXPECT_EQ(names.Add(map), "");
    std::vector<std::string> out;
    CRowReader reader(names, origin, [&](uint64_t line, const std::string& what) {
        out.push_back(fmt::format("{}: {}", line, what));
    });
    SRow row;
    for (size_t at = 0; at <= text.size(); at += piece) {
        reader.Append(text.substr(at, piece));
        if (at + piece > text.size()) reader.End();
        for (auto result = reader.Next(row); result != CRowReader::EResult::NeedsMore; result = reader.Next(row)) {
            if (result == CRowReader::EResult::Blank) out.emplace_back();
            if (result != CRowReader::EResult::Row) continue;
            std::string shown = row.symbol;
            for (const SRowValue& value : row.values) shown += fmt::format(" {}={}", value.slot, value.text);
            out.push_back(shown);
        }
    }
    return out;
}

std::vector<std::string> Read(const std::vector<std::string>& lines, const std::string& map = {}) {
    return ReadText(fmt::format("{}\n", fmt::join(lines, "\n")), map);
}

std::string Value(const std::string& field, const std::string& text) {
    const auto out = Read({"Symbol;" + field, "A;" + text});
    return out.empty() ? "(nothing)" : out[0].substr(0, 2) == "A " ? out[0].substr(out[0].find('=') + 1) : out[0];
}

TEST(RowReader, NamesOfFieldsAndColumnsMeanTheSame) {
    EXPECT_THAT(Read({"symbol, LAST ,Total_Volume,name", "IBM,1.50,100,Big"}), ElementsAre("IBM 63=1.50 4=100 71=Big"));
    EXPECT_THAT(Read({"<VOLUME>;LQT Price;Symbol", "100;1.50;IBM", "", "7;;KO"}),
                ElementsAre("IBM 4=100 63=1.50", "", "KO 4=7"));
    EXPECT_THAT(Read({R"({"Symbol":"IBM","last":1.5,"% chg":-2,"Total Volume":100,"Name":null,"Bid":"1.40"})",
                      R"({"SYMBOL":"KO"})"}),
                ElementsAre(testing::AllOf(testing::StartsWith("IBM "), testing::HasSubstr("3=-0.02"),
                                           testing::HasSubstr("63=1.5"), testing::HasSubstr("7=1.40")),
                            "KO"));
}

TEST(RowReader, PublishedFilesOfDailyBarsAreReadWithAMap) {
    const std::string bar = "AAPL 67=1/31/2024 14=187.04 5=187.10 6=184.35 63=184.40 4=55467800";
    const std::string map = "close=Last";
    EXPECT_THAT(ReadText("\xEF\xBB\xBF\"Date\";\"Open\";\"High\";\"Low\";\"Close\";\"Volume\";\"Name\"\r"
                         "20240131;187.04;187.10;184.35;184.40;55467800;AAPL\r",
                         map + ",Name=Symbol"),
                ElementsAre(bar));
    EXPECT_THAT(Read({"<DATE>\t<OPEN>\t<HIGH>\t<LOW>\t<CLOSE>\t<VOL>\tAdj Close\tStock",
                      "1/31/2024 00:00:00\t187.04\t187.10\t184.35\t184.40\t55467800.0\t183\tAAPL"},
                     map + ",Stock=Symbol,vol=Volume,adj close="),
                ElementsAre(bar));
    CFieldNames names;
    for (const char* bad : {"Close=Lst", "Close", "=Last"}) EXPECT_NE(names.Add(bad), "") << bad;
}

TEST(RowReader, ValuesAreWrittenAsTheWireHasThem) {
    EXPECT_EQ(Value("% Chg", "2.5 %"), "0.025");
    EXPECT_EQ(Value("Last", "-1e-7"), "-0.0000001");
    EXPECT_EQ(Value("Volume", "1e2"), "100");
    EXPECT_EQ(Value("Bid Size", "0.75"), "1") << "the nearest whole number";
    EXPECT_EQ(Value("T Time", "09:30:15.250"), "09:30:15");
    for (const char* date : {"1/31/2024", "01/31/2024", "2024-01-31", "20240131", "2024-01-31 16:00:00"})
        EXPECT_EQ(Value("Trade Date", date), "1/31/2024");
    EXPECT_EQ(Value("Ex Div Date", "2/29"), "2/29");
    EXPECT_EQ(Value("Split1 Ratio", "0.50 2021-06-07"), "0.50 6/7/2021");
    EXPECT_EQ(Value("Tick Trend", "+"), "173");
    EXPECT_EQ(Value("Name", "Caf\xC3\xA9 \xE2\x80\x99"), "Caf\xE9 \x92") << "UTF-8";
    EXPECT_EQ(Value("Name", "Caf\xE9"), "Caf\xE9") << "Windows-1252";
}

TEST(RowReader, TimesOfTheWorldAreToldInThisComputersZone) {
    const std::string before = std::getenv("TZ") ? std::getenv("TZ") : "";
    setenv("TZ", "EST5EDT", 1);
    tzset();
    const std::string day = " 67=1/31/2024", time = "65=09:30:05";
    for (const char* text :
         {"2024-01-31T14:30:05Z", "2024-01-31T16:30:05+0200", "20240131T143005Z", "1/31/2024 9:30:05", "1706711405.75",
          "1706711405123", "1706711405123456", "1706711405123456789"})
        EXPECT_EQ(Value("T Time", text), time.substr(3) + day) << text;
    EXPECT_EQ(Value("T Time", "2024-07-31T13:30:05Z"), "09:30:05 67=7/31/2024") << "summer";
    EXPECT_EQ(Value("Bid Time", "1706711405"), "09:30:05") << "a quote has no day";
    before.empty() ? unsetenv("TZ") : setenv("TZ", before.c_str(), 1);
    tzset();
}

TEST(RowReader, WrongValuesAreNamedAndTheOthersKept) {
    struct SCase {
        const char* field;
        std::vector<std::string> texts;
    };
    for (const SCase& wrong :
         std::vector<SCase>{{"Last", {"abc", "1,5", "nan", "0x10", "1e16", "1e999", "1e-16"}},
                            {"Volume", {"-1", "nan"}},
                            {"Delay", {"1.5", "2147483648"}},
                            {"T Time", {"24:00:00", "9", "2024-01-31", "2024-01-31T25:00:00", "1e5"}},
                            {"Trade Date", {"2/30/2024", "1/31/24", "09:30:00"}},
                            {"Ex Div Date", {"2/30"}},
                            {"Split1 Ratio", {"0.5", "1e99 6/7/2021"}},
                            {"Exchange ID", {"xyz"}},
                            {"Type", {"QQ"}},
                            {"Tick Trend", {"174"}},
                            {"Name", {std::string("a\0b", 3), std::string(256, 'x'), "Caf\xC3\xA9 \xD0\x96"}}})
        for (const std::string& text : wrong.texts)
            EXPECT_THAT(Read({fmt::format("Symbol;{};Bid", wrong.field), "A;" + text + ";7"}),
                        ElementsAre(testing::StartsWith(fmt::format("2: field \"{}\": \"", wrong.field)), "A 7=7"))
                << text;
}

TEST(RowReader, VolumesBeyondTheWireAreToldAsTheMostItHas) {
    EXPECT_THAT(Read({"Symbol,Volume,Bid Size", "A,5000000000,3e9"}),
                ElementsAre(testing::HasSubstr("is too large"), testing::HasSubstr("is too large"),
                            "A 4=4294967295 9=2147483647"));
}

TEST(RowReader, WrongLinesAreToldAndTheNextOnesRead) {
    EXPECT_THAT(Read({"Symbol,Last", "A", "B,1,2", ",5", "\"C", "\"D\"x,1", "A--X,1", "E,5,, ", ",,"}),
                ElementsAre("2: 1 values where the header names 2", "3: 3 values where the header names 2",
                            "4: field \"Symbol\" is empty", testing::StartsWith("5: a quote is not closed"),
                            testing::StartsWith("6: a quote is not closed"),
                            testing::StartsWith("7: field \"Symbol\": \"A--X\" is not"), "E 63=5", ""));
    EXPECT_THAT(Read({"Symbol,Last", "A,1", "SYMBOL,Bid", "A,2"}), ElementsAre("A 63=1", "A 7=2"))
        << "whoever writes has begun again";
    const std::string cut = "Symbol,Last\nA,1\nA,10";
    EXPECT_THAT(ReadText(cut, {}, CRowReader::EOrigin::Stream),
                ElementsAre("A 63=1", "3: no line end: it may be incomplete and is ignored"));
    EXPECT_THAT(ReadText(cut), ElementsAre("A 63=1", "A 63=10"));
}

TEST(RowReader, JsonIsTakenAsItIsWritten) {
    EXPECT_THAT(Read({R"( {"last" : 1.50,"symbol":"A", "bid":1e-7,"Bid Size":1E2 ,"ask": null,"Name":"a\"}{\u00e9"})",
                      "{\"symbol\":\"B\",\"name\":\"Caf\xE9\"}", R"({"symbol":"C","bid size":true,"last":-0.5})"}),
                ElementsAre("A 63=1.50 7=0.0000001 9=100 71=a\"}{\xE9", "B 71=Caf\xE9", "C 9=1 63=-0.5"));
    EXPECT_THAT(Read({R"({"symbol":"A","last":{}})", R"({"symbol":"A","foo":1,"bid":2})", R"({"last":1,"foo":[2]})",
                      "{", "[1]", R"({"symbol":"A","last":1,"LQT Price":2})", R"({"symbol":"A","last":1,"last":1})",
                      R"({"symbol":"A","bid":[1,{"last":"]"}],"last":1})", R"({"symbol":"A","last":1e300,"bid":4})",
                      R"({"symbol":"A","last":3})"}),
                ElementsAre("1: field \"Last\" is neither text nor number", "A",
                            testing::StartsWith("2: \"foo\" is not a field and is ignored; the nearest are \""),
                            "A 7=2", "3: field \"Symbol\" is empty", testing::StartsWith("4: no JSON object: "),
                            "5: no JSON object", "6: \"LQT Price\" is ignored: field \"Last\" has been given already",
                            "A 63=1", "7: \"last\" is ignored: field \"Last\" has been given already", "A 63=1",
                            "8: field \"Bid\" is neither text nor number", "A 63=1",
                            testing::StartsWith("9: field \"Last\": \"1e300\" is out of range"), "A 7=4", "A 63=3"));
}

TEST(RowReader, LinesThatAreNoJsonAreTold) {
    for (const char* bad : {R"({"symbol":"A","last":1.})", R"({"symbol":"A","last":01})", R"({"symbol":"A","last":})",
                            R"({"symbol":"A",})", R"({"symbol":"A"}x)", R"({symbol:"A"})", R"({"symbol":"A)",
                            R"({"symbol":"\q"})", R"({"symbol":"A","foo":[1,])", R"({"symbol":"A","last":nul})"})
        EXPECT_THAT(Read({"{}", bad}).back(), testing::StartsWith("2: no JSON object: ")) << bad;
    EXPECT_THAT(Read({R"({"symbol":"A","foo":)" + std::string(100'000, '[')}),
                ElementsAre(testing::HasSubstr("in each other")));
}

TEST(RowReader, NamesThatAreNoFieldsArePassedOverWithTheNearest) {
    EXPECT_THAT(Read({"Symbol,Lst,Foo,", "A,1,2,3"}),
                ElementsAre(testing::StartsWith("1: \"Lst\" is not a field and is ignored; the nearest are \"Last\", "),
                            testing::StartsWith("1: \"Foo\" is not a field"), "A"));
    EXPECT_THAT(Read({"Symbol,Last,lqt price", "A,1,2"}),
                ElementsAre("1: \"lqt price\" is ignored: field \"Last\" has been given already", "A 63=1"));
    EXPECT_THAT(Read({"Last,Bid"}), ElementsAre(testing::StartsWith("1: no column \"Symbol\"; use --map NAME=Symbol")));
    EXPECT_THAT(Read({"[{\"symbol\":1}]"}), ElementsAre(testing::HasSubstr("not a list")));
    EXPECT_THAT(Read({"\xFF\xFES\0y"}), ElementsAre(testing::HasSubstr("UTF-16")));
    EXPECT_THAT(Read({"", "garbage", "Symbol,Last", "A,1"}), ElementsAre(testing::StartsWith("2: "), "A 63=1"));
}

SUpdate Merge(CDataRecord& record, std::vector<SRowValue> values) {
    return record.Merge({record.Symbol(), std::move(values)}, false);
}
size_t Slot(EField field) { return static_cast<size_t>(field); }

TEST(DataRecord, FiguresThatFollowAreWorkedOutUnlessGiven) {
    CDataRecord record("A");
    Merge(record, {{Slot(EField::Last), "10.5"}, {Slot(EField::Close), "10.00"}, {Slot(EField::Bid), "10.4"}});
    EXPECT_EQ(record.Get(EField::Change), "0.50");
    EXPECT_EQ(record.Get(EField::PercentChange), "0.050000");
    EXPECT_EQ(record.Get(EField::Spread), "");
    const SUpdate update = Merge(record, {{Slot(EField::Last), "10.4"}, {Slot(EField::Ask), "10.6"}});
    EXPECT_EQ(record.Get(EField::Tick), "175");
    EXPECT_EQ(record.Get(EField::Spread), "0.2");
    EXPECT_EQ(update.changed.Count(), 7) << "last, ask, change, its percentage, spread, tick, contents";
    EXPECT_EQ(record.Get(EField::MessageContents), "Ca");
    Merge(record, {{Slot(EField::Change), "9"}, {Slot(EField::Last), "10.5"}});
    EXPECT_EQ(record.Get(EField::Change), "9");
    EXPECT_TRUE(Merge(record, {{Slot(EField::Last), "10.5"}}).changed.Empty()) << "nothing new";
}

TEST(DataRecord, ChangeAndItsPercentageNeverContradictEachOther) {
    const auto worked = [](const char* last, const char* close) {
        CDataRecord record("A");
        Merge(record, {{Slot(EField::Last), last}, {Slot(EField::Close), close}});
        return std::string(record.Get(EField::Change)) + " " + std::string(record.Get(EField::PercentChange));
    };
    EXPECT_EQ(worked("10.50", "10.5"), "0.00 0.000000");
    EXPECT_EQ(worked("699999.99", "700000"), "-0.01 -0.000000014285714");
    EXPECT_EQ(worked("0.3", "0.30000000000000004"), "0.000000000000000 0.000000");
}

TEST(DataRecord, DecimalsAreTheMostSeenUnlessGiven) {
    CDataRecord record("A");
    const auto after = [&](EField field, const char* text) {
        Merge(record, {{Slot(field), text}});
        return std::string(record.Get(EField::DecimalPrecision));
    };
    EXPECT_EQ(after(EField::Last, "10"), "0");
    EXPECT_EQ(after(EField::Bid, "9.875"), "3");
    EXPECT_EQ(after(EField::Last, "10.1"), "3");
    EXPECT_EQ(after(EField::Ask, "10.299999999999999"), "3") << "a program's arithmetic";
    EXPECT_EQ(after(EField::Ask, "10.12345678"), "6") << "the feed shows no more";
    EXPECT_EQ(after(EField::DecimalPrecision, "2"), "2");
    EXPECT_EQ(after(EField::Ask, "10.123"), "2");
}

TEST(DataRecord, TheLastPriceOfTheDayBeforeIsTheClose) {
    CDataRecord record("A");
    const auto day = [&](const char* date, const char* last) {
        Merge(record, {{Slot(EField::LastDate), date}, {Slot(EField::Last), last}});
        return std::string(record.Get(EField::Close)) + " " + std::string(record.Get(EField::Change));
    };
    EXPECT_EQ(day("1/30/2024", "10.0"), " ");
    EXPECT_EQ(day("1/30/2024", "10.5"), " ");
    EXPECT_EQ(day("1/31/2024", "11.0"), "10.5 0.5");
    EXPECT_EQ(day("1/29/2024", "9.0"), "10.5 -1.5") << "an older day closes nothing";
    Merge(record, {{Slot(EField::Close), "10"}});
    EXPECT_EQ(day("2/1/2024", "12"), "10 2") << "given";
}

} // namespace
} // namespace vx::sim
