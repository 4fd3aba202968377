#include "grid/GridCtrl.h"

#include "grid/QtText.h"

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>

// What the user does with mouse, wheel and keyboard.

namespace vx {

namespace {

constexpr int kGripWidth = 4;        // on each side of a header border
constexpr int kMinDraggedWidth = 16; // hiding a column is a command, not an accident
constexpr int kDragScrollMs = 40;
constexpr int kWheelNotch = 120; // eighths of a degree
constexpr int kLastColumn = CGridGeometry::kMaxRows;

} // namespace

// ---- Keyboard

int CGridCtrl::NextColumn(int column, int step) const {
    for (int c = column + step; c >= 1 && c <= ColumnCount(); c += step)
        if (ColumnWidth(c) > 0) return c;
    return column;
}

int CGridCtrl::RowsPerPage() const { return std::max(1, m_geometry.ScrolledHeight() / m_geometry.RowHeight()); }

void CGridCtrl::MoveTo(SGridCell cell, bool extend) {
    cell.row = std::clamp(cell.row, 1, std::max(1, RowCount()));
    cell.column = std::clamp(cell.column, 1, std::max(1, ColumnCount()));
    if (extend)
        UpdateSelection({m_selection.focus, m_selection.anchor, cell});
    else
        UpdateSelection({cell, cell, cell});
    EnsureVisible(cell.row, cell.column);
}

bool CGridCtrl::MoveByKey(const QKeyEvent& event) {
    const bool extend = event.modifiers().testFlag(Qt::ShiftModifier);
    const bool far = event.modifiers().testFlag(Qt::ControlModifier);
    SGridCell to = extend ? m_selection.reach : m_selection.focus;
    const int firstColumn = NextColumn(0, 1);
    const int lastColumn = NextColumn(ColumnCount() + 1, -1);
    switch (event.key()) {
    case Qt::Key_Up:
        to.row = far ? 1 : to.row - 1;
        break;
    case Qt::Key_Down:
        to.row = far ? RowCount() : to.row + 1;
        break;
    case Qt::Key_Left:
        to.column = far ? firstColumn : NextColumn(to.column, -1);
        break;
    case Qt::Key_Right:
        to.column = far ? lastColumn : NextColumn(to.column, 1);
        break;
    case Qt::Key_Home:
        to.column = firstColumn;
        if (far) to.row = 1;
        break;
    case Qt::Key_End:
        to.column = lastColumn;
        if (far) to.row = RowCount();
        break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
        // The page turns under the focus, which keeps its place on the screen.
        const int rows = event.key() == Qt::Key_PageDown ? RowsPerPage() : -RowsPerPage();
        to.row += rows;
        verticalScrollBar()->setValue(verticalScrollBar()->value() + rows * m_geometry.RowHeight());
        break;
    }
    default:
        return false;
    }
    MoveTo(to, extend);
    return true;
}

bool CGridCtrl::SelectByKey(const QKeyEvent& event) {
    const SGridCell focus = m_selection.focus;
    if (event.matches(QKeySequence::SelectAll)) {
        UpdateSelection({focus, {1, 1}, {RowCount(), kLastColumn}});
        return true;
    }
    if (event.key() != Qt::Key_Space) return false;
    const SGridRange range = m_selection.Range();
    if (event.modifiers() == Qt::ControlModifier) {
        UpdateSelection({focus, {1, range.firstColumn}, {RowCount(), range.lastColumn}});
        return true;
    }
    if (event.modifiers() == Qt::ShiftModifier) {
        UpdateSelection({focus, {range.firstRow, 1}, {range.lastRow, kLastColumn}});
        return true;
    }
    return false;
}

void CGridCtrl::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && m_drag == EDrag::ResizeColumn) return CancelResize();
    if (event->modifiers().testFlag(Qt::AltModifier) || (!MoveByKey(*event) && !SelectByKey(*event)))
        event->ignore(); // the window's shortcuts and the focus chain
}

// ---- Wheel

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

// ---- Mouse

int CGridCtrl::BorderAt(const QPoint& place) const {
    if (place.y() < 0 || place.y() >= m_geometry.HeaderHeight() || place.x() < 0) return 0;
    int column = m_geometry.ColumnAt(place.x());
    if (column < 0) column = ColumnCount() + 1;
    if (column >= 1 && column <= ColumnCount() &&
        m_geometry.ColumnLeft(column) + ColumnWidth(column) - place.x() <= kGripWidth)
        return column;
    const bool behindFixed =
        column > m_geometry.ShownLockedColumns() && m_geometry.ColumnLeft(column) < m_geometry.FixedWidth();
    const int left = behindFixed ? m_geometry.FixedWidth() : m_geometry.ColumnLeft(column);
    if (place.x() - left >= kGripWidth) return 0;
    const int from = behindFixed ? m_geometry.ShownLockedColumns() + 1 : column;
    const int before = NextColumn(from, -1);
    return before != from ? before : 0;
}

void CGridCtrl::UpdateCursor(const QPoint& place) {
    if (m_drag == EDrag::ResizeColumn || (m_drag == EDrag::None && BorderAt(place) > 0))
        viewport()->setCursor(Qt::SplitHCursor);
    else
        viewport()->unsetCursor();
}

void CGridCtrl::mousePressEvent(QMouseEvent* event) {
    const QPoint place = event->position().toPoint();
    const SGridCell at = CellAt(place);
    if (event->button() != Qt::LeftButton) {
        // A menu opens on what is selected, or else on what lies under the mouse.
        if (at.row > 0 && at.column > 0 && !SelectedRange().Has(at.row, at.column)) MoveTo(at, false);
        return;
    }
    const bool extend = event->modifiers().testFlag(Qt::ShiftModifier);
    if (const int border = BorderAt(place); border > 0) {
        m_drag = EDrag::ResizeColumn;
        m_resizeColumn = border;
        m_resizeFrom = place.x();
        m_resizeWidth = ColumnWidth(border);
    } else if (at.row == 0 && at.column == 0) {
        UpdateSelection({m_selection.focus, {1, 1}, {RowCount(), kLastColumn}});
    } else if (at.row == 0 && at.column > 0) {
        StartDrag(EDrag::SelectColumns, at, extend);
    } else if (at.row > 0 && at.column == 0) {
        StartDrag(EDrag::SelectRows, at, extend);
    } else if (at.row > 0 && at.column > 0) {
        StartDrag(EDrag::SelectCells, at, extend);
    }
}

void CGridCtrl::StartDrag(EDrag drag, const SGridCell& at, bool extend) {
    m_drag = drag;
    const SGridCell focus = m_selection.focus;
    const SGridCell anchor = m_selection.anchor;
    switch (drag) {
    case EDrag::SelectColumns:
        UpdateSelection({{focus.row, extend ? focus.column : at.column},
                         {1, extend ? anchor.column : at.column},
                         {RowCount(), at.column}});
        break;
    case EDrag::SelectRows:
        UpdateSelection(
            {{extend ? focus.row : at.row, focus.column}, {extend ? anchor.row : at.row, 1}, {at.row, kLastColumn}});
        break;
    default:
        MoveTo(at, extend);
        break;
    }
}

void CGridCtrl::mouseMoveEvent(QMouseEvent* event) {
    const QPoint place = event->position().toPoint();
    if (m_drag == EDrag::ResizeColumn)
        ResizeByUser(m_resizeColumn, std::max(kMinDraggedWidth, m_resizeWidth + place.x() - m_resizeFrom));
    else if (m_drag != EDrag::None)
        DragTo(place);
    UpdateCursor(place);
}

void CGridCtrl::DragTo(const QPoint& place) {
    // Beyond an edge the grid scrolls towards the mouse for as long as it stays there.
    const QRect cells(QPoint(m_geometry.FixedWidth(), m_geometry.HeaderHeight()),
                      QPoint(viewport()->width() - 1, viewport()->height() - 1));
    const bool rowsMove = m_drag != EDrag::SelectColumns;
    const bool columnsMove = m_drag != EDrag::SelectRows;
    const int step = m_geometry.RowHeight();
    const int down = !rowsMove ? 0 : place.y() > cells.bottom() ? step : place.y() < cells.top() ? -step : 0;
    const bool fromScrolled = m_selection.anchor.column > m_geometry.ShownLockedColumns();
    const int right = !columnsMove                                    ? 0
                      : place.x() > cells.right()                     ? step
                      : place.x() < (fromScrolled ? cells.left() : 0) ? -step
                                                                      : 0;
    m_dragPlace = place;
    if (down == 0 && right == 0)
        m_dragTimer.stop();
    else if (!m_dragTimer.isActive())
        m_dragTimer.start(kDragScrollMs, this);
    verticalScrollBar()->setValue(verticalScrollBar()->value() + down);
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + right);

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

void CGridCtrl::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) EndDrag();
    UpdateCursor(event->position().toPoint());
}

void CGridCtrl::EndDrag() {
    m_drag = EDrag::None;
    m_dragTimer.stop();
}

void CGridCtrl::CancelResize() {
    if (m_drag != EDrag::ResizeColumn) return;
    ResizeByUser(m_resizeColumn, m_resizeWidth);
    EndDrag();
    viewport()->unsetCursor();
}

void CGridCtrl::ResizeByUser(int column, int width) {
    if (width == ColumnWidth(column)) return;
    SetColumnWidth(column, width);
    Q_EMIT ColumnResized(column, ColumnWidth(column));
}

void CGridCtrl::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const QPoint place = event->position().toPoint();
    const SGridCell at = CellAt(place);
    if (const int border = BorderAt(place); border > 0)
        ResizeByUser(border, FitWidth(border));
    else if (at.row == 0 && at.column > 0)
        Q_EMIT HeaderDoubleClicked(at.column);
    else if (at.row > 0 && at.column > 0)
        Q_EMIT CellDoubleClicked(at.row, at.column);
}

// ---- Tips

bool CGridCtrl::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) return ShowTip(*static_cast<QHelpEvent*>(event));
    if (event->type() == QEvent::Leave && m_drag == EDrag::None) viewport()->unsetCursor();
    return QAbstractScrollArea::viewportEvent(event);
}

bool CGridCtrl::ShowTip(const QHelpEvent& event) {
    const SGridCell at = CellAt(event.pos());
    const QString text = at.row >= 0 && at.column >= 0 ? TipAt(at.row, at.column) : QString();
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(event.globalPos(), PlainTipText(text), viewport(),
                           m_geometry.VisibleCellRect(at.row, at.column));
    return true;
}

QString CGridCtrl::TipAt(int row, int column) {
    if (m_source == nullptr || (row == 0 && column == 0)) return {};
    const std::string own = row == 0 ? m_source->HeaderTip(column) : m_source->CellTip(row, column);
    if (!own.empty() || column == 0) return QtText(own);
    // Without a tip of its own a cell shows what it had to cut.
    m_cell.Reset();
    int room = ColumnWidth(column);
    if (row == 0) {
        m_source->FillHeader(column, m_cell);
    } else if (m_source->FillSpan(row, m_cell)) {
        room = viewport()->width() - ColumnWidth(0);
    } else {
        m_cell.Reset();
        m_source->FillCell(row, column, m_cell);
    }
    return CGridPainter::NeededWidth(m_cell, m_fonts, devicePixelRatioF()) > room ? QtText(m_cell.Text()) : QString();
}

} // namespace vx
