// SPDX-License-Identifier: MIT
#include "grid/GridGeometry.h"

#include <algorithm>
#include <utility>

namespace vx {

namespace {
// A viewport keeps at least this much for the columns that scroll, else fewer columns are locked.
constexpr int kMinScrolledWidth = 60;
} // namespace

CGridGeometry::CGridGeometry() : m_widths(1, 0) { Relayout(); }

void CGridGeometry::SetRowCount(int rows) {
    m_rowCount = std::clamp(rows, 0, kMaxRows);
    m_shownRows = m_rowCount - HiddenBefore(m_rowCount + 1);
}

void CGridGeometry::SetHiddenRows(std::vector<int> rising) {
    m_hidden = std::move(rising);
    std::erase_if(m_hidden, [](int row) { return row < 1; });
    SetRowCount(m_rowCount);
}

int CGridGeometry::HiddenBefore(int row) const {
    return static_cast<int>(std::lower_bound(m_hidden.begin(), m_hidden.end(), row) - m_hidden.begin());
}

bool CGridGeometry::IsRowHidden(int row) const {
    return !m_hidden.empty() && std::binary_search(m_hidden.begin(), m_hidden.end(), row);
}

int CGridGeometry::ShownRowAt(int place) const {
    // m_hidden[i] - 1 - i shown rows come before the hidden row of index i; the row wanted lies after all those
    // hidden ones that have fewer than its place before them.
    int behind = 0;
    for (int end = static_cast<int>(m_hidden.size()); behind < end;) {
        const int middle = behind + (end - behind) / 2;
        if (m_hidden[static_cast<size_t>(middle)] - middle <= place)
            behind = middle + 1;
        else
            end = middle;
    }
    return place + behind;
}

int CGridGeometry::RowAway(int row, int steps) const {
    row = std::clamp(row, 1, std::max(1, m_rowCount));
    if (m_shownRows == 0) return row;
    // From a hidden row the next shown one is a step away already.
    const int place = ShownIndexOf(row) + steps - (steps > 0 && IsRowHidden(row) ? 1 : 0);
    return ShownRowAt(std::clamp(place, 1, m_shownRows));
}

void CGridGeometry::SetRowHeights(int header, int row) {
    m_headerHeight = std::max(header, 0);
    m_rowHeight = std::clamp(row, 1, kMaxRowHeight);
}

void CGridGeometry::SetColumnCount(int columns, int width) {
    m_widths.resize(static_cast<size_t>(std::max(columns, 0)) + 1, std::clamp(width, 0, kMaxColumnWidth));
    Relayout();
}

bool CGridGeometry::SetColumnWidth(int column, int width) {
    if (column < 0 || column > ColumnCount()) return false;
    int& present = m_widths[static_cast<size_t>(column)];
    width = std::clamp(width, 0, kMaxColumnWidth);
    if (present == width) return false;
    present = width;
    Relayout();
    return true;
}

int CGridGeometry::ColumnWidth(int column) const {
    return column < 0 || column > ColumnCount() ? 0 : m_widths[static_cast<size_t>(column)];
}

void CGridGeometry::SetLockedColumns(int columns) {
    m_locked = std::max(columns, 0);
    Relayout();
}

void CGridGeometry::SetStickyColumn(int column) {
    m_sticky = std::max(column, 0);
    Stick();
}

// 0 where it cannot stick.
int CGridGeometry::StickyWidth() const {
    const int width = m_sticky > m_shownLocked ? ColumnWidth(m_sticky) : 0;
    return LockedRight() + width > m_viewport.width() - kMinScrolledWidth ? 0 : width;
}

void CGridGeometry::Stick() {
    m_stuck = 0;
    if (StickyWidth() > 0 && ColumnLeft(m_sticky) < LockedRight()) m_stuck = m_sticky;
}

void CGridGeometry::SetViewport(const QSize& size) {
    m_viewport = size;
    Relayout();
}

void CGridGeometry::SetScroll(int x, int y) {
    m_scrollX = std::clamp(x, 0, MaxScrollX());
    m_scrollY = std::clamp(y, 0, MaxScrollY());
    Stick();
}

int CGridGeometry::MaxScrollX() const { return std::max(0, m_left.back() - m_viewport.width()); }

int CGridGeometry::MaxScrollY() const { return std::max(0, m_shownRows * m_rowHeight - std::max(0, ScrolledHeight())); }

int CGridGeometry::ContentRight() const { return std::max(FixedWidth(), m_left.back() - m_scrollX); }

int CGridGeometry::ContentBottom() const { return m_headerHeight + m_shownRows * m_rowHeight - m_scrollY; }

int CGridGeometry::ColumnLeft(int column) const {
    if (column > 0 && column == m_stuck) return LockedRight();
    const int left = m_left[static_cast<size_t>(std::clamp(column, 0, ColumnCount() + 1))];
    return column > m_shownLocked ? left - m_scrollX : left;
}

int CGridGeometry::RowTop(int row) const {
    return row <= 0 ? 0 : m_headerHeight + (ShownIndexOf(row) - 1) * m_rowHeight - m_scrollY;
}

QRect CGridGeometry::CellRect(int row, int column) const {
    const int height = row <= 0 ? m_headerHeight : IsRowHidden(row) ? 0 : m_rowHeight;
    return {ColumnLeft(column), RowTop(row), ColumnWidth(column), height};
}

QRect CGridGeometry::VisibleCellRect(int row, int column) const {
    QRect place(QPoint(0, 0), m_viewport);
    if (column > m_shownLocked) place.setLeft(column == m_stuck ? LockedRight() : FixedWidth());
    if (row > 0) place.setTop(m_headerHeight);
    return CellRect(row, column).intersected(place);
}

int CGridGeometry::ColumnAtContent(int x) const {
    const auto right = std::upper_bound(m_left.begin(), m_left.end(), x);
    if (right == m_left.begin() || right == m_left.end()) return -1;
    return static_cast<int>(right - m_left.begin()) - 1;
}

int CGridGeometry::ColumnAt(int x) const {
    if (x < LockedRight()) return ColumnAtContent(x);
    return x < FixedWidth() ? m_stuck : ColumnAtContent(x + m_scrollX);
}

int CGridGeometry::RowAt(int y) const {
    if (y < 0) return -1;
    if (y < m_headerHeight) return 0;
    const int place = (y - m_headerHeight + m_scrollY) / m_rowHeight + 1;
    return place > m_shownRows ? -1 : ShownRowAt(place);
}

int CGridGeometry::ColumnBoundaryAt(int x) const {
    const int column = ColumnAt(std::max(x, ColumnWidth(0)));
    if (column < 0) return ColumnCount() + 1;
    const bool right = x >= ColumnLeft(column) + ColumnWidth(column) / 2;
    return std::max(1, right ? column + 1 : column);
}

int CGridGeometry::RowBoundaryAt(int y) const {
    const int place = (std::max(y, m_headerHeight) - m_headerHeight + m_scrollY + m_rowHeight / 2) / m_rowHeight + 1;
    return place > m_shownRows ? m_rowCount + 1 : ShownRowAt(place);
}

int CGridGeometry::LastVisibleRow() const {
    if (ScrolledHeight() <= 0) return FirstVisibleRow() - 1;
    const int place = std::min(m_shownRows, (m_scrollY + ScrolledHeight() - 1) / m_rowHeight + 1);
    return place < 1 ? 0 : ShownRowAt(place);
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
    if (!IsFixed(column) && column <= ColumnCount()) {
        // A column beyond the sticky one must come out from under it.
        const int begin = m_left[static_cast<size_t>(column)];
        const int left = begin - LockedRight() - (column > m_sticky ? StickyWidth() : 0);
        const int right = begin + ColumnWidth(column) - m_viewport.width();
        scroll.setX(std::min(std::max(m_scrollX, right), left));
    }
    if (row > 0 && row <= m_rowCount) {
        const int top = (ShownIndexOf(row) - 1) * m_rowHeight;
        scroll.setY(std::min(std::max(m_scrollY, top + m_rowHeight - ScrolledHeight()), top));
    }
    return scroll;
}

void CGridGeometry::Relayout() {
    m_left.resize(m_widths.size() + 1);
    m_left[0] = 0;
    for (size_t i = 0; i < m_widths.size(); ++i) m_left[i + 1] = m_left[i] + m_widths[i];
    m_shownLocked = std::min(m_locked, ColumnCount());
    while (m_shownLocked > 0 && LockedRight() > m_viewport.width() - kMinScrolledWidth) --m_shownLocked;
    Stick();
}

} // namespace vx
