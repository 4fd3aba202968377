// SPDX-License-Identifier: MIT
#include "watchlist/edit/ImportText.h"
#include "watchlist/DocFixture.h"
#include "watchlist/exchange/ExportText.h"

using namespace vx;
using namespace vx::test;

namespace {

class CImportText : public CDocFixture {
protected:
    CImportText() {
        FeedIsReady();
        UseColumns("Symbol;Last;");
    }
    /// "A B | IBM | A | 3:not this": to add, there already, twice in the text, not understood.
    std::string Read(std::string_view text) {
        const SImportPreview preview = ReadImport(doc, text);
        std::string out = fmt::format("{} | {} | {} |", fmt::join(preview.toAdd, " "),
                                      fmt::join(preview.alreadyThere, " "), fmt::join(preview.duplicates, " "));
        for (const auto& other : preview.notUnderstood) out += fmt::format(" {}:{}", other.line, other.text);
        return out;
    }
    SImportResult Import(std::string_view text, int row) { return ApplyImport(doc, ReadImport(doc, text), row); }
    std::string Write(std::string_view name, std::string_view bytes) {
        WriteFile(folder / name, bytes);
        return folder / name;
    }
};

} // namespace

TEST_F(CImportText, FindsSymbolsInListsAndTables) {
    doc.Update()->EnterSymbol(1, "IBM");
    for (const auto& [text, read] : {
             std::pair{"ibm\nmsft\r\nAAPL\rge", "MSFT AAPL GE | IBM |  |"},
             {"a, b;c\td e\n\n;;a", "A B C D E |  | A |"},
             {"\"ge\",'f'\nBRK.B 600000 @ES# 0700 ^VIX", "GE F BRK.B 600000 @ES# 0700 ^VIX |  |  |"},
             {"t 20.15 -3.2\n---\n# my cars, old\nf", "T F |  |  | 1:20.15 1:-3.2 2:--- 3:# my cars, old"},
             {"User: me\n----\nt 1.5\nWatchList of cars\nf", "T F |  |  | 1:User: me 3:1.5 4:WatchList of cars"},
             {"Name,Symbol,Last\n\"Ford, Motor\",f,1\n\"AT&T\r\nInc\",\" t\" ,2\r\nx,buy at open\ny\nz,\"F\"\n",
              "F T |  | F | 5:buy at open"},
             {"\n SYMBOL ;Last\nBRK A;1\n;2\n#x;3", "BRK A |  |  | 5:#x"},
             {"Symbol\tLast\n=VxLink|'ibm'!'Symbol'\t=VxLink|'ibm'!'Last'\n\"open\tq\n\"F\"x\t1\n",
              " | IBM |  | 3:\"open 4:\"F\"x"},
             {"", " |  |  |"},
         })
        EXPECT_EQ(Read(text), read) << text;
    EnterAll({"BRK A", "GE"});
    doc.Update()->SetAnnotation(4, "not a symbol");
    for (const int choice : {0, 1, 2, 3}) { // What was exported is imported again.
        const std::string text = ExportText(doc, {choice % 2 != 0, choice > 1, true, false}, true);
        EXPECT_EQ(Read(text), " | IBM BRK A GE |  | 5:not a symbol") << text;
    }
}

TEST_F(CImportText, FilesOfEveryEncodingReadTheSame) {
    const std::string wide("a\0\r\0\n\0\xE9\0", 8), bigWide("\0a\0\r\0\n\0\xE9", 8);
    for (const std::string& bytes :
         {std::string("a\r\n\xE9"), std::string("a\r\n\xC3\xA9"), "\xEF\xBB\xBF" + std::string("a\r\n\xC3\xA9"),
          "\xFF\xFE" + wide, "\xFE\xFF" + bigWide, wide, bigWide, "\xFF\xFE" + wide + "x"})
        EXPECT_EQ(ReadImportFile(Write("list.txt", bytes)).text, "a\r\n\xE9") << testing::PrintToString(bytes);
    const std::string missing = folder / "none.txt", large = Write("large.txt", "");
    EXPECT_THAT(ReadImportFile(missing).error, testing::HasSubstr("The file \"" + missing + "\" could not be read: "));
    ASSERT_EQ(truncate(large.c_str(), kMostImportBytes + 1), 0);
    EXPECT_EQ(ReadImportFile(large).error, "The file \"" + large + "\" is larger than 64 MB and was not read.");
}

TEST_F(CImportText, ALongTextIsReadUpToWhatFitsAndCanBeCancelledWithoutALineEnd) {
    std::string text;
    for (int i = 0; i <= CRowTable::kMaxRow; ++i) text += fmt::format("S{}{}", i, i % 2 == 0 ? '\n' : ',');
    const SImportPreview whole = ReadImport(doc, text + "S1\nS2\n");
    EXPECT_EQ(whole.toAdd.size(), static_cast<size_t>(CRowTable::kMaxRow));
    EXPECT_EQ(whole.unreadFrom, static_cast<size_t>(CRowTable::kMaxRow / 2 + 1));
    EXPECT_EQ(whole.duplicateCount, 0U);
    std::replace(text.begin(), text.end(), '\n', ' ');
    EXPECT_TRUE(ReadImport(doc, text, [](size_t done, size_t total) { return done < total / 2; }).cancelled);
}

TEST_F(CImportText, AddsWithoutOverwritingAndTakesItBackWhole) {
    EnterAll({"IBM", "GE"});
    doc.Undo().Clear();
    doc.MarkSaved();
    SImportResult result = Import("t f ibm", 2);
    EXPECT_EQ(Rows(), "IBM|T|F|GE");
    EXPECT_EQ(std::pair(result.firstRow, result.lastRow), std::pair(2, 3));
    EXPECT_EQ(doc.Undo().UndoName(), "import 2 symbols");
    doc.Undo().Undo();
    EXPECT_EQ(Rows(), "IBM|GE");
    EXPECT_EQ(Import("ibm ge", 1).firstRow, 0);
    std::string many;
    for (int i = 0; i < 3000; ++i) many += fmt::format("S{} ", i);
    const auto cancel = [](size_t done, size_t) { return done < 1000; };
    EXPECT_EQ(ApplyImport(doc, ReadImport(doc, many), 1, cancel).outcome, EFillOutcome::Cancelled);
    EXPECT_EQ(Rows(), "IBM|GE");
    EXPECT_EQ(store.Size(), 2U);
    EXPECT_FALSE(doc.IsModified());
    doc.Update()->EnterSymbol(CRowTable::kMaxRow - 1, "LAST");
    result = Import("t f m", 2);
    EXPECT_EQ(result.message, "2 symbols were left out: a watchlist has at most 100000 rows.");
    EXPECT_EQ(Row(2) + Row(CRowTable::kMaxRow), "TLAST");
    for (int row = 1; row < CRowTable::kMaxRow; ++row) doc.Update()->SetAnnotation(row, "x");
    EXPECT_EQ(ReadImport(doc, "v w x").toAdd.size(), 0U) << "the preview promises no more than there is room for";
}
