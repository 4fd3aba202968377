// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/exchange/RowCellText.h"

#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// A range of a grid. Rows and columns count from 1, both ends belong to it.
struct SCellRange {
    int firstRow = 0;
    int lastRow = 0;
    int firstColumn = 0;
    int lastColumn = 0;
};

/// The texts of a document's cells as the grid shows them, columns of no width left out.
///
/// Owns    nothing; the document outlives it, and its columns stay as they are meanwhile
/// Thread  GUI thread only
class CShownCells {
public:
    explicit CShownCells(const CWatchlistDoc& doc);
    CShownCells(const CWatchlistDoc& doc, int firstColumn, int lastColumn);

    /// Grid columns, rising.
    const std::vector<int>& Columns() const { return m_columns; }

    /// Calls visit(size_t index, std::string_view text) for each shown cell of a row from the left, until it returns
    /// false. An annotation is the text of the first one, and the only one.
    ///
    /// Returns false when visit did
    template <typename Visit> bool ForEach(int row, Visit&& visit) const;

    /// What ForEach gave for a row, as UTF-8; the marks of a tick trend become their signs.
    std::string Utf8(int row, size_t index, std::string_view text) const;

private:
    std::string_view Annotation(int row) const;
    const CSymbolRec* Record(int row) const;

    const CWatchlistDoc& m_doc;
    std::vector<int> m_columns;
    std::vector<CColumnReader> m_readers;
    size_t m_field; ///< The first reader that needs a record, else their number.
};

template <typename Visit> bool CShownCells::ForEach(int row, Visit&& visit) const {
    if (const std::string_view annotation = Annotation(row); !annotation.empty())
        return m_readers.empty() || visit(size_t{0}, annotation);
    const CSymbolRec* record = Record(row);
    CellBuffer text;
    for (size_t i = 0; i < m_readers.size(); ++i)
        if (!visit(i, std::string_view(text.data(), m_readers[i].Read(row, record, text)))) return false;
    return true;
}

} // namespace vx
