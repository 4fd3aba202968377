// SPDX-License-Identifier: MIT
#include "watchlist/exchange/ShownCells.h"

#include "base/Windows1252.h"
#include "watchlist/document/WatchlistDoc.h"

#include <algorithm>

namespace vx {

CShownCells::CShownCells(const CWatchlistDoc& doc) : CShownCells(doc, 1, doc.Columns().Count() - 1) {}

CShownCells::CShownCells(const CWatchlistDoc& doc, int firstColumn, int lastColumn) : m_doc(doc) {
    lastColumn = std::min(lastColumn, doc.Columns().Count() - 1);
    for (int column = std::max(firstColumn, 1); column <= lastColumn; ++column) {
        if (doc.Columns().At(column).width < 1) continue;
        m_columns.push_back(column);
        m_readers.emplace_back(doc, column);
    }
    const auto field = std::find_if(m_readers.begin(), m_readers.end(), [](const auto& r) { return r.NeedsRecord(); });
    m_field = static_cast<size_t>(field - m_readers.begin());
}

std::string CShownCells::Utf8(int row, size_t index, std::string_view text) const {
    const bool isTrend = m_readers[index].IsTickTrend() && Annotation(row).empty();
    return isTrend ? Utf8FromTickTrend(text) : Utf8FromWindows1252(text);
}

std::string_view CShownCells::Annotation(int row) const { return m_doc.AnnotationText(row); }

// One record serves all cells of a row.
const CSymbolRec* CShownCells::Record(int row) const {
    return m_field < m_readers.size() ? m_readers[m_field].FindRecord(row) : nullptr;
}

} // namespace vx
