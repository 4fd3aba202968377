// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/FurtherKeyTable.h"

#include "base/Number.h"
#include "watchlist/document/RowTable.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/fileformat/WatchlistKeys.h"

#include <algorithm>
#include <iterator>

namespace vx {

namespace {

using SReadRow = SWatchlistContent::SRow;

constexpr std::string_view kSymbol = "symbol";
constexpr std::string_view kAnnotation = "annotation";
constexpr std::string_view kEmpty = "empty";
constexpr size_t kMostEntries = 2 * CRowTable::kMaxRow; // Of values by row: more can only be repetitions.

bool IsRow(int row) { return row >= 1 && row <= CRowTable::kMaxRow; }

// A rejected symbol is written as the symbol that it was.
void TakeRow(const CWatchlistDoc& doc, int row, std::string_view& text, bool& annotation) {
    const std::string_view rejected = doc.RejectedSymbol(row);
    text = rejected.empty() ? doc.RowSymbol(row) : rejected;
    annotation = text.empty();
    if (annotation) text = doc.Annotations().Get(row);
}

} // namespace

std::string WriteFurtherRows(const SFurtherSource& source) {
    if (source.carried.rows) return {};
    const std::vector<SReadRow>& given = source.fixed.rows;
    const int last = std::max(source.doc.LastUsedRow(), static_cast<int>(given.size()) - 1);
    static const SReadRow kNone;
    CFurtherWriter out;
    for (int row = 1; row <= last; ++row) {
        const SReadRow& there = static_cast<size_t>(row) < given.size() ? given[static_cast<size_t>(row)] : kNone;
        std::string_view text;
        bool annotation = false;
        TakeRow(source.doc, row, text, annotation);
        if (there.text == text && (text.empty() || there.annotation == annotation)) continue;
        if (text.empty())
            out.Add(row).Add(kEmpty);
        else
            out.Add(row).Add(annotation ? kAnnotation : kSymbol).Quote(text);
        out.EndEntry();
    }
    return out.Take();
}

void ReadFurtherRows(const SFurtherValue& value) {
    value.ForEachEntry(kMostEntries, [&](CFurtherReader& entry) {
        const int row = entry.Int();
        const std::string_view kind = entry.Word();
        if (kind == kEmpty) return entry.IsDone() && value.content.SetRow(row, {}, false);
        const std::optional<std::string> text = entry.Text();
        return text && !text->empty() && entry.IsDone() && (kind == kSymbol || kind == kAnnotation) &&
               value.content.SetRow(row, *text, kind == kAnnotation);
    });
}

std::string WriteFurtherNotes(const SFurtherSource& source) {
    CFurtherWriter out;
    const std::map<int, std::string>& given = source.fixed.notes;
    const int carried = source.carried.notes ? source.doc.Notes().Count() : 0;
    for (const auto& [row, text] : source.doc.Notes()) {
        if (row <= carried) continue;
        const auto there = given.find(row);
        if (there != given.end() && there->second == text) continue;
        out.Add(row).Quote(text).EndEntry();
    }
    for (const auto& [row, text] : given)
        if (!source.doc.Notes().Has(row)) out.Add(row).Add(kEmpty).EndEntry();
    return out.Take();
}

void ReadFurtherNotes(const SFurtherValue& value) {
    value.ForEachEntry(kMostEntries, [&](CFurtherReader& entry) {
        const int row = entry.Int();
        if (!IsRow(row)) return false;
        const bool none = !entry.IsText() && entry.Word() == kEmpty;
        const std::optional<std::string> text = entry.Text();
        if (!entry.IsDone() || (!none && (!text || text->empty()))) return false;
        if (none)
            value.content.notes.erase(row);
        else
            value.content.notes.insert_or_assign(row, *text);
        return true;
    });
}

// "3-5;9;": rising, ranges with their first and last row.
std::string WriteHiddenRows(const SFurtherSource& source) {
    const std::vector<int> rows = source.doc.HiddenRows();
    CFurtherWriter out;
    for (size_t begin = 0, end = 0; begin < rows.size(); begin = end) {
        for (end = begin + 1; end < rows.size() && rows[end] == rows[end - 1] + 1;) ++end;
        out.Add(end - begin == 1 ? std::to_string(rows[begin]) : fmt::format("{}-{}", rows[begin], rows[end - 1]));
        out.EndEntry();
    }
    return out.Take();
}

void ReadHiddenRows(const SFurtherValue& value) {
    std::vector<int>& rows = value.content.hiddenRows;
    value.ForEachEntry(CRowTable::kMaxRow, [&](CFurtherReader& entry) {
        std::string_view range = entry.Word();
        const int first = ReadInt32(TakeUntil(range, '-'));
        const int last = range.empty() ? first : ReadInt32(range);
        const int before = rows.empty() ? 0 : rows.back();
        if (first <= before || last < first || last > CRowTable::kMaxRow || !entry.IsDone()) return false;
        for (int row = first; row <= last; ++row) rows.push_back(row);
        return true;
    });
}

} // namespace vx
