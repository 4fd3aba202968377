#include "grid/GridGeometry.h"

#include <algorithm>

namespace vx {

namespace {
// A viewport keeps at least this much for the columns that scroll, else fewer columns are locked.
constexpr int kMinScrolledWidth = 60;
} // namespace

CGridGeometry::CGridGeometry() : m_widths(1, 0) { Relayout(); }

void CGridGeometry::SetRowCount(int rows) { m_rowCount = std::clamp(rows, 0, kMaxRows); }

void CGridGeometry::SetRowHeights(int header, int row) {
    m_headerHeight = std::max(header, 0);
    m_rowHeight = std::clamp(row, 1, 200);
}

void CGridGeometry::SetColumnCount(int columns, int width) {
    m_widths.resize(static_cast<size_t>(std::max(columns, 0)) + 1, std::clamp(width, 0, kMaxColumnWidth));
    Relayout();
}

void CGridGeometry::SetColumnWidth(int column, int width) {
    if (column < 0 || column > ColumnCount()) return;
    m_widths[static_cast<size_t>(column)] = std::clamp(width, 0, kMaxColumnWidth);
    Relayout();
}

int CGridGeometry::ColumnWidth(int column) const {
    return column < 0 || column > ColumnCount() ? 0 : m_widths[static_cast<size_t>(column)];
}

void CGridGeometry::SetLockedColumns(int columns) {
    m_locked = std::max(columns, 0);
    Relayout();
}

void CGridGeometry::SetViewport(const QSize& size) {
    m_viewport = size;
    Relayout();
}

void CGridGeometry::SetScroll(int x, int y) {
    m_scrollX = std::clamp(x, 0, MaxScrollX());
    m_scrollY = std::clamp(y, 0, MaxScrollY());
}

int CGridGeometry::MaxScrollX() const { return std::max(0, m_left.back() - m_viewport.width()); }

int CGridGeometry::MaxScrollY() const { return std::max(0, m_rowCount * m_rowHeight - std::max(0, ScrolledHeight())); }

int CGridGeometry::ContentRight() const { return std::max(FixedWidth(), m_left.back() - m_scrollX); }

int CGridGeometry::ContentBottom() const { return m_headerHeight + m_rowCount * m_rowHeight - m_scrollY; }

int CGridGeometry::ColumnLeft(int column) const {
    const int left = m_left[static_cast<size_t>(std::clamp(column, 0, ColumnCount() + 1))];
    return column > m_shownLocked ? left - m_scrollX : left;
}

int CGridGeometry::RowTop(int row) const { return row <= 0 ? 0 : m_headerHeight + (row - 1) * m_rowHeight - m_scrollY; }

QRect CGridGeometry::CellRect(int row, int column) const {
    return {ColumnLeft(column), RowTop(row), ColumnWidth(column), row <= 0 ? m_headerHeight : m_rowHeight};
}

QRect CGridGeometry::VisibleCellRect(int row, int column) const {
    QRect place(QPoint(0, 0), m_viewport);
    if (column > m_shownLocked) place.setLeft(FixedWidth());
    if (row > 0) place.setTop(m_headerHeight);
    return CellRect(row, column).intersected(place);
}

int CGridGeometry::ColumnAtContent(int x) const {
    const auto right = std::upper_bound(m_left.begin(), m_left.end(), x);
    if (right == m_left.begin() || right == m_left.end()) return -1;
    return static_cast<int>(right - m_left.begin()) - 1;
}

int CGridGeometry::ColumnAt(int x) const { return ColumnAtContent(x < FixedWidth() ? x : x + m_scrollX); }

int CGridGeometry::RowAt(int y) const {
    if (y < 0) return -1;
    if (y < m_headerHeight) return 0;
    const int row = (y - m_headerHeight + m_scrollY) / m_rowHeight + 1;
    return row > m_rowCount ? -1 : row;
}

int CGridGeometry::ColumnBoundaryAt(int x) const {
    const int column = ColumnAt(std::max(x, ColumnWidth(0)));
    if (column < 0) return ColumnCount() + 1;
    const bool right = x >= ColumnLeft(column) + ColumnWidth(column) / 2;
    return std::max(1, right ? column + 1 : column);
}

int CGridGeometry::RowBoundaryAt(int y) const {
    const int row = (std::max(y, m_headerHeight) - m_headerHeight + m_scrollY + m_rowHeight / 2) / m_rowHeight + 1;
    return std::min(row, m_rowCount + 1);
}

int CGridGeometry::LastVisibleRow() const {
    if (ScrolledHeight() <= 0) return FirstVisibleRow() - 1;
    return std::min(m_rowCount, (m_scrollY + ScrolledHeight() - 1) / m_rowHeight + 1);
}

int CGridGeometry::FirstScrolledColumn() const {
    const int column = ColumnAtContent(FixedWidth() + m_scrollX);
    return column < 0 ? ColumnCount() + 1 : column;
}

int CGridGeometry::LastScrolledColumn() const {
    if (ScrolledWidth() <= 0) return FirstScrolledColumn() - 1;
    const int column = ColumnAtContent(m_viewport.width() - 1 + m_scrollX);
    return column < 0 ? ColumnCount() : column;
}

QPoint CGridGeometry::ScrollToShow(int row, int column) const {
    QPoint scroll(m_scrollX, m_scrollY);
    if (column > m_shownLocked && column <= ColumnCount()) {
        const int left = m_left[static_cast<size_t>(column)] - FixedWidth();
        const int right = left + FixedWidth() + ColumnWidth(column) - m_viewport.width();
        scroll.setX(std::min(std::max(m_scrollX, right), left));
    }
    if (row > 0 && row <= m_rowCount) {
        const int top = (row - 1) * m_rowHeight;
        scroll.setY(std::min(std::max(m_scrollY, top + m_rowHeight - ScrolledHeight()), top));
    }
    return scroll;
}

void CGridGeometry::Relayout() {
    m_left.resize(m_widths.size() + 1);
    m_left[0] = 0;
    for (size_t i = 0; i < m_widths.size(); ++i) m_left[i + 1] = m_left[i] + m_widths[i];
    m_shownLocked = std::min(m_locked, ColumnCount());
    while (m_shownLocked > 0 && FixedWidth() > m_viewport.width() - kMinScrolledWidth) --m_shownLocked;
}

} // namespace vx
