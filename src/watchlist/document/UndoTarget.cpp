#include "watchlist/document/UndoTarget.h"

#include "watchlist/document/WatchlistDoc.h"

#include <algorithm>

namespace vx {

namespace {

bool IsSameColumn(const sColumnInfo& a, const sColumnInfo& b) { return a.name == b.name && a.width == b.width; }

bool AreSameColumns(const CColumnMap& a, const CColumnMap& b) {
    return std::equal(a.Columns().begin(), a.Columns().end(), b.Columns().begin(), b.Columns().end(), IsSameColumn);
}

template <typename Value> void Change(const Value& from, const Value& to, Value& value) {
    if (!(from == to)) value = to;
}

/// Calls visit(first row, count) for each run of neighbouring rows, from the first to the last.
template <typename Visit> void ForEachRun(const std::vector<SRowPlace>& places, Visit&& visit) {
    for (size_t begin = 0, end = 0; begin < places.size(); begin = end) {
        for (end = begin + 1; end < places.size() && places[end].row == places[end - 1].row + 1;) ++end;
        visit(places[begin].row, static_cast<int>(end - begin));
    }
}

} // namespace

SRowImage CUndoTarget::Read(int row) const {
    return {m_doc.m_rows.Symbol(row),
            m_doc.m_annotations.Get(row),
            m_doc.m_notes.Get(row),
            m_doc.m_shown.Get(row),
            m_doc.m_invalid.SymbolAt(static_cast<uint32_t>(row)),
            m_doc.m_typed.Get(row)};
}

void CUndoTarget::Write(int row, const SRowImage& image) {
    if (image.symbol.empty() || image.symbol != m_doc.RowSymbol(row)) {
        m_doc.EmptyRow(row);
        if (!image.symbol.empty()) m_doc.EnterSymbol(row, image.symbol);
    }
    if (!image.annotation.empty()) m_doc.m_annotations.Set(row, image.annotation);
    if (!image.rejected.empty()) m_doc.m_invalid.Add(image.rejected, {static_cast<uint32_t>(row)});
    m_doc.m_notes.Set(row, image.note);
    m_doc.m_shown.Remove(row);
    if (!image.shown.empty()) m_doc.m_shown.Set(row, image.shown);
    m_doc.m_typed.Remove(row);
    if (!image.typed.empty()) m_doc.m_typed.Set(row, image.typed);
}

uint32_t CUndoTarget::MakeId(int row) { return m_doc.m_rows.MakeId(row); }

void CUndoTarget::SetHidden(int row, bool hidden) { m_doc.m_rows.SetHidden(row, hidden); }

std::vector<int> CUndoTarget::RowsOfIds(const std::vector<uint32_t>& ids) const { return m_doc.m_rows.RowsOfIds(ids); }

bool CUndoTarget::InsertRows(const std::vector<SRowPlace>& places) {
    if (m_doc.LastUsedRow() + static_cast<int>(places.size()) > CRowTable::kMaxRow) return false;
    SRowStores stores = m_doc.RowStores();
    ForEachRun(places, [&](int row, int count) { stores.InsertRows(row, count); });
    for (const SRowPlace& place : places) m_doc.m_rows.SetId(place.row, place.id);
    return true;
}

void CUndoTarget::RemoveRows(const std::vector<SRowPlace>& places) {
    std::vector<std::pair<int, int>> runs;
    ForEachRun(places, [&](int row, int count) { runs.emplace_back(row, count); });
    SRowStores stores = m_doc.RowStores();
    for (auto run = runs.rbegin(); run != runs.rend(); ++run)
        m_doc.SymbolsLeft(stores.RemoveRows(run->first, run->second));
}

void CUndoTarget::Reorder(const std::vector<int>& newRowOf) { m_doc.MoveStoredRows(newRowOf); }

SLayout CUndoTarget::Layout() const { return {m_doc.m_columns, m_doc.m_options, m_doc.m_grownRows}; }

void CUndoTarget::ChangeLayout(const SLayout& from, const SLayout& to) {
    if (!AreSameColumns(from.columns, to.columns)) m_doc.m_columns = to.columns;
    Change(from.grownRows, to.grownRows, m_doc.m_grownRows);
    if (from.options == to.options) return;
    SWatchlistOptions options = to.options;
    options.placement = m_doc.m_options.placement; // These two are remembered, not edited.
    options.exporting = m_doc.m_options.exporting;
    m_doc.m_options = options;
}

CCellFormatStore& CUndoTarget::Formats() { return m_doc.m_formats; }

CSettings& CUndoTarget::Settings() { return m_doc.Settings(); }

CAlertsMap& CUndoTarget::Alerts() { return m_doc.m_alerts; }

bool IsSameLayout(const SLayout& a, const SLayout& b) {
    return a.grownRows == b.grownRows && a.options == b.options && AreSameColumns(a.columns, b.columns);
}

std::pair<int, int> DifferentColumns(const SLayout& a, const SLayout& b) {
    const auto& x = a.columns.Columns();
    const auto& y = b.columns.Columns();
    if (AreSameColumns(a.columns, b.columns)) return {0, 0};
    const auto first = std::mismatch(x.begin(), x.end(), y.begin(), y.end(), IsSameColumn).second - y.begin();
    const auto tail = std::mismatch(x.rbegin(), x.rend(), y.rbegin(), y.rend(), IsSameColumn).second - y.rbegin();
    const int last = std::max(b.columns.Count() - 1 - static_cast<int>(tail), static_cast<int>(first));
    const int greatest = b.columns.Count() - 1;
    return {std::clamp(static_cast<int>(first), 0, greatest), std::min(last, greatest)};
}

} // namespace vx
