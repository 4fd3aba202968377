#include "grid/GridCtrl.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

// What the user does with mouse and wheel; how a drag goes on stands in GridCtrlDrag.cpp.

namespace vx {

namespace {

constexpr int kGripWidth = 4;    // on each side of a header border
constexpr int kWheelNotch = 120; // eighths of a degree

} // namespace

EGridPart CGridCtrl::PartOf(const SGridCell& cell) {
    if (cell.row < 0 || cell.column < 0) return EGridPart::Outside;
    if (cell.row == 0) return cell.column == 0 ? EGridPart::Corner : EGridPart::ColumnHeader;
    return cell.column == 0 ? EGridPart::RowHeader : EGridPart::Cell;
}

int CGridCtrl::BorderAt(const QPoint& place) const {
    if (place.y() < 0 || place.y() >= m_geometry.HeaderHeight() || place.x() < 0) return 0;
    int column = m_geometry.ColumnAt(place.x());
    if (column < 0) column = ColumnCount() + 1;
    if (column >= 1 && column <= ColumnCount() &&
        m_geometry.ColumnLeft(column) + ColumnWidth(column) - place.x() <= kGripWidth)
        return column;
    const int stuck = m_geometry.StuckColumn();
    const bool behindFixed = !m_geometry.IsFixed(column) && m_geometry.ColumnLeft(column) <= m_geometry.FixedWidth();
    const int left = behindFixed ? m_geometry.FixedWidth() : m_geometry.ColumnLeft(column);
    if (place.x() - left >= kGripWidth) return 0;
    if (behindFixed && stuck > 0) return stuck;
    const int from = behindFixed || (stuck > 0 && column == stuck) ? m_geometry.ShownLockedColumns() + 1 : column;
    const int before = NextColumn(from, -1);
    return before != from ? before : 0;
}

void CGridCtrl::UpdateCursor(const QPoint& place) {
    const bool resizing = m_drag == EDrag::ResizeColumn || (m_drag == EDrag::None && BorderAt(place) > 0);
    if (resizing)
        viewport()->setCursor(Qt::SplitHCursor);
    else if (m_dragFar)
        viewport()->setCursor(Qt::ClosedHandCursor);
    else
        viewport()->unsetCursor();
}

void CGridCtrl::mousePressEvent(QMouseEvent* event) {
    EndEdit(true);
    const QPoint place = event->position().toPoint();
    const SGridCell at = CellAt(place);
    if (event->button() == Qt::RightButton) {
        CancelDrag();
        return SelectUnder(at); // a menu opens on what is selected, or else on what lies under the mouse
    }
    if (event->button() != Qt::LeftButton) return;
    m_pressPlace = place;
    m_pressed = at;
    if (const int border = BorderAt(place); border > 0) {
        m_drag = EDrag::ResizeColumn;
        m_pressed.column = border;
        m_resizeWidth = ColumnWidth(border);
        return;
    }
    PressAt(at, event->modifiers().testFlag(Qt::ShiftModifier));
}

void CGridCtrl::mouseMoveEvent(QMouseEvent* event) {
    const QPoint place = event->position().toPoint();
    // A window that opened while the button was down, such as one about the edit that the press ended, got its release.
    if (m_drag != EDrag::None && !event->buttons().testFlag(Qt::LeftButton)) CancelDrag();
    if (m_drag != EDrag::None) DragTo(place);
    UpdateCursor(place);
}

void CGridCtrl::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && m_drag != EDrag::None) Drop();
    UpdateCursor(event->position().toPoint());
}

void CGridCtrl::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const QPoint place = event->position().toPoint();
    const SGridCell at = CellAt(place);
    if (const int border = BorderAt(place); border > 0)
        Resize(border, FitWidth(border));
    else if (PartOf(at) == EGridPart::ColumnHeader)
        Q_EMIT HeaderDoubleClicked(at.column);
    else if (PartOf(at) == EGridPart::Cell && !BeginEdit(at.row, at.column))
        Q_EMIT CellDoubleClicked(at.row, at.column);
}

void CGridCtrl::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() == QContextMenuEvent::Keyboard) return RequestMenuByKey();
    const SGridCell at = CellAt(event->pos());
    const EGridPart part = PartOf(at);
    const bool outside = part == EGridPart::Outside;
    Q_EMIT ContextMenuRequested(part, outside ? -1 : at.row, outside ? -1 : at.column, event->globalPos());
}

void CGridCtrl::wheelEvent(QWheelEvent* event) {
    if (event->modifiers().testFlag(Qt::ControlModifier)) return event->ignore();
    QPoint pixels;
    if (event->phase() != Qt::NoScrollPhase && !event->pixelDelta().isNull()) {
        pixels = event->pixelDelta();
    } else {
        // A notch moves whole rows; finer wheels move their part of it, and what is less than a pixel is kept.
        const int perNotch = std::max(1, QApplication::wheelScrollLines()) * m_geometry.RowHeight();
        const QPoint angle = event->modifiers().testFlag(Qt::ShiftModifier) && event->angleDelta().x() == 0
                                 ? event->angleDelta().transposed()
                                 : event->angleDelta();
        m_wheelRest += angle * perNotch;
        pixels = QPoint(m_wheelRest.x() / kWheelNotch, m_wheelRest.y() / kWheelNotch);
        m_wheelRest -= pixels * kWheelNotch;
    }
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - pixels.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - pixels.y());
    event->accept();
}

} // namespace vx
