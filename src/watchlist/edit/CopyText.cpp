// SPDX-License-Identifier: MIT
#include "watchlist/edit/CopyText.h"

#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/CellEntry.h"

#include <algorithm>

namespace vx {

std::string CopyText(const CWatchlistDoc& doc, const SCellRange& range, EAnnotationMarks marks) {
    const CShownCells cells(doc, range.firstColumn, range.lastColumn);
    std::string out;
    std::string plain;
    if (cells.Columns().empty()) return out;
    const int lastRow = std::min(range.lastRow, doc.LastUsedRow());
    for (int row = std::max(range.firstRow, 1); row <= lastRow; ++row) {
        if (doc.IsRowHidden(row)) continue;
        if (marks == EAnnotationMarks::Yes && doc.RowKind(row) == ERowKind::Annotation) out += '#';
        cells.ForEach(row, [&](size_t index, std::string_view text) {
            if (index > 0) out += '\t';
            plain.clear();
            AppendWithoutControls(plain, text);
            out += cells.Utf8(row, index, plain);
            return true;
        });
        out += "\r\n";
    }
    return out;
}

} // namespace vx
