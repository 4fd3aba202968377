// SPDX-License-Identifier: MIT
#include "watchlist/edit/PasteText.h"

#include "base/Text.h"
#include "data/text/CellText.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/CellEntry.h"
#include "watchlist/edit/ImportText.h"
#include "watchlist/fileformat/TextLines.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <unordered_set>

namespace vx {

namespace {

constexpr size_t kMostQuoted = 40;

// Of the fields of a line, which one is the symbol's.
class CSymbolField {
public:
    CSymbolField(const CWatchlistDoc& doc, int column) {
        const CShownCells cells(doc);
        const auto& shown = cells.Columns();
        m_shownColumns = shown.size();
        const auto symbol = std::find(shown.begin(), shown.end(), doc.Columns().PositionOf(kSymbolColumn));
        if (symbol == shown.end()) return;
        m_ofAll = static_cast<size_t>(symbol - shown.begin());
        const auto focus = std::find(shown.begin(), shown.end(), column);
        if (focus <= symbol) m_fromFocus = static_cast<size_t>(symbol - focus);
    }

    std::string_view Of(std::string_view line) const {
        const auto fields = static_cast<size_t>(std::count(line.begin(), line.end(), '\t')) + 1;
        size_t index = fields == m_shownColumns ? m_ofAll : m_fromFocus;
        if (index >= fields) index = 0;
        for (; index > 0; --index) line.remove_prefix(line.find('\t') + 1);
        return line.substr(0, line.find('\t'));
    }

private:
    size_t m_shownColumns = 0;
    size_t m_ofAll = 0;
    size_t m_fromFocus = 0;
};

/// What goes into the rows from the focus on, and what does not.
struct SEntries {
    std::vector<std::string> texts;
    int beyond = 0; ///< Lines that would leave the grid.
    int unused = 0; ///< Lines that hold something, but nothing that is taken.
    std::string firstUnused;

    void LeaveOut(std::string_view line) {
        if (++unused > 1) return;
        const std::string_view text = TrimBlanks(line);
        AppendWithoutControls(firstUnused, text.substr(0, kMostQuoted));
        if (text.size() > kMostQuoted) firstUnused += "...";
    }
};

SEntries Entries(const CWatchlistDoc& doc, int column, std::string_view text, size_t room) {
    const CSymbolField field(doc, column);
    SEntries out;
    for (CTextLines lines(text); lines.Next();) {
        const std::string_view line = lines.Line();
        const bool isBlank = line.find_first_not_of(" \t") == std::string_view::npos;
        if (out.texts.size() == room) {
            out.beyond += !isBlank;
            continue;
        }
        out.texts.emplace_back(field.Of(line));
        if (!isBlank && TrimBlanks(out.texts.back()).empty()) out.LeaveOut(line);
    }
    while (!out.texts.empty() && TrimBlanks(out.texts.back()).empty()) out.texts.pop_back();
    return out;
}

// The titles of a report, which its words come without.
void LeaveOutTitles(std::string_view text, SEntries& entries) {
    for (CTextLines lines(text); lines.Next();)
        if (ReportLineOf(lines.Line()) == EReportLine::Title) entries.LeaveOut(lines.Line());
}

/// What a paste does, counted before it is done.
class CPasteTally {
public:
    CPasteTally(const CWatchlistDoc& doc, const SEntries& entries) : m_entries(entries) {
        std::unordered_set<std::string> there;
        for (const std::string& text : entries.texts) {
            if (TrimBlanks(text).empty()) continue;
            ++m_rows;
            if (text.front() == '#') {
                m_cut += text.size() > kMostCellText;
                continue;
            }
            const std::optional<std::string> symbol = TypedSymbol(text);
            if (symbol && doc.Symbols().Find(*symbol)) there.insert(*symbol);
            m_withCommas += ContainsText(text, ",");
        }
        m_there = static_cast<int>(there.size());
    }

    std::string Text() const {
        if (m_there + m_withCommas + m_cut + m_entries.unused == 0) return {};
        std::string out = fmt::format("Pasted {} {}", m_rows, m_rows == 1 ? "row" : "rows");
        if (m_there > 0) out += fmt::format("; {} in the list already", Counted(m_there, "symbol was", "symbols were"));
        if (m_withCommas > 0)
            out += fmt::format("; {} (F2 there brings the text back)",
                               Counted(m_withCommas, "line holds commas", "lines hold commas"));
        if (m_cut > 0)
            out +=
                fmt::format("; {} cut to {} characters", Counted(m_cut, "heading was", "headings were"), kMostCellText);
        if (m_entries.unused > 0)
            out += fmt::format("; {} left out: \"{}\"{}", Counted(m_entries.unused, "line was", "lines were"),
                               m_entries.firstUnused, m_entries.unused > 1 ? ", ..." : "");
        return out;
    }

private:
    static std::string Counted(int count, const char* one, const char* many) {
        return fmt::format("{} {}", count, count == 1 ? one : many);
    }

    const SEntries& m_entries;
    int m_rows = 0;
    int m_there = 0;
    int m_withCommas = 0;
    int m_cut = 0;
};

SPasteResult Refused(EPasteOutcome outcome, std::string message) { return {outcome, 0, 0, 0, std::move(message), {}}; }

} // namespace

SPasteResult PasteText(CWatchlistDoc& doc, int row, int column, std::string_view text, EAnnotationMarks marks,
                       const CWorkProgress& progress) {
    if (text.size() > kMostPastedBytes)
        return Refused(EPasteOutcome::TooLarge,
                       fmt::format("The text on the clipboard is too large to be pasted: {:.1f} MB, at most {} MB.",
                                   static_cast<double>(text.size()) / (1 << 20), kMostPastedBytes >> 20));
    row = std::max(row, 1);
    const auto room = static_cast<size_t>(std::max(CRowTable::kMaxRow - row + 1, 0));
    // What the grid itself copied is no report, whatever words are in it.
    const bool isReport = marks == EAnnotationMarks::No && IsReport(text);
    SEntries entries = Entries(doc, column, isReport ? NormalizePastedText(text) : std::string(text), room);
    if (isReport) LeaveOutTitles(text, entries);
    if (entries.texts.empty())
        return Refused(EPasteOutcome::Nothing, entries.unused > 0
                                                   ? fmt::format("There is no symbol in the text that could be pasted: "
                                                                 "\"{}\"{}",
                                                                 entries.firstUnused, entries.unused > 1 ? ", ..." : "")
                                                   : "There is no text to be pasted.");
    const CPasteTally tally(doc, entries);
    const int count = static_cast<int>(entries.texts.size());
    const EFillOutcome outcome = doc.Edit(count == 1 ? std::string("paste row") : fmt::format("paste {} rows", count),
                                          [&](CWatchlistEdit&) { return FillRows(doc, row, entries.texts, progress); });
    if (outcome != EFillOutcome::Filled) return Refused(EPasteOutcome::Cancelled, {});
    SPasteResult result{EPasteOutcome::Pasted, row, row + count - 1, entries.beyond, {}, tally.Text()};
    if (result.leftOut > 0)
        result.message =
            fmt::format("{} lines were left out: a watchlist has at most {} rows.", result.leftOut, CRowTable::kMaxRow);
    return result;
}

int ClearRange(CWatchlistDoc& doc, const SCellRange& range) {
    const CShownCells cells(doc, range.firstColumn, range.lastColumn);
    const auto& columns = cells.Columns();
    const int lastRow = std::min(range.lastRow, doc.RowCount());
    const int rows = lastRow - std::max(range.firstRow, 1) + 1;
    if (columns.empty() || rows < 1) return 0;
    const size_t count = static_cast<size_t>(rows) * columns.size();
    int changed = 0;
    doc.Edit(count == 1 ? std::string("clear cell") : fmt::format("clear {} cells", count), [&](CWatchlistEdit& edit) {
        edit.SelectColumns(columns.front(), columns.back());
        const CEditBatch batch(edit);
        for (int row = std::max(range.firstRow, 1); row <= lastRow; ++row)
            if (ClearCells(doc, edit, row, columns)) ++changed;
    });
    return changed;
}

} // namespace vx
