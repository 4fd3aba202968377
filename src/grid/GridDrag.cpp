// SPDX-License-Identifier: MIT
#include "grid/GridDrag.h"

#include "grid/GridSelector.h"
#include "grid/GridView.h"

#include <QApplication>
#include <QScrollBar>

#include <algorithm>

namespace vx {

namespace {

constexpr int kMinDraggedWidth = 16; // hiding a column is a command, not an accident
constexpr int kDragScrollMs = 40;
constexpr int kLastColumn = CGridGeometry::kMaxRows;

} // namespace

void CGridDrag::Press(const QPoint& place, const SGridCell& at, bool extend) {
    m_pressed = at;
    m_pressedAt = place;
    const SGridRange range = m_grid.SelectedRange();
    switch (m_grid.PartOf(at)) {
    case EGridPart::Corner:
        m_selector.Update({m_grid.FocusCell(), {1, 1}, {m_grid.RowCount(), kLastColumn}});
        break;
    case EGridPart::ColumnHeader:
        if (extend) {
            Start(EKind::SelectColumns, at, true);
            break;
        }
        // A header is taken and moved; columns that are selected as a whole go together, except all of them.
        if (!m_grid.WholeColumnsSelected() || m_grid.WholeRowsSelected() || !range.HasColumn(at.column))
            m_selector.SelectColumn(at.column);
        m_kind = EKind::MoveColumns;
        break;
    case EGridPart::RowHeader:
        if (!extend && m_grid.WholeRowsSelected() && !m_grid.WholeColumnsSelected() && range.HasRow(at.row))
            m_kind = EKind::MoveRows;
        else
            Start(EKind::SelectRows, at, extend);
        break;
    case EGridPart::Cell:
        Start(EKind::SelectCells, at, extend);
        break;
    case EGridPart::Outside:
        break;
    }
}

void CGridDrag::StartResize(const QPoint& place, int column) {
    m_kind = EKind::ResizeColumn;
    m_pressed = {0, column};
    m_pressedAt = place;
    m_widthBefore = m_grid.ColumnWidth(column);
}

void CGridDrag::Start(EKind kind, const SGridCell& at, bool extend) {
    m_kind = kind;
    const SGridCell focus = m_grid.FocusCell();
    const SGridCell anchor = m_selector.State().anchor;
    if (kind == EKind::SelectCells)
        m_selector.MoveTo(at, extend);
    else if (kind == EKind::SelectColumns && extend)
        m_selector.Update({focus, {1, anchor.column}, {m_grid.RowCount(), at.column}});
    else if (kind == EKind::SelectColumns)
        m_selector.SelectColumn(at.column);
    else if (kind == EKind::SelectRows && extend)
        m_selector.Update({focus, {anchor.row, 1}, {at.row, kLastColumn}});
    else if (kind == EKind::SelectRows)
        m_selector.SelectRow(at.row);
}

void CGridDrag::To(const QPoint& place) {
    m_at = place;
    switch (m_kind) {
    case EKind::ResizeColumn:
        m_grid.ResizeDrawn(m_pressed.column, std::max(kMinDraggedWidth, m_grid.Fonts().Zoomed(m_widthBefore) +
                                                                            place.x() - m_pressedAt.x()));
        break;
    case EKind::MoveColumns:
    case EKind::MoveRows:
        if ((place - m_pressedAt).manhattanLength() >= QApplication::startDragDistance()) m_far = true;
        if (m_far) MoveMarkTo(place);
        break;
    case EKind::SelectCells:
    case EKind::SelectRows:
    case EKind::SelectColumns:
        StretchTo(place);
        break;
    case EKind::None:
        break;
    }
}

bool CGridDrag::OnTimer(int timerId) {
    if (timerId != m_timer.timerId()) return false;
    if (m_grid.Marks().dropRow > 0)
        Over(m_at);
    else
        To(m_at);
    return true;
}

void CGridDrag::ScrollTowards(const QPoint& place, const QRect& calm, bool rows, bool columns) {
    const int step = m_grid.Geometry().RowHeight();
    const auto towards = [step](int at, int first, int last) { return at > last ? step : at < first ? -step : 0; };
    const int down = rows ? towards(place.y(), calm.top(), calm.bottom()) : 0;
    const int right = columns ? towards(place.x(), calm.left(), calm.right()) : 0;
    if (down == 0 && right == 0)
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start(kDragScrollMs, &m_grid);
    m_grid.verticalScrollBar()->setValue(m_grid.verticalScrollBar()->value() + down);
    m_grid.horizontalScrollBar()->setValue(m_grid.horizontalScrollBar()->value() + right);
}

void CGridDrag::StretchTo(const QPoint& place) {
    // Beyond an edge the grid scrolls towards the mouse for as long as it stays there.
    const QRect cells(QPoint(m_grid.Geometry().FixedWidth(), m_grid.Geometry().HeaderHeight()),
                      QPoint(m_grid.viewport()->width() - 1, m_grid.viewport()->height() - 1));
    const bool rowsMove = m_kind != EKind::SelectColumns;
    const bool columnsMove = m_kind != EKind::SelectRows;
    QRect calm = cells;
    if (m_grid.Geometry().IsFixed(m_selector.State().anchor.column)) calm.setLeft(0);
    ScrollTowards(place, calm, rowsMove, columnsMove);

    const int left = m_grid.Geometry().ColumnWidth(0);
    const int x =
        std::clamp(place.x(), left, std::max(left, std::min(cells.right(), m_grid.Geometry().ContentRight() - 1)));
    const int y = std::clamp(place.y(), cells.top(),
                             std::max(cells.top(), std::min(cells.bottom(), m_grid.Geometry().ContentBottom() - 1)));
    const SGridCell at = m_grid.CellAt({x, y});
    if (at.row < 1 && rowsMove) return;
    if (at.column < 1 && columnsMove) return;
    SGridSelection next = m_selector.State();
    if (rowsMove) next.reach.row = at.row;
    if (columnsMove) next.reach.column = at.column;
    m_selector.Update(next);
}

void CGridDrag::MoveMarkTo(const QPoint& place) {
    const bool columns = m_kind == EKind::MoveColumns;
    // Columns scroll at the edges of what scrolls; over the fixed ones only while there is something under them.
    const QRect calm(QPoint(m_grid.Geometry().FixedWidth(), m_grid.Geometry().HeaderHeight()),
                     QPoint(m_grid.viewport()->width() - 1, m_grid.viewport()->height() - 1));
    ScrollTowards(place, calm, !columns, columns);
    SGridMarks next = m_grid.Marks();
    const SGridRange range = m_grid.SelectedRange();
    if (columns) {
        const int before = m_grid.Geometry().ColumnBoundaryAt(place.x());
        next.insertColumn = MovesColumns(range, before) ? before : 0;
    } else {
        const int before = m_grid.Geometry().RowBoundaryAt(place.y());
        next.insertRow = MovesRows(range, before) ? before : 0;
    }
    m_grid.SetMarks(next);
}

bool CGridDrag::MovesColumns(const SGridRange& range, int before) const {
    if (before < range.firstColumn) return true;
    // Over hidden columns alone nothing would be seen to move.
    for (int column = range.lastColumn + 1; column < before; ++column)
        if (m_grid.ColumnWidth(column) > 0) return true;
    return false;
}

bool CGridDrag::MovesRows(const SGridRange& range, int before) const {
    return before < range.firstRow || m_grid.Geometry().ShownRowsIn(range.lastRow + 1, before - 1) > 0;
}

void CGridDrag::Drop() {
    const EKind kind = m_kind;
    const bool far = m_far;
    const SGridMarks marks = m_grid.Marks();
    const SGridRange range = m_grid.SelectedRange();
    End();
    if (kind == EKind::MoveColumns) {
        if (!far) m_selector.SelectColumn(m_pressed.column);
        if (marks.insertColumn > 0)
            Q_EMIT m_grid.ColumnsDragged(range.firstColumn, range.lastColumn, marks.insertColumn);
    } else if (kind == EKind::MoveRows) {
        if (!far) m_selector.SelectRow(m_pressed.row);
        if (marks.insertRow > 0) Q_EMIT m_grid.RowsDragged(range.firstRow, range.lastRow, marks.insertRow);
    }
}

void CGridDrag::Cancel() {
    if (m_kind == EKind::None) return;
    if (m_kind == EKind::ResizeColumn) m_grid.Resize(m_pressed.column, m_widthBefore);
    End();
    m_grid.viewport()->unsetCursor();
}

void CGridDrag::End() {
    m_kind = EKind::None;
    m_far = false;
    m_timer.stop();
    SGridMarks next = m_grid.Marks();
    next.insertColumn = 0;
    next.insertRow = 0;
    next.dropRow = 0;
    m_grid.SetMarks(next);
}

SGridCell CGridDrag::NearestCell(const QPoint& place) const {
    const int x =
        std::clamp(place.x(), m_grid.Geometry().ColumnWidth(0), std::max(0, m_grid.Geometry().ContentRight() - 1));
    const int y =
        std::clamp(place.y(), m_grid.Geometry().HeaderHeight(), std::max(0, m_grid.Geometry().ContentBottom() - 1));
    const SGridCell at = m_grid.CellAt({x, y});
    return {std::max(1, at.row), std::max(1, at.column)};
}

void CGridDrag::Over(const QPoint& place) {
    m_at = place;
    // A drag from elsewhere hardly leaves the grid to scroll it, so the outer rows do.
    const int edge = m_grid.Geometry().RowHeight();
    const QRect calm(QPoint(0, m_grid.Geometry().HeaderHeight() + edge),
                     QPoint(m_grid.viewport()->width() - 1, m_grid.viewport()->height() - 1 - edge));
    ScrollTowards(place, calm, true, false);
    SGridMarks next = m_grid.Marks();
    next.dropRow = NearestCell(place).row;
    m_grid.SetMarks(next);
}

} // namespace vx
