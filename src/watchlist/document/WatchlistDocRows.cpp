// SPDX-License-Identifier: MIT
#include "watchlist/document/WatchlistDoc.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace vx {

// Rows that move, and batches of edits.

namespace {

std::string Counted(int count) { return count == 1 ? std::string("row") : fmt::format("{} rows", count); }

} // namespace

bool CWatchlistDoc::InsertRows(int firstRow, int count) {
    if (firstRow < 1 || count < 1 || firstRow > CRowTable::kMaxRow || count > CRowTable::kMaxRow) return false;
    const int lastText = std::max(LastUsedRow(), m_notes.LastRow());
    if (lastText >= firstRow && lastText + count > CRowTable::kMaxRow) return false;
    const CEditScope scope(*this, "insert " + Counted(count));
    if (firstRow > LastUsedRow())
        m_grownRows = std::min(RowCount() + count, CRowTable::kMaxRow);
    else if (m_grownRows >= firstRow)
        m_grownRows = std::min(m_grownRows + count, CRowTable::kMaxRow);
    if (firstRow <= m_rows.LastKeptRow()) m_rows.InsertRows(firstRow, count);
    RebuildGrid();
    return true;
}

void CWatchlistDoc::DeleteRows(int firstRow, int count) {
    if (firstRow < 1 || count < 1 || firstRow > CRowTable::kMaxRow) return;
    count = std::min(count, CRowTable::kMaxRow);
    const int kept = std::min(count, m_rows.LastKeptRow() - firstRow + 1);
    if (kept < 1 && m_grownRows < firstRow) return; // The empty row at the end would be there again.
    const CEditScope scope(*this, "delete " + Counted(std::clamp(RowCount() - firstRow + 1, 1, count)));
    if (m_grownRows >= firstRow) m_grownRows -= std::min(count, m_grownRows - firstRow + 1);
    if (kept > 0) {
        std::vector<int> leaving(static_cast<size_t>(kept));
        std::iota(leaving.begin(), leaving.end(), firstRow);
        std::vector<std::string> gone;
        m_rows.RemoveRows(leaving, gone);
        SymbolsGone(gone);
    }
    RebuildGrid();
}

void CWatchlistDoc::MoveRows(int firstRow, int count, int before) {
    if (firstRow < 1 || before < 1 || before > RowCount() + 1) return;
    count = std::min(count, RowCount() - firstRow + 1);
    const std::vector<int> newRowOf = MoveOfBlock(firstRow, count, before);
    if (newRowOf.empty()) return;
    const CEditScope scope(*this, "move " + Counted(count));
    m_undo.SelectRows(firstRow, firstRow + count - 1);
    ReorderRows(newRowOf);
}

bool CWatchlistDoc::ReorderRows(const std::vector<int>& newRowOf) {
    const int covered = static_cast<int>(newRowOf.size()) - 1;
    if (covered < 1 || covered > CRowTable::kMaxRow) return false;
    std::vector<bool> taken(newRowOf.size());
    int first = 0;
    int last = 0;
    for (int row = 1; row <= covered; ++row) {
        const int to = newRowOf[static_cast<size_t>(row)];
        if (to < 1 || to > covered || taken[static_cast<size_t>(to)]) return false;
        taken[static_cast<size_t>(to)] = true;
        if (to == row) continue;
        if (first == 0) first = row;
        last = row;
    }
    if (first == 0) return true;
    MoveRows(newRowOf);
    NoteRows(first, last);
    m_notices.order = true;
    return true;
}

void CWatchlistDoc::MoveRows(const std::vector<int>& newRowOf) {
    m_rows.Reorder(newRowOf);
    if (m_observer) m_observer->OnRowsMoved(newRowOf);
}

void CWatchlistDoc::SetRowsHidden(const std::vector<int>& rows, bool hidden) {
    const auto count = static_cast<int>(std::ranges::count_if(
        rows, [&](int row) { return row >= 1 && row <= CRowTable::kMaxRow && IsRowHidden(row) != hidden; }));
    if (count == 0) return;
    const CEditScope scope(*this, hidden       ? "hide " + Counted(count)
                                  : count == 1 ? "show hidden row"
                                               : "show hidden rows");
    for (const int row : rows) m_rows.SetHidden(row, hidden);
    RebuildGrid();
}

void CWatchlistDoc::RevealRows(int firstRow, int lastRow) {
    BeginUpdate();
    bool any = false;
    for (int row = firstRow; m_rows.AnyHidden() && row <= lastRow; ++row) {
        any = any || IsRowHidden(row);
        m_rows.SetHidden(row, false);
    }
    if (any) RebuildGrid();
    EndUpdate();
}

// As undoing wants it

void CWatchlistDoc::PutRow(int row, const SRow& content, unsigned parts) {
    const SRowExtras& extras = content.Extras();
    if (parts & kContentPart) {
        if (content.symbol.empty() || content.symbol != RowSymbol(row)) {
            EmptyRow(row);
            if (!content.symbol.empty()) EnterSymbol(row, content.symbol);
        }
        for (const auto text : {&SRowExtras::annotation, &SRowExtras::rejected, &SRowExtras::shown, &SRowExtras::typed})
            m_rows.SetText(row, text, extras.*text);
    }
    if (parts & kNotePart) m_rows.SetText(row, &SRowExtras::note, extras.note);
    if (parts & kFormatPart) m_rows.SetFormats(row, extras.formats);
    if (parts & kHiddenPart) m_rows.SetHidden(row, content.hidden);
}

void CWatchlistDoc::SymbolsCame(const std::vector<std::string>& symbols) {
    if (!m_feedReady) return;
    for (const std::string& symbol : symbols) {
        if (m_batchLeft.erase(symbol) != 0) continue;
        WatchSymbol(symbol);
        RequestNewsCounts({symbol});
    }
}

void CWatchlistDoc::SetLayout(const SLayout& layout) {
    m_columns = layout.columns;
    m_options = layout.options;
    m_grownRows = layout.grownRows;
    RebuildGrid();
}

void CWatchlistDoc::BeginExchange() {
    BeginBatch();
    RebuildGrid();
}

void CWatchlistDoc::BeginBatch() {
    BeginNotices();
    ++m_batchDepth;
}

void CWatchlistDoc::EndBatch() {
    if (--m_batchDepth > 0) return EndNotices();
    for (const std::string& symbol : std::exchange(m_batchLeft, {}))
        if (!Symbols().Find(symbol)) Unwatch(symbol);
    std::vector<std::string> added = std::exchange(m_batchAdded, {});
    std::erase_if(added, [&](const std::string& symbol) { return !Symbols().Find(symbol); });
    RequestNewsCounts(added);
    if (m_feedReady) ShowSymbolCount();
    EndNotices();
}

} // namespace vx
