// Lists made at random of all that a user, a feed, an older file or the settings can put into one: what is saved comes
// back when it is opened, and is saved as the same bytes again.

#include "alerts/rules/AlertInfo.h"
#include "base/Text.h"
#include "settings/Settings.h"
#include "support/Random.h"
#include "watchlist/FileFixture.h"
#include "watchlist/edit/CellEntry.h"

#include <array>
#include <cstdlib>

using namespace vx;
using namespace vx::test;
using namespace std::string_view_literals;
using testing::IsEmpty;

namespace {

/// More of them are made with the environment variable ZW_ROUND_TRIPS; of each the number is the seed.
constexpr int kLists = 100;
constexpr uint32_t kMostEdits = 60;

constexpr std::array kPieces{"IBM"sv,
                             "msft"sv,
                             "x"sv,
                             " "sv,
                             "  "sv,
                             ","sv,
                             ";"sv,
                             ":"sv,
                             "::"sv,
                             ":::"sv,
                             "="sv,
                             "#"sv,
                             "##"sv,
                             "\""sv,
                             "'"sv,
                             "\\"sv,
                             "\r"sv,
                             "\n"sv,
                             "\r\n"sv,
                             "\n\r"sv,
                             "\t"sv,
                             "\0"sv,
                             "\x80"sv,
                             "\x92"sv,
                             "\xA0"sv,
                             "\xFF"sv,
                             "\xC3\xA9"sv,
                             "[x]"sv,
                             "%s%n"sv,
                             "TRUE"sv,
                             "-1"sv,
                             "0"sv,
                             "^"sv,
                             "--"sv,
                             "|"sv,
                             "RowNumbers"sv,
                             "Symbol"sv,
                             "\xE2\x82\xAC"sv,
                             "\xEF\xBB\xBF"sv,
                             "\" is an Invalid Symbol."sv,
                             "end\n"sv};
constexpr std::array kThresholds{0.0, -0.0, 1e-7, 2e-7, 0.1 + 0.2, 250.0, -5.5, 1e308, 5e-324, 123456789.123456789};

class CRoundTrip : public CFileFixture {
protected:
    std::string AnyText() {
        std::string out;
        for (uint32_t i = random.Below(6); i > 0; --i) out += kPieces[random.Below(kPieces.size())];
        if (random.OneIn(50)) out += std::string(300, 'L');
        return out;
    }
    int AnyRow() { return random.OneIn(300) ? CRowTable::kMaxRow - static_cast<int>(random.Below(2)) : 1 + Below(12); }
    int AnyColumn() { return 1 + Below(doc.Columns().Count()); }
    int Below(int count) { return static_cast<int>(random.Below(static_cast<uint32_t>(count))); }
    std::string AnySymbol() {
        const std::string standing(doc.RowSymbol(AnyRow()));
        return standing.empty() ? AnyText() : standing;
    }

    void EditRows() {
        switch (random.Below(8)) {
        case 0:
            return EnterCellText(doc, AnyRow(), AnyColumn(), "old", AnyText());
        case 1:
            return doc.Update()->SetAnnotation(AnyRow(), AnyText());
        case 2:
            return doc.Update()->Notes().Set(AnyRow(), AnyText());
        case 3:
            return doc.SetRowsHidden({AnyRow(), AnyRow()}, !random.OneIn(3));
        case 4:
            doc.InsertRows(AnyRow(), 1 + Below(3));
            return;
        case 5:
            return doc.MoveRows(AnyRow(), 1 + Below(3), AnyRow());
        case 6:
            return doc.SymbolNotFound(AnySymbol());
        default:
            return doc.Update()->PlaceSymbol(AnyRow(), AnyText());
        }
    }
    void EditColumns() {
        CColumnMap& columns = doc.Update()->Columns();
        const std::string name = random.OneIn(3) ? AnyText() : std::string(columns.NameOf(Below(80)));
        if (!name.empty() && !random.OneIn(4)) columns.Append(name, random.OneIn(3) ? 0 : 1 + Below(2000));
        if (random.OneIn(3)) columns.SetWidth(AnyColumn(), Below(3) * 40);
        if (random.OneIn(3)) columns.Move(AnyColumn(), AnyColumn());
    }
    void EditFormats() {
        SCellFormat format;
        for (int32_t* number : {&format.textColour, &format.borderStyle, &format.reserved, &format.fontSizePt})
            if (random.OneIn(3)) *number = static_cast<int32_t>(random.Next());
        if (random.OneIn(2)) format.fontFace = AnyText();
        format.bold = random.OneIn(2);
        format.alignment = static_cast<ECellAlign>(random.Below(3));
        format.decimals = Below(9);
        format.colourRule = static_cast<EColourRule>(random.Below(3));
        format.regular = random.OneIn(4);
        doc.Update()->Formats().Set(random.OneIn(2) ? 0 : AnyRow(), random.OneIn(20) ? 1000 : Below(doc.Columns().Count() + 1),
                          format);
    }
    void EditAlerts() {
        A_INFO alert;
        alert.fieldId = Below(138);
        if (AlertFieldId(AlertFieldName(alert.fieldId)) != alert.fieldId) return;
        alert.value = kThresholds[random.Below(kThresholds.size())];
        alert.condition = random.Below(5);
        alert.enabled = random.Below(2);
        alert.noZero = random.Below(2);
        alert.soundType = random.OneIn(9) ? UINT32_MAX : random.Below(3);
        if (random.OneIn(3)) alert.soundFile = AnyText();
        doc.AlertRules().Add(AnySymbol(), alert);
    }
    void EditOptions() {
        SWatchlistOptions& options = doc.Update()->Options();
        options.placement = {Below(9) - 5, Below(9), Below(900), Below(900), random.OneIn(2), random.OneIn(2)};
        options.trailingRows = Below(SWatchlistOptions::kMaxTrailingRows + 1);
        options.lockedColumns = Below(doc.Columns().Count() + 2);
        options.sort = {Below(doc.Columns().Count() + 2) - 1, random.OneIn(2), random.OneIn(2), Below(90) * 1000};
        for (bool* flag : {&options.showRowNumbers, &options.showToolBar, &options.useGridPrecision,
                           &options.useDefaultAlignment, &options.sortAcrossHeadings})
            *flag = random.OneIn(2);
        settings.WriteBoolean(kShowEllipsis, random.OneIn(2));
        settings.WriteBoolean(kShowGridLines, random.OneIn(2));
    }
    void MakeList(uint64_t seed) {
        random = CRandom(seed);
        doc.NewDocument();
        doc.Update()->Columns().SetNames("Symbol;Last;Notes;");
        for (uint32_t edits = random.Below(kMostEdits); edits > 0; --edits) {
            EditRows();
            if (random.OneIn(6)) EditColumns();
            if (random.OneIn(4)) EditFormats();
            if (random.OneIn(3)) EditAlerts();
        }
        EditOptions();
    }

    /// All that is to come back, a line each. A rejected symbol comes back as a symbol: the feed is asked again.
    std::string Content() const {
        std::string out;
        const auto add = [&out](std::string_view what, auto where, std::string_view text) {
            out += fmt::format("{} {} \"{}\"\n", what, where, EscapeBytes(text));
        };
        for (int row = 1; row <= doc.LastUsedRow(); ++row) {
            const std::string_view rejected = doc.RejectedSymbol(row);
            if (const std::string_view symbol = rejected.empty() ? doc.RowSymbol(row) : rejected; !symbol.empty())
                add("symbol", row, symbol);
            else if (doc.RowKind(row) == ERowKind::Annotation)
                add("annotation", row, doc.Annotations().Get(row));
        }
        for (const auto& [row, text] : doc.Notes()) add("note", row, text);
        for (const int row : doc.HiddenRows()) add("hidden", row, {});
        for (const std::string& symbol : doc.Alerts().Symbols())
            for (const A_INFO& a : doc.Alerts().Get(symbol)) {
                add("alert", EscapeBytes(symbol), a.soundFile);
                out += fmt::format("{} {} {} {} {} {} {}\n", AlertFieldName(a.fieldId), a.condition, a.value, a.enabled,
                                   a.noZero, a.soundType, a.loopSound);
            }
        for (int i = 1; i < doc.Columns().Count(); ++i)
            add("column", doc.Columns().At(i).width, doc.Columns().At(i).name);
        const SWatchlistOptions& options = doc.Options();
        out += fmt::format("sort {} {} locked {} {}\n", options.sort.column, options.sortAcrossHeadings,
                           options.lockedColumns, doc.Formats().Write());
        return out;
    }

    CRandom random{0};
};

} // namespace

TEST_F(CRoundTrip, OfAnyListGivesTheSameListAndTheSameBytes) {
    const char* asked = std::getenv("ZW_ROUND_TRIPS");
    const int lists = asked ? std::atoi(asked) : kLists;
    for (int seed = 1; seed <= lists; ++seed) {
        MakeList(static_cast<uint64_t>(seed));
        const bool rejected = doc.InvalidSymbols().begin() != doc.InvalidSymbols().end();
        const std::string before = Content();
        ASSERT_TRUE(SaveAs("list.vxw").IsDone());
        const std::string saved = ReadFile(At("list.vxw"));
        settings.WriteBoolean(kShowEllipsis, random.OneIn(2));
        const SFileResult opened = file.Open(At("list.vxw"));
        ASSERT_TRUE(opened.IsDone());
        ASSERT_THAT(opened.notices, IsEmpty()) << "list " << seed;
        ASSERT_EQ(Content(), before) << "list " << seed;
        ASSERT_TRUE(Save().IsDone());
        const std::string again = ReadFile(At("list.vxw"));
        ASSERT_TRUE(rejected || again == saved) << "list " << seed << ":\n" << saved << "\n---\n" << again;
        file.Open(At("list.vxw"));
        ASSERT_EQ(Content(), before) << "list " << seed << ", opened again";
        ASSERT_EQ(Written(), again) << "list " << seed;
    }
}
