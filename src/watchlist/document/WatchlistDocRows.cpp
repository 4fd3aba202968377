#include "watchlist/document/UndoStep.h"
#include "watchlist/document/WatchlistDoc.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace vx {

// Rows that move, and batches of edits.

namespace {

std::string Rows(int count) { return count == 1 ? std::string("row") : fmt::format("{} rows", count); }

} // namespace

SRowStores CWatchlistDoc::RowStores() {
    return {m_rows, m_symbols, m_invalid, m_annotations, m_notes, m_shown, m_typed, m_formats};
}

// Below it, one empty row is as good as another.
int CWatchlistDoc::LastKeptRow() {
    const int last = std::max(RowStores().LastRow(), m_formats.LastRow());
    return m_rows.AnyHidden() ? std::max(last, m_rows.HiddenRows().back()) : last;
}

bool CWatchlistDoc::InsertRows(int firstRow, int count) {
    if (firstRow < 1 || count < 1 || firstRow > CRowTable::kMaxRow || count > CRowTable::kMaxRow) return false;
    SRowStores stores = RowStores();
    if (const int last = stores.LastRow(); last >= firstRow && last + count > CRowTable::kMaxRow) return false;
    const CUndoStep step(*this, "insert " + Rows(count));
    if (firstRow > LastUsedRow())
        m_grownRows = std::min(RowCount() + count, CRowTable::kMaxRow);
    else if (m_grownRows >= firstRow)
        m_grownRows = std::min(m_grownRows + count, CRowTable::kMaxRow);
    if (firstRow <= LastKeptRow()) {
        stores.InsertRows(firstRow, count);
        m_undo.RowsInserted(firstRow, count);
    }
    SetModified(true);
    RebuildGrid();
    return true;
}

void CWatchlistDoc::DeleteRows(int firstRow, int count) {
    if (firstRow < 1 || count < 1 || firstRow > CRowTable::kMaxRow) return;
    count = std::min(count, CRowTable::kMaxRow);
    const CUndoStep step(*this, "delete " + Rows(std::clamp(RowCount() - firstRow + 1, 1, count)));
    if (m_grownRows >= firstRow) m_grownRows -= std::min(count, m_grownRows - firstRow + 1);
    SRowStores stores = RowStores();
    count = std::min(count, LastKeptRow() - firstRow + 1);
    if (count > 0) {
        m_undo.BeforeRowsRemoved(firstRow, count);
        SymbolsLeft(stores.RemoveRows(firstRow, count));
    }
    RebuildGrid();
}

void CWatchlistDoc::MoveRows(int firstRow, int count, int before) {
    if (firstRow < 1 || before < 1 || before > RowCount() + 1) return;
    count = std::min(count, RowCount() - firstRow + 1);
    CUndoStep step(*this, "move " + Rows(count));
    step.SelectRows(firstRow, firstRow + count - 1);
    if (ReorderRows(MoveOfBlock(firstRow, count, before))) SetModified(true);
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
    m_undo.BeforeReorder(first, last);
    MoveStoredRows(newRowOf);
    if (m_observer && !m_loading && m_batchDepth == 0) m_observer->OnRowsChanged(first, last);
    return true;
}

void CWatchlistDoc::MoveStoredRows(const std::vector<int>& newRowOf) {
    RowStores().Reorder(newRowOf);
    if (m_observer) m_observer->OnRowsMoved(newRowOf);
}

void CWatchlistDoc::SetRowsHidden(const std::vector<int>& rows, bool hidden) {
    std::vector<uint32_t> ids;
    for (const int row : rows)
        if (row >= 1 && row <= CRowTable::kMaxRow && IsRowHidden(row) != hidden) ids.push_back(m_rows.MakeId(row));
    if (ids.empty()) return;
    const int count = static_cast<int>(ids.size());
    const CUndoStep step(*this, hidden ? "hide " + Rows(count) : count == 1 ? "show hidden row" : "show hidden rows");
    for (const int row : rows) m_rows.SetHidden(row, hidden);
    m_undo.RowsHidden(std::move(ids), hidden);
    SetModified(true);
    RebuildGrid();
}

void CWatchlistDoc::RevealRows(int firstRow, int lastRow) {
    bool any = false;
    for (int row = firstRow; m_rows.AnyHidden() && row <= lastRow; ++row) {
        any = any || IsRowHidden(row);
        m_rows.SetHidden(row, false);
    }
    if (any) RebuildGrid();
}

void CWatchlistDoc::LoadHiddenRows(const std::vector<int>& rows) {
    for (const int row : rows) m_rows.SetHidden(row, true);
}

CEditBatch::CEditBatch(CWatchlistDoc& doc) : m_doc(doc) { ++m_doc.m_batchDepth; }

CEditBatch::~CEditBatch() {
    if (--m_doc.m_batchDepth == 0) m_doc.EndBatch();
}

void CWatchlistDoc::EndBatch() {
    for (const std::string& symbol : std::exchange(m_batchLeft, {}))
        if (!m_symbols.Find(symbol)) Unwatch(symbol);
    std::vector<std::string> added = std::exchange(m_batchAdded, {});
    std::erase_if(added, [&](const std::string& symbol) { return !m_symbols.Find(symbol); });
    RequestNewsCounts(added);
    if (m_feedReady) ShowSymbolCount();
    RebuildGrid();
}

} // namespace vx
