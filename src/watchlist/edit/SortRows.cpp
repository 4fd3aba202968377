#include "watchlist/edit/SortRows.h"

#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/RowGroup.h"
#include "watchlist/edit/RowOrder.h"
#include "watchlist/exchange/RowCellText.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

namespace {

/// The symbol rows of a range, and where in them the blocks end that are sorted each by itself.
struct SSymbolRows {
    std::vector<int> rows;
    std::vector<size_t> blockEnds;
};

SSymbolRows SymbolRows(const CWatchlistDoc& doc, int firstRow, int lastRow) {
    SSymbolRows out;
    const bool blocks = !doc.Options().sortAcrossHeadings;
    lastRow = std::min(lastRow, doc.LastUsedRow());
    for (int row = std::max(firstRow, 1); row <= lastRow; ++row) {
        if (!doc.RowSymbol(row).empty())
            out.rows.push_back(row);
        else if (blocks && IsHeading(doc, row))
            out.blockEnds.push_back(out.rows.size());
    }
    out.blockEnds.push_back(out.rows.size());
    return out;
}

std::string_view Text(const CellBuffer& cell, size_t size) { return {cell.data(), size}; }

std::vector<const CSymbolRec*> Records(const CColumnReader& column, const std::vector<int>& rows) {
    std::vector<const CSymbolRec*> records(rows.size());
    for (size_t i = 0; i < rows.size(); ++i) records[i] = column.FindRecord(rows[i]);
    return records;
}

std::vector<uint32_t> NumberOrder(const CColumnReader& column, const SSymbolRows& symbols, bool ascending) {
    const std::vector<int>& rows = symbols.rows;
    const std::vector<const CSymbolRec*> records = Records(column, rows);
    std::vector<double> keys(rows.size());
    CellBuffer cell;
    for (size_t i = 0; i < rows.size(); ++i) keys[i] = SortNumber(Text(cell, column.Read(rows[i], records[i], cell)));
    return OrderByNumber(keys, ascending, symbols.blockEnds);
}

std::vector<uint32_t> TextOrder(const CColumnReader& column, const SSymbolRows& symbols, bool ascending) {
    const std::vector<int>& rows = symbols.rows;
    const std::vector<const CSymbolRec*> records = Records(column, rows);
    std::string texts; // Behind each other: one allocation for all.
    std::vector<size_t> ends(rows.size());
    CellBuffer cell;
    for (size_t i = 0; i < rows.size(); ++i) {
        texts += Text(cell, column.Read(rows[i], records[i], cell));
        ends[i] = texts.size();
    }
    std::vector<std::string_view> keys(rows.size());
    for (size_t i = 0, begin = 0; i < rows.size(); begin = ends[i++])
        keys[i] = std::string_view(texts).substr(begin, ends[i] - begin);
    return OrderByText(keys, ascending, symbols.blockEnds);
}

} // namespace

void SortRows(const CWatchlistDoc& doc, CWatchlistEdit& edit, int firstRow, int lastRow, int column, bool ascending) {
    const SSymbolRows symbols = SymbolRows(doc, firstRow, lastRow);
    const CColumnReader reader(doc, column);
    const std::vector<uint32_t> order =
        reader.IsNumber() ? NumberOrder(reader, symbols, ascending) : TextOrder(reader, symbols, ascending);
    const std::vector<int>& rows = symbols.rows;
    std::vector<int> sorted(rows.size());
    std::transform(order.begin(), order.end(), sorted.begin(), [&](uint32_t index) { return rows[index]; });
    edit.ReorderRows(OrderOfRows(rows, sorted));
}

} // namespace vx
