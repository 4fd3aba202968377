// SPDX-License-Identifier: MIT
#include "watchlist/view/ColumnScales.h"

#include "data/store/L1DataStore.h"
#include "data/text/DrawnNumber.h"
#include "watchlist/document/WatchlistDoc.h"

#include <algorithm>
#include <utility>

namespace vx {

namespace {

constexpr int kAhead = 8; // Rows for which memory is asked for before it is read.
constexpr int kAllColumns = -1;

} // namespace

void CColumnScales::Reset() {
    m_columns.assign(static_cast<size_t>(m_doc.Columns().Count()), {});
    m_nextRow = 1;
    m_changed = false;
}

const CColumnScale& CColumnScales::Use(int column, const SFieldEntry& entry, double number) {
    SColumn& of = m_columns[static_cast<size_t>(column)];
    of.wasDrawn = true;
    if (!of.isActive) Begin(column, entry);
    if (of.scale.Take(number)) m_changed = true;
    return of.scale;
}

void CColumnScales::Begin(int column, const SFieldEntry& entry) {
    SColumn& of = m_columns[static_cast<size_t>(column)];
    of.isActive = true;
    of.wholePass = false;
    if (std::exchange(of.entry, &entry)) return;
    const bool others = std::exchange(m_changed, false);
    Read(1, std::min(kFirstRows, m_doc.LastUsedRow()), column);
    of.isKnown = m_doc.LastUsedRow() <= kFirstRows;
    m_changed = others; // Nothing was drawn by this one yet.
}

void CColumnScales::ReadOn(bool wanted) {
    const auto needs = [&](const SColumn& column) { return column.isActive && (wanted || !column.isKnown); };
    if (std::ranges::none_of(m_columns, needs)) return;
    const int lastRow = m_doc.LastUsedRow();
    const int end = std::min(m_nextRow + kRowsAtOnce - 1, lastRow);
    Read(m_nextRow, end, kAllColumns);
    m_nextRow = end + 1;
    if (m_nextRow > lastRow) EndPass();
}

void CColumnScales::Read(int firstRow, int lastRow, int onlyColumn) {
    const CL1DataStore& store = m_doc.Store();
    for (int row = firstRow; row <= lastRow; ++row) {
        if (row + kAhead <= lastRow) store.ExpectLookup(m_doc.RowSymbol(row + kAhead));
        const std::string_view symbol = m_doc.RowSymbol(row);
        const CSymbolRec* record = symbol.empty() ? nullptr : store.Find(symbol);
        if (!record) continue;
        const auto take = [&](SColumn& column) {
            if (!column.isActive) return;
            const std::optional<double> number = DrawnNumber(*record, *column.entry);
            if (number && column.scale.Take(*number)) m_changed = true;
        };
        if (onlyColumn == kAllColumns)
            std::ranges::for_each(m_columns, take);
        else
            take(m_columns[static_cast<size_t>(onlyColumn)]);
    }
}

void CColumnScales::EndPass() {
    m_nextRow = 1;
    for (SColumn& column : m_columns) {
        if (!column.isActive) continue;
        if (!column.wholePass)
            column.scale.DropPass();
        else if (column.scale.EndPass())
            m_changed = true;
        column.isKnown |= column.wholePass;
        column.isActive = std::exchange(column.wasDrawn, false);
        column.wholePass = true;
    }
}

} // namespace vx
