// SPDX-License-Identifier: MIT
#include "watchlist/exchange/FindText.h"
#include "watchlist/DocFixture.h"

using namespace vx;
using namespace vx::test;

namespace {

/// Columns 1 Symbol, 2 Last, 3 Bid (hidden), 4 Notes; rows IBM, an annotation, Ibm, an empty row, AIBMX.
class CFindText : public CDocFixture {
protected:
    CFindText() {
        FeedIsReady();
        UseColumns("Symbol;Last;Bid;Notes;");
        SetWidth(3, 0);
        doc.Update()->EnterSymbol(1, "IBM");
        doc.Update()->SetAnnotation(2, "Caf\xE9 ibm");
        doc.Update()->EnterSymbol(3, "Ibm");
        doc.Update()->EnterSymbol(5, "AIBMX");
        SetNote(3, "first\r\nthe ibm line");
        SetNote(6, "below IBM");
        FeedSets("AIBMX", "Last", "12.5");
        FeedSets("AIBMX", "Bid", "77.25");
    }
    static std::string Text(const SFoundCell& found) {
        return fmt::format("{},{}{}{}", found.row, found.column, found.inNote ? " note" : "",
                           found.wrapped ? " wrapped" : "");
    }
    /// Every place from the top or the end on, until the search wraps around.
    std::string All(decltype(&FindNext) find, std::string_view text, const SFindOptions& options) {
        std::string out;
        SFoundCell at;
        for (int i = 0; i < 20 && !at.wrapped; ++i) {
            at = find(doc, text, options, at.row, at.column);
            if (at.row == 0) return out + "none";
            out += Text(at) + "; ";
        }
        return out;
    }
};

} // namespace

TEST_F(CFindText, FindsShownTextsAnnotationsAndNotesAndWrapsAround) {
    const struct {
        const char* text;
        SFindOptions options;
        const char *forward, *backward;
    } cases[] = {
        {"ibm",
         {},
         "1,1; 2,1; 3,1; 3,4 note; 5,1; 6,4 note; 1,1 wrapped; ",
         "6,4 note; 5,1; 3,4 note; 3,1; 2,1; 1,1; 6,4 note wrapped; "},
        {"IBM", {true, false}, "1,1; 5,1; 6,4 note; 1,1 wrapped; ", "6,4 note; 5,1; 1,1; 6,4 note wrapped; "},
        {"ibm", {false, true}, "1,1; 3,1; 1,1 wrapped; ", "3,1; 1,1; 3,1 wrapped; "},
        {"CAF\xC9", {}, "2,1; 2,1 wrapped; ", "2,1; 2,1 wrapped; "},
        {"12.5", {}, "5,2; 5,2 wrapped; ", "5,2; 5,2 wrapped; "},
        {"77", {}, "none", "none"},
        {"", {}, "none", "none"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(All(FindNext, c.text, c.options), c.forward) << c.text;
        EXPECT_EQ(All(FindPrevious, c.text, c.options), c.backward) << c.text;
    }
    EXPECT_EQ(Text(FindNext(doc, "ibm", {}, 3, 2)), "3,4 note");
    EXPECT_EQ(Text(FindPrevious(doc, "ibm", {}, 3, 4)), "3,1");
    EXPECT_EQ(Text(FindNext(doc, "ibm", {}, 99, 1)), "1,1");
    SetWidth(4, 0);
    EXPECT_EQ(Text(FindNext(doc, "line", {}, 1, 1)), "3,1 note");
}

TEST_F(CFindText, GoesToTheSymbolThatIsMeantMost) {
    for (const auto& [row, symbol] : {std::pair{7, "IBM"}, {8, "ibm2"}, {9, "BAD"}})
        doc.Update()->EnterSymbol(row, symbol);
    doc.SymbolNotFound("BAD");
    const std::pair<const char*, int> cases[] = {{"IBM", 1}, {" Ibm ", 3}, {"iBm", 1}, {"IBM2", 8},
                                                 {"ib", 1},  {"bad", 9},   {"BM", 0},  {"", 0}};
    for (const auto& [text, row] : cases) EXPECT_EQ(GoToSymbol(doc, text), row) << text;
}
