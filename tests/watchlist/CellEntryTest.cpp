// SPDX-License-Identifier: MIT
#include "watchlist/edit/CellEntry.h"
#include "watchlist/DocFixture.h"

using namespace vx;
using namespace vx::test;

namespace {

constexpr int kRow = 2;

/// Where the text is typed. The columns are "Symbol;Last;", but for SecondIsSymbol: "Last;Symbol;".
enum class EColumn { Symbol, Other, SecondIsSymbol };

struct STyping {
    const char* before; ///< What stands in the row, as CDocFixture::Row says it.
    EColumn column;
    const char* typed;
    const char* after;
    const char* message; ///< Empty for none.
    const char* sent;    ///< To the feed, line ends as blanks.
    bool asks;           ///< News counts are asked for.
};

constexpr const char* kSymbolCell = "This cell is reserved for Symbol Data.";
constexpr const char* kNoAnnotation = "Annotations may not be placed in Symbol Rows.";
constexpr const char* kAnnotationRow = "This row is reserved for Annotation Data.";

class CCellEntry : public CDocFixture {
protected:
    CCellEntry() {
        FeedIsReady();
        UseColumns("Symbol;Last;");
    }
    void Prepare(const std::string& row) {
        doc.Update()->EmptyRow(kRow);
        row.starts_with('#') ? doc.Update()->SetAnnotation(kRow, row) : doc.Update()->EnterSymbol(kRow, row);
        feed.Take();
        counts.Take();
        doc.MarkSaved();
    }
    void Type(std::string_view text, int row = kRow, int column = 1) { EnterCellText(doc, row, column, "old", text); }
    std::string Sent() {
        std::string out = fmt::format("{}", fmt::join(feed.Take(), ""));
        std::ranges::replace(out, '\n', ' ');
        return out;
    }
};

const STyping kTypings[] = {
    // An empty row.
    {"", EColumn::Symbol, "ibm", "IBM", "", "wIBM ", true},
    {"", EColumn::Symbol, "  MsFt ", "MsFt", "", "wMsFt ", true},
    {"", EColumn::Symbol, "es #f", "ES #F", "", "wES #F ", true},
    {"", EColumn::Symbol, "\xE9t\xE9", "\xE9T\xE9", "", "w\xE9T\xE9 ", true},
    {"", EColumn::Symbol, "ibm--nys", "IBM--NYS", "", "wIBM S,REGON,IBM ", false},
    {"", EColumn::Symbol, "A,B", "ERR_COMMA_SYMBOL", "", "wERR_COMMA_SYMBOL ", true},
    {"", EColumn::Symbol, " Buy at open ", "#Buy at open", "", "", false},
    {"", EColumn::Symbol, "#Tech", "#Tech", "", "", false},
    {"", EColumn::Symbol, "   ", "", "", "", false},
    {"", EColumn::Other, "=ibm", "#=ibm", "", "", false},
    {"", EColumn::Other, "a,b", "#ERR_COMMA_SYMBOL", "", "", false},
    // A symbol row.
    {"IBM", EColumn::Symbol, "msft", "MSFT", "", "rIBM wMSFT ", true},
    {"IBM", EColumn::Symbol, "ibm", "IBM", "", "rIBM wIBM ", true},
    {"IBM", EColumn::Symbol, "1,2", "ERR_COMMA_SYMBOL", "", "rIBM wERR_COMMA_SYMBOL ", true},
    {"IBM", EColumn::Symbol, "#Tech", "IBM", "", "", false},
    {"IBM", EColumn::Symbol, " two words more ", "IBM showing two words more", "", "", false},
    {"IBM", EColumn::Symbol, "", "", "", "rIBM ", false},
    {"IBM", EColumn::Other, "", "IBM", "", "", false},
    {"IBM", EColumn::Other, "hello", "IBM", kNoAnnotation, "", false},
    {"IBM", EColumn::Other, "=MSFT", "IBM", kSymbolCell, "", false},
    {"IBM", EColumn::SecondIsSymbol, "msft", "MSFT", "", "rIBM wMSFT ", true},
    // An annotation row.
    {"#Tech", EColumn::Symbol, "ibm", "#ibm", "", "", false},
    {"#Tech", EColumn::Other, " x ", "# x ", "", "", false},
    {"#Tech", EColumn::Symbol, "=ibm", "IBM", "", "wIBM ", true},
    {"#Tech", EColumn::Symbol, "=buy at open", "#buy at open", "", "", false},
    {"#Tech", EColumn::SecondIsSymbol, "=ibm", "#Tech", kAnnotationRow, "", false},
    {"#Tech", EColumn::Other, "", "", "", "", false},
    // What cannot stand in a cell.
    {"", EColumn::Symbol, "IB\nM\t", "IB M", "", "wIB M ", true},
};

} // namespace

TEST_F(CCellEntry, TheKindOfTheRowDecidesWhatBecomesOfATypedText) {
    for (const STyping& each : kTypings) {
        UseColumns(each.column == EColumn::SecondIsSymbol ? "Last;Symbol;" : "Symbol;Last;");
        Prepare(each.before);
        Type(each.typed, kRow, each.column == EColumn::Symbol ? 1 : 2);
        const std::string what = std::string(each.before) + " + " + each.typed;
        EXPECT_EQ(Row(kRow), each.after) << what;
        EXPECT_EQ(boxes.shown.size(), *each.message ? 1u : 0u) << what;
        EXPECT_TRUE(boxes.shown.empty() || boxes.shown[0].caption.empty()) << what;
        EXPECT_EQ(TakeMessage(), each.message) << what;
        EXPECT_EQ(Sent(), each.sent) << what;
        EXPECT_EQ(counts.Take().size(), each.asks ? 1u : 0u) << what;
        const bool changed = std::string_view(each.before) != Row(kRow) && doc.ShownText(kRow).empty();
        EXPECT_TRUE(doc.IsModified() == changed || (!changed && !*each.message)) << what;
    }
}

TEST_F(CCellEntry, ClearingACellTakesItsFormatAndItsRowsNoteWhereNothingElseStands) {
    const SCellFormat bold{.bold = true};
    doc.Update()->EnterSymbol(1, "IBM");
    doc.Update()->SetAnnotation(2, "Tech");
    for (const int row : {1, 2, 3}) {
        SetNote(row, "note");
        SetFormat(row, 2, bold);
        Type("", row, 2);
        EXPECT_EQ(doc.Formats().Find(row, 2), nullptr) << row;
    }
    EXPECT_EQ(Rows(), "IBM");
    EXPECT_FALSE(doc.Notes().Has(1));
    EXPECT_TRUE(doc.Notes().Has(2)) << "an annotation row lost its note instead of its annotation";
    EXPECT_FALSE(doc.Notes().Has(3));
    SetFormat(1, 2, bold);
    Type("refused", 1, 2);
    EXPECT_NE(doc.Formats().Find(1, 2), nullptr) << "a refused text changed the cell";
}

TEST_F(CCellEntry, WhatWasTypedGoesWithItsRejectedRowAndComesBackWithIt) {
    Type(" IBM,MSFT ", 1);
    OverwriteRow(doc, *doc.Update(), 2, "c, d");
    OverwriteRow(doc, *doc.Update(), 3, "nope");
    for (const char* symbol : {kCommaSymbol, "NOPE"}) doc.SymbolNotFound(symbol);
    doc.InsertRows(1, 1);
    EXPECT_EQ(doc.TypedText(3), "c, d");
    EXPECT_EQ(doc.TypedText(4), "NOPE") << "the rejected symbol, where nothing else is known";
    doc.DeleteRows(2, 1);
    doc.Undo().Undo();
    EXPECT_EQ(doc.TypedText(2), "IBM,MSFT");
    doc.MarkSaved();
    CorrectRejected(doc, 2, "  ");
    EXPECT_TRUE(doc.IsRejected(2));
    EXPECT_FALSE(doc.IsModified());
    CorrectRejected(doc, 2, "#a,b");
    EXPECT_EQ(Row(2), kCommaSymbol) << "the comma rule comes first, as in an empty row";
    EXPECT_EQ(doc.TypedText(2), "#a,b");
    CorrectRejected(doc, 3, "");
    Type("=ibm", 4);
    EXPECT_EQ(Rows(), "|ERR_COMMA_SYMBOL||IBM");
    EXPECT_EQ(doc.TypedText(3), "");
    Open("Columns=Symbol:1000;\r\nSymbols=ERR_COMMA_SYMBOL:1,;\r\n");
    doc.SymbolNotFound(kCommaSymbol);
    EXPECT_EQ(doc.TypedText(1), "") << "nobody knows any more";
}

TEST_F(CCellEntry, TheCurrentSymbolAsksBeforeItReplacesARow) {
    AddCurrentSymbol(doc, settings, 1);
    EXPECT_EQ(Rows(), "") << "none was chosen";
    settings.WriteText(kCurrentSymbol, "MSFT");
    AddCurrentSymbol(doc, settings, 1);
    EXPECT_THAT(boxes.shown, IsEmpty());
    EXPECT_THAT(feed.Take(), ElementsAre("wMSFT\n"));
    EXPECT_TRUE(doc.IsModified());
    doc.Update()->SetAnnotation(2, "Tech");
    boxes.answer = EBoxAnswer::No;
    AddCurrentSymbol(doc, settings, 2);
    EXPECT_EQ(Rows(), "MSFT|#Tech");
    boxes.answer = EBoxAnswer::Yes;
    AddCurrentSymbol(doc, settings, 2);
    EXPECT_EQ(Rows(), "MSFT|MSFT");
    EXPECT_EQ(TakeMessage(), "Would you like to replace the contents of the row with symbol information for \"MSFT\"?");
}
