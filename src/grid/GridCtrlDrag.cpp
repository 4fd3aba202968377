#include "grid/GridCtrl.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QPointer>
#include <QScrollBar>
#include <algorithm>

// How drags go on and end: a selection that is stretched, a column border, columns and rows on their way to another
// place, and data that comes from elsewhere.

namespace vx {

namespace {

constexpr int kMinDraggedWidth = 16; // hiding a column is a command, not an accident
constexpr int kDragScrollMs = 40;
constexpr int kLastColumn = CGridGeometry::kMaxRows;

} // namespace

void CGridCtrl::PressAt(const SGridCell& at, bool extend) {
    const SGridRange range = SelectedRange();
    switch (PartOf(at)) {
    case EGridPart::Corner:
        UpdateSelection({m_selection.focus, {1, 1}, {RowCount(), kLastColumn}});
        break;
    case EGridPart::ColumnHeader:
        if (extend) {
            StartDrag(EDrag::SelectColumns, at, true);
            break;
        }
        // A header is taken and moved; columns that are selected as a whole go together, except all of them.
        if (!WholeColumnsSelected() || WholeRowsSelected() || !range.HasColumn(at.column)) SelectColumn(at.column);
        m_drag = EDrag::MoveColumns;
        break;
    case EGridPart::RowHeader:
        if (!extend && WholeRowsSelected() && !WholeColumnsSelected() && range.HasRow(at.row))
            m_drag = EDrag::MoveRows;
        else
            StartDrag(EDrag::SelectRows, at, extend);
        break;
    case EGridPart::Cell:
        StartDrag(EDrag::SelectCells, at, extend);
        break;
    case EGridPart::Outside:
        break;
    }
}

void CGridCtrl::StartDrag(EDrag drag, const SGridCell& at, bool extend) {
    m_drag = drag;
    const SGridCell focus = m_selection.focus;
    const SGridCell anchor = m_selection.anchor;
    if (drag == EDrag::SelectCells)
        MoveTo(at, extend);
    else if (drag == EDrag::SelectColumns && extend)
        UpdateSelection({focus, {1, anchor.column}, {RowCount(), at.column}});
    else if (drag == EDrag::SelectColumns)
        SelectColumn(at.column);
    else if (drag == EDrag::SelectRows && extend)
        UpdateSelection({focus, {anchor.row, 1}, {at.row, kLastColumn}});
    else if (drag == EDrag::SelectRows)
        SelectRow(at.row);
}

void CGridCtrl::DragTo(const QPoint& place) {
    m_dragPlace = place;
    switch (m_drag) {
    case EDrag::ResizeColumn:
        Resize(m_pressed.column, std::max(kMinDraggedWidth, m_resizeWidth + place.x() - m_pressPlace.x()));
        break;
    case EDrag::MoveColumns:
    case EDrag::MoveRows:
        if ((place - m_pressPlace).manhattanLength() >= QApplication::startDragDistance()) m_dragFar = true;
        if (m_dragFar) MoveMarkTo(place);
        break;
    case EDrag::SelectCells:
    case EDrag::SelectRows:
    case EDrag::SelectColumns:
        StretchTo(place);
        break;
    case EDrag::None:
        break;
    }
}

void CGridCtrl::ScrollTowards(const QPoint& place, const QRect& calm, bool rows, bool columns) {
    const int step = m_geometry.RowHeight();
    const auto towards = [step](int at, int first, int last) { return at > last ? step : at < first ? -step : 0; };
    const int down = rows ? towards(place.y(), calm.top(), calm.bottom()) : 0;
    const int right = columns ? towards(place.x(), calm.left(), calm.right()) : 0;
    if (down == 0 && right == 0)
        m_dragTimer.stop();
    else if (!m_dragTimer.isActive())
        m_dragTimer.start(kDragScrollMs, this);
    verticalScrollBar()->setValue(verticalScrollBar()->value() + down);
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + right);
}

void CGridCtrl::StretchTo(const QPoint& place) {
    // Beyond an edge the grid scrolls towards the mouse for as long as it stays there.
    const QRect cells(QPoint(m_geometry.FixedWidth(), m_geometry.HeaderHeight()),
                      QPoint(viewport()->width() - 1, viewport()->height() - 1));
    const bool rowsMove = m_drag != EDrag::SelectColumns;
    const bool columnsMove = m_drag != EDrag::SelectRows;
    QRect calm = cells;
    if (m_geometry.IsFixed(m_selection.anchor.column)) calm.setLeft(0);
    ScrollTowards(place, calm, rowsMove, columnsMove);

    const int left = m_geometry.ColumnWidth(0);
    const int x = std::clamp(place.x(), left, std::max(left, std::min(cells.right(), m_geometry.ContentRight() - 1)));
    const int y = std::clamp(place.y(), cells.top(),
                             std::max(cells.top(), std::min(cells.bottom(), m_geometry.ContentBottom() - 1)));
    const SGridCell at = CellAt({x, y});
    if (at.row < 1 && rowsMove) return;
    if (at.column < 1 && columnsMove) return;
    SGridSelection next = m_selection;
    if (rowsMove) next.reach.row = at.row;
    if (columnsMove) next.reach.column = at.column;
    UpdateSelection(next);
}

void CGridCtrl::MoveMarkTo(const QPoint& place) {
    const bool columns = m_drag == EDrag::MoveColumns;
    // Columns scroll at the edges of what scrolls; over the fixed ones only while there is something under them.
    const QRect calm(QPoint(m_geometry.FixedWidth(), m_geometry.HeaderHeight()),
                     QPoint(viewport()->width() - 1, viewport()->height() - 1));
    ScrollTowards(place, calm, !columns, columns);
    SGridMarks next = m_marks;
    const SGridRange range = SelectedRange();
    if (columns) {
        const int before = m_geometry.ColumnBoundaryAt(place.x());
        next.insertColumn = MovesColumns(range, before) ? before : 0;
    } else {
        const int before = m_geometry.RowBoundaryAt(place.y());
        next.insertRow = MovesRows(range, before) ? before : 0;
    }
    SetMarks(next);
}

bool CGridCtrl::MovesColumns(const SGridRange& range, int before) const {
    if (before < range.firstColumn) return true;
    // Over hidden columns alone nothing would be seen to move.
    for (int column = range.lastColumn + 1; column < before; ++column)
        if (ColumnWidth(column) > 0) return true;
    return false;
}

bool CGridCtrl::MovesRows(const SGridRange& range, int before) const {
    return before < range.firstRow || m_geometry.ShownRowsIn(range.lastRow + 1, before - 1) > 0;
}

void CGridCtrl::Drop() {
    const EDrag drag = m_drag;
    const bool far = m_dragFar;
    const SGridMarks marks = m_marks;
    const SGridRange range = SelectedRange();
    EndDrag();
    if (drag == EDrag::MoveColumns) {
        if (!far) SelectColumn(m_pressed.column);
        if (marks.insertColumn > 0) Q_EMIT ColumnsDragged(range.firstColumn, range.lastColumn, marks.insertColumn);
    } else if (drag == EDrag::MoveRows) {
        if (!far) SelectRow(m_pressed.row);
        if (marks.insertRow > 0) Q_EMIT RowsDragged(range.firstRow, range.lastRow, marks.insertRow);
    }
}

void CGridCtrl::CancelDrag() {
    if (m_drag == EDrag::None) return;
    if (m_drag == EDrag::ResizeColumn) Resize(m_pressed.column, m_resizeWidth);
    EndDrag();
    viewport()->unsetCursor();
}

void CGridCtrl::EndDrag() {
    m_drag = EDrag::None;
    m_dragFar = false;
    m_dragTimer.stop();
    SGridMarks next = m_marks;
    next.insertColumn = 0;
    next.insertRow = 0;
    next.dropRow = 0;
    SetMarks(next);
}

void CGridCtrl::Resize(int column, int width) {
    if (width == ColumnWidth(column)) return;
    SetColumnWidth(column, width);
    Q_EMIT ColumnResized(column, ColumnWidth(column));
}

// ---- Data from elsewhere

SGridCell CGridCtrl::NearestCell(const QPoint& place) const {
    const int x = std::clamp(place.x(), m_geometry.ColumnWidth(0), std::max(0, m_geometry.ContentRight() - 1));
    const int y = std::clamp(place.y(), m_geometry.HeaderHeight(), std::max(0, m_geometry.ContentBottom() - 1));
    const SGridCell at = CellAt({x, y});
    return {std::max(1, at.row), std::max(1, at.column)};
}

void CGridCtrl::DragOver(const QPoint& place) {
    m_dragPlace = place;
    // A drag from elsewhere hardly leaves the grid to scroll it, so the outer rows do.
    const int edge = m_geometry.RowHeight();
    const QRect calm(QPoint(0, m_geometry.HeaderHeight() + edge),
                     QPoint(viewport()->width() - 1, viewport()->height() - 1 - edge));
    ScrollTowards(place, calm, true, false);
    SGridMarks next = m_marks;
    next.dropRow = NearestCell(place).row;
    SetMarks(next);
}

void CGridCtrl::dragEnterEvent(QDragEnterEvent* event) { dragMoveEvent(event); }

void CGridCtrl::dragMoveEvent(QDragMoveEvent* event) {
    if (event->mimeData() == nullptr || !AcceptsDrop(*event->mimeData())) return event->ignore();
    // What is dropped here stays where it came from.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    DragOver(event->position().toPoint());
}

void CGridCtrl::dragLeaveEvent(QDragLeaveEvent*) { EndDrag(); }

void CGridCtrl::dropEvent(QDropEvent* event) {
    EndDrag();
    EndEdit(true);
    if (event->mimeData() == nullptr || !AcceptsDrop(*event->mimeData())) return event->ignore();
    event->setDropAction(Qt::CopyAction);
    event->accept();
    const SGridCell at = NearestCell(event->position().toPoint());
    Q_EMIT DataDropped(event->mimeData(), at.row, at.column);
}

} // namespace vx
