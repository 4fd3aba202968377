// SPDX-License-Identifier: MIT
#include "base/CsvReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vx {
namespace {

using testing::ElementsAre;

// The records of a text that comes in pieces: "LINE|field|field", "!" in front after a bad quote, "~" when too long,
// "…" behind when no line end stood there.
std::vector<std::string> Records(std::string_view text, size_t piece, char separator = CCsvReader::kFindSeparator) {
    CCsvReader reader(separator);
    std::vector<std::string> out;
    for (size_t at = 0; at <= text.size(); at += piece) {
        reader.Append(text.substr(at, piece));
        if (at + piece > text.size()) reader.End();
        while (reader.Next()) {
            std::string& record = out.emplace_back();
            record = (reader.HasBadQuote() ? "!" : "") + std::string(reader.IsTooLong() ? "~" : "");
            record += std::to_string(reader.Line());
            for (size_t i = 0; i < reader.FieldCount(); ++i) record += "|" + std::string(reader.Field(i));
            if (reader.IsUnended()) record += "…";
        }
    }
    EXPECT_EQ(reader.Taken(), text.size());
    return out;
}

// The same, whatever the pieces are.
std::vector<std::string> Records(std::string_view text) {
    const auto whole = Records(text, text.size() + 1);
    for (const size_t piece : {size_t{1}, size_t{2}, size_t{3}, size_t{7}})
        EXPECT_EQ(Records(text, piece), whole) << piece;
    return whole;
}

TEST(CCsvReader, FieldsAndLineEndsOfEveryKind) {
    EXPECT_THAT(Records("a,b\r\nc,d\ne,f\rg,"), ElementsAre("1|a|b", "2|c|d", "3|e|f", "4|g|…"));
    EXPECT_THAT(Records("\xEF\xBB\xBF"
                        "a,b\n\n \n,\n"),
                ElementsAre("1|a|b", "2|", "3| ", "4||"));
    EXPECT_THAT(Records("a\r\r\nb\n"), ElementsAre("1|a", "2|", "3|b"));
    EXPECT_THAT(Records(""), ElementsAre());
    EXPECT_THAT(Records("\xEF\xBB"), ElementsAre("1|\xEF\xBB…"));
}

TEST(CCsvReader, QuotedFieldsHoldAnything) {
    EXPECT_THAT(Records("a,\"b,\"\"c\"\"\r\nd\re\",\"\"\nf, \"g\" ,h\n"),
                ElementsAre("1|a|b,\"c\"\r\nd\re|", "4|f|g|h"));
    EXPECT_THAT(Records("\"a\""), ElementsAre("1|a…"));
    EXPECT_THAT(Records("\"\"\"\",\"x\"\"\"\r\n"), ElementsAre("1|\"|x\""));
}

TEST(CCsvReader, AQuoteThatOpensNothingIsACharacter) {
    EXPECT_THAT(Records("a,\"b,c\nd,e\n"), ElementsAre("!1|a|\"b|c", "2|d|e"));
    EXPECT_THAT(Records("\"a\"b,c\nd\"e\n"), ElementsAre("!1|\"a\"b|c", "2|d\"e"));
    EXPECT_THAT(Records("\"a\nb\"c\nd\n"), ElementsAre("!1|\"a", "2|b\"c", "3|d")) << "the next line is not lost";
    std::string open = "x,\"y\n";
    for (size_t i = 0; i < CCsvReader::kMostQuotedLines; ++i) open += "z,1\n";
    CCsvReader stream;
    stream.Append(open);
    ASSERT_TRUE(stream.Next()) << "it does not wait for the end of the stream";
    EXPECT_TRUE(stream.HasBadQuote());
}

TEST(CCsvReader, HugeRecordsAreCutAndTakeNoRoom) {
    const std::string most(CCsvReader::kMaxRecord, 'x');
    EXPECT_THAT(Records(most + "\ny\n", 100'000), ElementsAre("1|" + most, "2|y"));
    EXPECT_THAT(Records(most + "xx,z\ny\n", 100'000), ElementsAre("~1|" + most, "2|y"));
    EXPECT_THAT(Records("\"" + most + "\"\ny\n", 100'000), ElementsAre("!~1|\"" + most.substr(1), "2|y"));
}

TEST(CCsvReader, SeparatorIsTheOneThatStandsThereMostOften) {
    EXPECT_EQ(CsvSeparatorOf("a,b;c,d"), ',');
    EXPECT_EQ(CsvSeparatorOf("a;\"b,c,d\";e"), ';');
    EXPECT_EQ(CsvSeparatorOf("a\tb, c\td"), '\t');
    EXPECT_EQ(CsvSeparatorOf("a"), ',');
    EXPECT_THAT(Records("\n a;b\n1,5;2\n"), ElementsAre("1|", "2| a|b", "3|1,5|2"));
    EXPECT_THAT(Records("a;b\n", 1, ','), ElementsAre("1|a;b"));
}

} // namespace
} // namespace vx
