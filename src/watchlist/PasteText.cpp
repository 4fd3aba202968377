#include "watchlist/PasteText.h"

#include "base/Text.h"
#include "watchlist/CellEntry.h"
#include "watchlist/EditBatch.h"
#include "watchlist/TextLines.h"
#include "watchlist/UndoStep.h"
#include "watchlist/WatchlistDoc.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace vx {

namespace {

constexpr std::array<std::string_view, 3> kReportMarkers{"WatchList", "REALTIME", "DELAYED"};
constexpr std::array<std::string_view, 4> kTitleMarkers{"WatchList", "User:", "-- REALTIME --", "-- DELAYED --"};
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kWhiteSpace = " \t\r\n\v\f";

template <size_t N> bool ContainsAny(std::string_view text, const std::array<std::string_view, N>& parts) {
    return std::any_of(parts.begin(), parts.end(), [&](std::string_view part) { return ContainsText(text, part); });
}

bool IsRule(std::string_view line) {
    return line.find_first_not_of("- ") == std::string_view::npos ||
           line.find_first_not_of("= ") == std::string_view::npos;
}

std::string_view TrimmedOnTheRight(std::string_view line) {
    return line.substr(0, line.find_last_not_of(kWhiteSpace) + 1);
}

void AppendWords(std::string& out, std::string_view line) {
    while (!line.empty()) {
        const std::string_view word = line.substr(0, line.find(' '));
        line.remove_prefix(std::min(word.size() + 1, line.size()));
        if (word.empty()) continue;
        if (!out.empty()) out += kLineEnd;
        out += word;
    }
}

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

/// What goes into the rows from the focus on.
struct SEntries {
    std::vector<std::string> texts;
    int leftOut = 0;
};

SEntries Entries(const CWatchlistDoc& doc, int column, std::string_view text, EAnnotationMarks marks, size_t room) {
    const CSymbolField field(doc, column);
    const bool isTable = marks == EAnnotationMarks::No && text.find('\t') != std::string_view::npos;
    SEntries out;
    for (CTextLines lines(text); lines.Next();) {
        const std::string_view line = lines.Line();
        const bool isBlank = TrimBlanks(line).empty();
        if (out.texts.size() == room) {
            out.leftOut += !isBlank;
            continue;
        }
        std::string entry(field.Of(line));
        const bool annotation = isTable && !isBlank && line.find('\t') == std::string_view::npos;
        if (annotation && entry.front() != '#') entry.insert(0, 1, '#');
        out.texts.push_back(std::move(entry));
    }
    while (!out.texts.empty() && TrimBlanks(out.texts.back()).empty()) out.texts.pop_back();
    return out;
}

SPasteResult Refused(EPasteOutcome outcome, std::string message) { return {outcome, 0, 0, 0, std::move(message)}; }

} // namespace

std::string NormalizePastedText(std::string_view text) {
    if (!ContainsAny(text, kReportMarkers)) return std::string(text);
    std::string out;
    while (!text.empty()) {
        const size_t end = text.find(kLineEnd);
        const std::string_view line = TrimmedOnTheRight(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + kLineEnd.size());
        if (!line.empty() && !IsRule(line) && !ContainsAny(line, kTitleMarkers)) AppendWords(out, line);
    }
    return out;
}

SPasteResult PasteText(CWatchlistDoc& doc, int row, int column, std::string_view text, EAnnotationMarks marks,
                       const CWorkProgress& progress) {
    if (text.size() > kMostPastedBytes)
        return Refused(EPasteOutcome::TooLarge,
                       fmt::format("The text on the clipboard is too large to be pasted: {:.1f} MB, at most {} MB.",
                                   static_cast<double>(text.size()) / (1 << 20), kMostPastedBytes >> 20));
    row = std::max(row, 1);
    const auto room = static_cast<size_t>(std::max(CRowTable::kMaxRow - row + 1, 0));
    // What the board itself copied is no report, whatever words are in it.
    const SEntries entries = Entries(
        doc, column, marks == EAnnotationMarks::Yes ? std::string(text) : NormalizePastedText(text), marks, room);
    if (entries.texts.empty()) return Refused(EPasteOutcome::Nothing, "There is no text to be pasted.");
    const int count = static_cast<int>(entries.texts.size());
    const CUndoStep step(doc, count == 1 ? std::string("paste row") : fmt::format("paste {} rows", count));
    if (FillRows(doc, row, entries.texts, progress) != EFillOutcome::Filled)
        return Refused(EPasteOutcome::Cancelled, {});
    SPasteResult result{EPasteOutcome::Pasted, row, row + count - 1, entries.leftOut, {}};
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
    CUndoStep step(doc, count == 1 ? std::string("clear cell") : fmt::format("clear {} cells", count));
    step.SelectColumns(columns.front(), columns.back());
    const CEditBatch batch(doc);
    int changed = 0;
    for (int row = std::max(range.firstRow, 1); row <= lastRow; ++row)
        if (ClearCells(doc, row, columns)) ++changed;
    return changed;
}

} // namespace vx
