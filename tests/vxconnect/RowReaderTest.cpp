#include "vxconnect/RowReader.h"
#include "vxconnect/DataRecord.h"
#include "vxconnect/LineBuffer.h"
#include "vxconnect/SendQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fmt/format.h>

namespace vx::sim {
namespace {

// What a file of these lines says: a row as "SYMBOL slot=text ...", an error as "line: text".
std::vector<std::string> Read(const std::vector<std::string>& lines) {
    CRowReader reader;
    SRow row;
    std::vector<std::string> out;
    for (size_t i = 0; i < lines.size(); ++i) {
        const auto result = reader.Read(lines[i], row);
        if (result == CRowReader::EResult::Error) out.push_back(fmt::format("{}: {}", i + 1, reader.Error()));
        if (result != CRowReader::EResult::Row) continue;
        std::string& text = out.emplace_back(row.symbol);
        for (const SRowValue& value : row.values) text += fmt::format(" {}={}", value.slot, value.text);
    }
    return out;
}

std::string Value(const std::string& field, const std::string& text) {
    const auto out = Read({"Symbol;" + field, "A;" + text});
    return out.empty() ? "(nothing)" : out[0].substr(0, 2) == "A " ? out[0].substr(out[0].find('=') + 1) : out[0];
}

TEST(RowReader, NamesOfFieldsAndColumnsMeanTheSame) {
    EXPECT_THAT(Read({"symbol, LAST ,Total Volume,name", "IBM,1.50,100,Big"}),
                testing::ElementsAre("IBM 63=1.50 4=100 71=Big"));
    EXPECT_THAT(Read({"Volume;LQT Price;Symbol", "100;1.50;IBM", "", "7;;KO"}),
                testing::ElementsAre("IBM 4=100 63=1.50", "KO 4=7"));
    EXPECT_THAT(Read({R"({"Symbol":"IBM","last":1.5,"% chg":-2,"Total Volume":100,"Name":null,"Bid":"1.40"})",
                      R"({"SYMBOL":"KO"})"}),
                testing::ElementsAre(testing::AllOf(testing::StartsWith("IBM "), testing::HasSubstr("3=-0.02"),
                                                    testing::HasSubstr("63=1.5"), testing::HasSubstr("7=1.40")),
                                     "KO"));
}

TEST(RowReader, ValuesAreWrittenAsTheWireHasThem) {
    EXPECT_EQ(Value("Percent Change", "0.0250"), "0.0250");
    EXPECT_EQ(Value("% Chg", "2.5"), "0.025");
    EXPECT_EQ(Value("% Chg", "2.5 %"), "0.025");
    EXPECT_EQ(Value("Last", "1e2"), "100");
    EXPECT_EQ(Value("Last", "-1e-7"), "-0.0000001");
    EXPECT_EQ(Value("Volume", "1e2"), "100");
    EXPECT_EQ(Value("Volume", "100.0"), "100");
    EXPECT_EQ(Value("Volume", "+4294967295"), "4294967295");
    EXPECT_EQ(Value("T Time", "9:30"), "09:30:00");
    EXPECT_EQ(Value("T Time", "09:30:15.250"), "09:30:15");
    for (const char* date : {"1/31/2024", "01/31/2024", "2024-01-31", "20240131"})
        EXPECT_EQ(Value("Trade Date", date), "1/31/2024");
    EXPECT_EQ(Value("Ex Div Date", "2/29"), "2/29");
    EXPECT_EQ(Value("Split1 Ratio", "0.50 2021-06-07"), "0.50 6/7/2021");
    EXPECT_EQ(Value("Tick Trend", "+"), "173");
    EXPECT_EQ(Value("Name", "Acme, Inc."), "Acme Inc.");
    EXPECT_EQ(Value("Name", "Caf\xC3\xA9 \xE2\x80\x99"), "Caf\xE9 \x92") << "UTF-8";
    EXPECT_EQ(Value("Name", "Caf\xE9"), "Caf\xE9") << "Windows-1252";
    EXPECT_THAT(Read({"Symbol,Name", R"(A,"He said ""Hi""")"}), testing::ElementsAre("A 71=He said \"Hi\""));
}

TEST(RowReader, WrongValuesAreNamedWithTheirField) {
    struct SCase {
        const char* field;
        std::vector<std::string> texts;
    };
    for (const SCase& wrong :
         std::vector<SCase>{{"Last", {"abc", "1,5", "nan", "0x10", "$5", "1e16", "-1e300", "1e999", "1e-16"}},
                            {"Volume", {"4294967296", "1.5", "1e10", "-2147483649"}},
                            {"T Time", {"24:00:00", "9"}},
                            {"Trade Date", {"2/30/2024", "1/31/24"}},
                            {"Ex Div Date", {"2/30"}},
                            {"Split1 Ratio", {"0.5", "1e99 6/7/2021"}},
                            {"Exchange ID", {"xyz"}},
                            {"Type", {"QQ"}},
                            {"Tick Trend", {"174"}},
                            {"Name", {std::string("a\0b", 3), std::string(256, 'x')}}})
        for (const std::string& text : wrong.texts)
            EXPECT_THAT(Value(wrong.field, text), testing::StartsWith(fmt::format("2: field \"{}\": \"", wrong.field)))
                << text;
    EXPECT_THAT(Value("Last", "1e16"), testing::HasSubstr("\"1e16\" is out of range"));
}

TEST(RowReader, WrongLinesAreToldAndTheNextOnesRead) {
    EXPECT_THAT(Read({"Symbol,Last", "A", "B,1,2", ",5", "\"C", "\"D\"x,1", "A--X,1", "E,5"}),
                testing::ElementsAre("2: 1 values where the header names 2", "3: 3 values where the header names 2",
                                     "4: field \"Symbol\" is empty", "5: the quote of value 1 is not closed",
                                     "6: value 1 goes on behind its quote",
                                     testing::StartsWith("7: field \"Symbol\": \"A--X\" is not"), "E 63=5"));
}

TEST(RowReader, JsonIsTakenAsItIsWritten) {
    EXPECT_THAT(Read({R"( {"last" : 1.50,"symbol":"A", "bid":1e-7,"Bid Size":1E2 ,"ask": null,"Name":"a\"}{\u00e9"})",
                      "{\"symbol\":\"B\",\"name\":\"Caf\xE9\"}", R"({"symbol":"C","bid size":true,"last":-0.5})"}),
                testing::ElementsAre("A 63=1.50 7=0.0000001 9=100 71=a\"}{\xE9", "B 71=Caf\xE9", "C 9=1 63=-0.5"));
    EXPECT_THAT(Read({R"({"symbol":"A","last":{}})", R"({"symbol":"A","foo":1})", R"({"last":1})", "{", "[1]",
                      R"({"symbol":"A","last":1,"LQT Price":2})", R"({"symbol":"A","last":1,"last":1})",
                      R"({"symbol":"A","bid":[1,{"last":"]"}],"last":1})", R"({"symbol":"A","last":1e300})",
                      R"({"symbol":"A","symbol":"B"})", R"({"symbol":"A","last":3})"}),
                testing::ElementsAre("1: field \"Last\" is neither text nor number", "2: \"foo\" is no field name",
                                     "3: field \"Symbol\" is empty", testing::StartsWith("4: no JSON object: "),
                                     "5: no JSON object", "6: \"Last\" and \"LQT Price\" are the same field",
                                     "7: field \"Last\" is given twice", "8: field \"Bid\" is neither text nor number",
                                     testing::StartsWith("9: field \"Last\": \"1e300\" is out of range"),
                                     "10: field \"Symbol\" is given twice", "A 63=3"));
}

TEST(RowReader, HeaderMustNameKnownFieldsOnceAndTheSymbol) {
    EXPECT_THAT(Read({"Symbol,Foo"}), testing::ElementsAre("1: \"Foo\" is no field name"));
    EXPECT_THAT(Read({"Symbol,Last,lqt price"}),
                testing::ElementsAre("1: \"Last\" and \"LQT Price\" are the same field"));
    EXPECT_THAT(Read({"Last,Bid"}), testing::ElementsAre("1: no column \"Symbol\""));
    EXPECT_THAT(Read({"Symbol,Last Market Center Name"}), testing::ElementsAre(testing::HasSubstr("no field name")));
    EXPECT_THAT(Read({"[{\"symbol\":1}]"}), testing::ElementsAre(testing::HasSubstr("not a list")));
    EXPECT_THAT(Read({"\xFF\xFES\0y"}), testing::ElementsAre(testing::HasSubstr("UTF-16")));
    EXPECT_THAT(Read({"garbage", "Symbol,Last", "A,1"}), testing::ElementsAre(testing::StartsWith("1: "), "A 63=1"));
}

TEST(LineBuffer, CutsLinesWhateverThePieces) {
    const std::string text = "\xEF\xBB\xBFone\r\n\ntwo\nthr\ree";
    for (size_t piece : {1u, 2u, 3u, 100u}) {
        CLineBuffer buffer;
        std::vector<std::string> lines;
        for (size_t at = 0; at < text.size() || at == text.size(); at += piece) {
            if (at < text.size()) buffer.Append(std::string_view(text).substr(at, piece));
            if (at + piece >= text.size()) buffer.End();
            while (const auto line = buffer.Next())
                lines.push_back(std::to_string(line->number) + std::string(line->text));
            if (at + piece >= text.size()) break;
        }
        EXPECT_THAT(lines, testing::ElementsAre("1one", "2", "3two", "4thr\ree")) << piece;
    }
}

TEST(LineBuffer, HugeLineIsToldOnceAndTakesNoRoom) {
    CLineBuffer buffer;
    const std::string block(64 * 1024, 'x');
    int tooLong = 0;
    for (int i = 0; i < 1'600; ++i) { // 100 MB.
        buffer.Append(block);
        while (const auto line = buffer.Next()) tooLong += line->tooLong;
    }
    buffer.Append("\nnext\n");
    const auto line = buffer.Next();
    ASSERT_TRUE(line);
    EXPECT_EQ(line->text, "next");
    EXPECT_EQ(line->number, 2u);
    EXPECT_EQ(tooLong, 1);
}

SUpdate Merge(CDataRecord& record, std::vector<SRowValue> values, bool repeated = false) {
    return record.Merge({record.Symbol(), std::move(values)}, repeated);
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
    EXPECT_EQ(update.changed.Count(), 7); // Last, ask, change, its percentage, spread, tick, contents.
    EXPECT_EQ(record.Get(EField::MessageContents), "Ca");
    Merge(record, {{Slot(EField::Change), "9"}, {Slot(EField::Last), "10.5"}});
    EXPECT_EQ(record.Get(EField::Change), "9");
    EXPECT_TRUE(Merge(record, {{Slot(EField::Last), "10.5"}}).changed.Empty()) << "nothing new";
    EXPECT_TRUE(Merge(record, {{Slot(EField::Last), "10.5"}, {Slot(EField::MessageContents), "C"}})
                    .changed.Has(EField::MessageContents))
        << "another trade at the same price";
}

TEST(DataRecord, RecordedFieldsStayAsTheyAre) {
    CDataRecord record("A");
    Merge(record, {{Slot(EField::Last), "10.5"}, {Slot(EField::MessageContents), "Cx"}}, true);
    EXPECT_EQ(record.Get(EField::Tick), "");
    const auto line = [&](const CFieldMask& fields, uint32_t contents) {
        CSendQueue queue;
        record.AppendQuote(queue, 'Q', fields, contents, CFieldSelection("Symbol,Last,Message Contents"));
        return std::string(queue.Waiting());
    };
    EXPECT_EQ(line(record.Present(), record.Contents()), "Q,A,10.5,Cx,\r\n");
    EXPECT_EQ(line(record.Present(), kContentsTrade | kContentsBid), "Q,A,10.5,Cb,\r\n") << "folded";
    const SUpdate update = Merge(record, {{Slot(EField::Last), "10.5"}}, true);
    EXPECT_EQ(line(update.changed, record.Contents()), "Q,A,10.5,,\r\n");
}

} // namespace
} // namespace vx::sim
