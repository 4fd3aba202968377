#include "watchlist/WatchlistGrid.h"

#include "watchlist/WatchlistDoc.h"

namespace vx {

namespace {

const SGridFont kSymbolFont{QStringLiteral("Arial"), 9, true, false};

} // namespace

CWatchlistGrid::CWatchlistGrid(CWatchlistDoc& doc, QWidget* parent)
    : CNorvGridCtrl(parent), m_doc(doc), m_cells(doc, static_cast<uint8_t>(AddFont(kSymbolFont))) {
    setObjectName(QStringLiteral("watchlistGrid"));
    SetSource(&m_cells);
    connect(this, &CGridCtrl::ColumnResized, this, &CWatchlistGrid::KeepWidth);
    Rebuild();
}

CWatchlistGrid::~CWatchlistGrid() { SetSource(nullptr); }

void CWatchlistGrid::Rebuild() {
    const CColumnMap& columns = m_doc.Columns();
    m_cells.ColumnsChanged();
    SetColumnCount(columns.Count() - 1, kDefaultColumnWidthPx);
    for (int column = 1; column < columns.Count(); ++column) SetColumnWidth(column, columns.At(column).width);
    SetLockedColumns(m_doc.Options().lockedColumns);
    SetRowNumbersVisible(m_doc.Options().showRowNumbers);
    SetRowCount(m_doc.RowCount());
    UpdateAll();
}

void CWatchlistGrid::MarkChangedCells(int row) {
    const CGridGeometry& geometry = Geometry();
    if (row < geometry.FirstVisibleRow() || row > geometry.LastVisibleRow()) return;
    if (m_doc.RowKind(row) != ERowKind::Symbol) {
        MarkRowChanged(row);
        return;
    }
    const auto mark = [&](int first, int last) {
        for (int column = first; column <= last; ++column)
            if (m_cells.DiffersFromPainted(row, column)) MarkCellChanged(row, column);
    };
    mark(1, geometry.ShownLockedColumns());
    mark(geometry.FirstScrolledColumn(), geometry.LastScrolledColumn());
}

void CWatchlistGrid::SetStale(bool stale) {
    if (stale == m_stale) return;
    m_stale = stale;
    m_cells.SetStale(stale);
    UpdateAll();
}

void CWatchlistGrid::KeepWidth(int column, int width) {
    m_doc.Columns().SetWidth(column, width);
    m_doc.SetModified(true);
}

} // namespace vx
