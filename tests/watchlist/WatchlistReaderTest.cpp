// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/WatchlistReader.h"
#include "watchlist/FileFixture.h"
#include "watchlist/fileformat/WatchlistLegacy.h"

using namespace vx;
using namespace vx::test;

namespace {

using CWatchlistReaderTest = CFileFixture;
using Renamed = std::pair<const char*, const char*>;

SWatchlistContent ReadIn(std::string_view text, size_t blockBytes) {
    CWatchlistReader reader;
    for (size_t at = 0; at < text.size(); at += blockBytes) reader.TakeBlock(text.substr(at, blockBytes));
    reader.Finish();
    return reader.Content();
}

std::string Rows(const SWatchlistContent& content) {
    std::string out;
    for (size_t row = 0; row < content.rows.size(); ++row)
        if (!content.rows[row].text.empty()) out += fmt::format("{}={} ", row, content.rows[row].text);
    return out;
}

} // namespace

TEST_F(CWatchlistReaderTest, BlocksOfEverySizeGiveTheSame) {
    const std::string text =
        "TrailingRows=7\r\nSymbols=IBM:1,;\rX:2,;\nY:3,;\r\n\r\r\nAnnotations=4:#a\r;5:#b;\r\nSymbols=Z:9,;\r";
    for (size_t size = 1; size <= text.size(); ++size) {
        const SWatchlistContent content = ReadIn(text, size);
        ASSERT_EQ(::Rows(content), "1=IBM 4=#a\r 5=#b ") << size;
        ASSERT_EQ(content.options.trailingRows, 7) << size;
    }
}

TEST_F(CWatchlistReaderTest, ALineThatBeginsWithABracketHandsTheWholeTextOverToTheOlderLayout) {
    const std::string older = "[x]\nSymbols=IBM:1\nSymbolNumbers=2\n",
                      mixed =
                          "Symbols=MSFT:1,;\r\nNo\nte\r\n[x]\r\nSymbols=IBM,GE\r\nSymbolNumbers=2,3\r\nNotes=1:n;\r\n";
    for (const size_t size : {1, 7, 100}) {
        EXPECT_EQ(::Rows(ReadIn(older, size)), "") << "no CR LF anywhere";
        EXPECT_EQ(::Rows(ReadIn(older + "A=\r\n", size)), "2=IBM:1 ");
        EXPECT_EQ(::Rows(ReadIn(mixed, size)), "1=MSFT 2=IBM 3=GE ");
        EXPECT_TRUE(ReadIn(mixed, size).notes.empty());
        EXPECT_EQ(::Rows(ReadIn("Symbols=MSFT:1,;\r\n[", size)), "1=MSFT ");
    }
    CWatchlistReader reader;
    reader.TakeBlock(mixed);
    reader.Finish();
    EXPECT_EQ(reader.HandoverLine(), 4u);
    EXPECT_THAT(reader.Report().Sentences(), testing::ElementsAre("line 2: there is no \"=\" in it: \"No\\nte\"",
                                                                  "line 7: the key is unknown: \"Notes\""));
}

TEST_F(CWatchlistReaderTest, MillionsOfEntriesLinesAndBytesAreReadInProportion) {
    std::string symbols = "Symbols=", columns = "Columns=";
    for (int i = 0; i < 1'000'000; ++i) {
        symbols += fmt::format("S{}:100000,{};", i, i % 2 ? "1," : "");
        columns += fmt::format("C{}:100;", i);
    }
    const std::string text = fmt::format("{}\r\n{}\r\n{}=\r\nAnnotations=2:#{};\r\n", symbols, columns,
                                         std::string(2'000'000, '\n'), std::string(50'000'000, 'x'));
    const SWatchlistContent content = ReadIn(text, CWatchlistReader::kBlockBytes);
    ASSERT_EQ(content.rows.size(), 100'001u);
    EXPECT_EQ(content.rows[1].text + content.rows[100'000].text, "S999999S999999");
    EXPECT_EQ(content.rows[2].text.size(), 50'000'001u);
    EXPECT_EQ(content.columns.size(), static_cast<size_t>(SWatchlistContent::kMostColumns));
}

TEST(WatchlistLegacy, EveryColumnIsRenamedInOrder) {
    for (const auto& [legacy, modern] : {
             Renamed{"Last,Symbol", "Symbol;Last;Symbol"},
             {"Last,Symbol,Bid", "Last;Symbol;Bid"},
             {"Symbol,Time,Time,Last", "Symbol;T Time;Time;Last"},
             {"Ask Volume,Symbol,Ask Volume,Bid Volume", "Ask Volume;Symbol;A Size;Bid Volume"},
             {"Cur Assets,Cur EPS,Cur Liab,Debt,LT Debt", "Symbol;Assets;EPS;Liabilities;LT Debt;LT LT Debt"},
             {"Split #1,Split #2", "Symbol;Split1 Date;Split1 Ratio;Split2 Date;Split2 Ratio"},
         })
        EXPECT_EQ(ModernColumnNames(legacy), modern);
}
