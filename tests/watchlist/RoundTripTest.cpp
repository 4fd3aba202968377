// SPDX-License-Identifier: MIT
// Lists made at random of all that a user, a feed, an older file or the settings can put into one: what is saved comes
// back when it is opened, and is saved as the same bytes again.

#include "alerts/rules/AlertInfo.h"
#include "watchlist/FileFixture.h"
#include "watchlist/edit/CellEntry.h"
#include "watchlist/edit/ColumnMoves.h"

#include <cstdlib>

using namespace vx;
using namespace vx::test;

namespace {

/// More of them are made with the environment variable ZW_ROUND_TRIPS; of each the number is the seed.
constexpr int kLists = 100;
constexpr int kMostEdits = 60;
constexpr int kFiles = 10; ///< Every so many lists goes through a file; the others through its text alone.

// Pieces of texts, a character or a word each, "~" after each.
constexpr std::string_view kPieces =
    "IBM~msft~x~ ~  ~,~;~:~::~:::~=~#~##~\"~'~\\~\r~\n~\r\n~\n\r~\t~\x80~\x92~\xA0~\xFF~\xC3\xA9~[x]~%s%n~TRUE~-1~0~^~"
    "--~|~RowNumbers~Symbol~\xE2\x82\xAC~\xEF\xBB\xBF~\" is an Invalid Symbol.~end\n~";
constexpr double kThresholds[] = {0.0, -0.0, 1e-7, 2e-7, 0.1 + 0.2, 250.0, -5.5, 1e308, 5e-324, 123456789.123456789};

class CRoundTrip : public CFileFixture {
protected:
    CRoundTrip() {
        pieces.emplace_back(1, '\0');
        for (const std::string_view piece : SplitTerminated(kPieces, '~')) pieces.emplace_back(piece);
    }
    int Below(size_t count) { return static_cast<int>(random.Below(static_cast<uint32_t>(count))); }
    bool Flag() { return random.OneIn(2); }
    std::string AnyText() {
        std::string out;
        for (int i = Below(6); i > 0; --i) out += pieces[random.Below(static_cast<uint32_t>(pieces.size()))];
        return random.OneIn(50) ? out + std::string(300, 'L') : out;
    }
    int AnyRow() { return random.OneIn(300) ? CRowTable::kMaxRow - Below(2) : 1 + Below(12); }
    int AnyColumn() { return 1 + Below(static_cast<size_t>(doc.Columns().Count())); }
    std::string AnySymbol() {
        const std::string present(doc.RowSymbol(AnyRow()));
        return present.empty() ? AnyText() : present;
    }

    void EditRows() {
        const int kind = Below(8);
        if (kind == 0) EnterCellText(doc, AnyRow(), AnyColumn(), "old", AnyText());
        if (kind == 1) doc.Update()->SetAnnotation(AnyRow(), AnyText());
        if (kind == 2) SetNote(AnyRow(), AnyText());
        if (kind == 3) doc.SetRowsHidden({AnyRow(), AnyRow()}, !random.OneIn(3));
        if (kind == 4) doc.InsertRows(AnyRow(), 1 + Below(3));
        if (kind == 5) doc.MoveRows(AnyRow(), 1 + Below(3), AnyRow());
        if (kind == 6) doc.SymbolNotFound(AnySymbol());
        if (kind == 7) doc.Update()->PlaceSymbol(AnyRow(), AnyText());
    }
    void EditColumns() {
        const std::string name = random.OneIn(3) ? AnyText() : std::string(doc.Columns().NameOf(Below(80)));
        if (!name.empty() && !random.OneIn(4)) AppendColumns({name}, random.OneIn(3) ? 0 : 1 + Below(2000));
        if (random.OneIn(3)) SetWidth(AnyColumn(), Below(3) * 40);
        if (random.OneIn(3)) MoveColumn(doc, AnyColumn(), AnyColumn());
        if (random.OneIn(3))
            doc.Update()->Columns().SetLook(AnyColumn(),
                                            {static_cast<EDirectionLook>(Below(4)), Flag(), Flag(), Flag()});
    }
    void EditFormats() {
        SCellFormat format;
        for (int32_t* number : {&format.textColour, &format.borderStyle, &format.reserved, &format.fontSizePt})
            if (random.OneIn(3)) *number = static_cast<int32_t>(random.Next());
        if (Flag()) format.fontFace = AnyText();
        format.bold = Flag();
        format.alignment = static_cast<ECellAlign>(Below(3));
        format.decimals = Below(9);
        format.colourRule = static_cast<EColourRule>(Below(3));
        format.regular = random.OneIn(4);
        SetFormat(Flag() ? 0 : AnyRow(), random.OneIn(20) ? 1000 : AnyColumn() - 1, format);
    }
    void EditAlerts() {
        A_INFO alert;
        alert.fieldId = Below(138);
        if (AlertFieldId(AlertFieldName(alert.fieldId)) != alert.fieldId) return;
        alert.value = kThresholds[Below(std::size(kThresholds))];
        alert.condition = random.Below(5);
        alert.enabled = random.Below(2);
        alert.noZero = random.Below(2);
        alert.soundType = random.OneIn(9) ? UINT32_MAX : random.Below(3);
        if (random.OneIn(3)) alert.soundFile = AnyText();
        AddAlert(AnySymbol(), alert);
    }
    void MakeList(uint64_t seed) {
        random = CRandom(seed);
        doc.NewDocument();
        UseColumns("Symbol;Last;Notes;");
        for (int edits = Below(kMostEdits); edits > 0; --edits) {
            EditRows();
            if (random.OneIn(6)) EditColumns();
            if (random.OneIn(4)) EditFormats();
            if (random.OneIn(3)) EditAlerts();
        }
        SetOptions([&](SWatchlistOptions& options) {
            options.placement = {Below(9) - 5, Below(9), Below(900), Below(900), Flag(), Flag()};
            options.trailingRows = Below(SWatchlistOptions::kMaxTrailingRows + 1);
            options.lockedColumns = AnyColumn();
            options.sort = {AnyColumn() - 2, Flag(), Flag(), Below(90) * 1000};
            options.exporting = {Flag(), Flag(), Flag(), Flag(), Flag()};
            options.scale = {50 + Below(251), static_cast<EDensity>(Below(3))};
            for (bool* flag : {&options.showRowNumbers, &options.showToolBar, &options.useGridPrecision,
                               &options.useDefaultAlignment, &options.sortAcrossHeadings})
                *flag = Flag();
        });
        settings.WriteBoolean(kShowEllipsis, Flag());
        settings.WriteBoolean(kShowGridLines, Flag());
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
            else
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
        add("sort", doc.Options().sort.column, doc.Options().sortAcrossHeadings ? "across" : "");
        add("locked", doc.Options().lockedColumns, doc.Formats().Write());
        for (const sColumnInfo& column : doc.Columns().Columns())
            out += fmt::format("{}{}{}{} ", static_cast<int>(column.look.direction), column.look.flash,
                               column.look.separators, column.look.shortForms);
        return out + Columns();
    }
    void OpenAgain(const std::string& text, bool throughFile) {
        if (throughFile) {
            ASSERT_TRUE(SaveAs("list.vxw").IsDone());
            ASSERT_EQ(ReadFile(At("list.vxw")), text);
        }
        settings.WriteBoolean(kShowEllipsis, Flag());
        if (!throughFile) return Open(text);
        const SFileResult opened = file.Open(At("list.vxw"));
        ASSERT_TRUE(opened.IsDone() && opened.notices.empty());
    }

    std::vector<std::string> pieces;
    CRandom random{0};
};

} // namespace

TEST_F(CRoundTrip, OfAnyListGivesTheSameListAndTheSameBytes) {
    const char* asked = std::getenv("ZW_ROUND_TRIPS");
    const int lists = asked ? std::atoi(asked) : kLists;
    for (int seed = 1; seed <= lists; ++seed) {
        SCOPED_TRACE(seed);
        MakeList(static_cast<uint64_t>(seed));
        const bool rejected = doc.InvalidSymbols().begin() != doc.InvalidSymbols().end();
        const std::string content = Content(), saved = Written();
        OpenAgain(saved, seed % kFiles == 0);
        ASSERT_EQ(Content(), content);
        const std::string again = Written();
        ASSERT_TRUE(rejected || again == saved) << saved << "\n---\n" << again;
        OpenAgain(again, false);
        ASSERT_EQ(Content(), content) << "opened again";
        ASSERT_EQ(Written(), again);
    }
}
