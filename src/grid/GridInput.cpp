// SPDX-License-Identifier: MIT
#include "grid/GridInput.h"

#include "base/qt/QtText.h"
#include "grid/GridDrag.h"
#include "grid/GridEditor.h"
#include "grid/GridSelector.h"
#include "grid/GridView.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace vx {

namespace {

constexpr int kGripWidth = 4;    // on each side of a header border
constexpr int kWheelNotch = 120; // eighths of a degree
constexpr int kLastColumn = CGridGeometry::kMaxRows;

/// A character that starts an edit; combinations belong to the window, except the one that reaches third-level
/// characters on some keyboards.
bool IsTyped(const QKeyEvent& event) {
    const QString text = event.text();
    if (text.isEmpty() || !text.at(0).isPrint()) return false;
    const Qt::KeyboardModifiers held = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return held == Qt::NoModifier || held == (Qt::ControlModifier | Qt::AltModifier);
}

} // namespace

// ---- Keyboard

bool CGridInput::MoveByKey(const QKeyEvent& event) {
    const bool extend = event.modifiers().testFlag(Qt::ShiftModifier);
    const bool far = event.modifiers().testFlag(Qt::ControlModifier);
    SGridCell to = extend ? m_selector.State().reach : m_grid.FocusCell();
    const int firstRow = m_grid.Geometry().RowAway(1, 0);
    const int lastRow = m_grid.Geometry().RowAway(m_grid.RowCount(), 0);
    const int firstColumn = m_grid.NextColumn(0, 1);
    const int lastColumn = m_grid.NextColumn(m_grid.ColumnCount() + 1, -1);
    switch (event.key()) {
    case Qt::Key_Up:
        to.row = far ? firstRow : m_grid.Geometry().RowAway(to.row, -1);
        break;
    case Qt::Key_Down:
        to.row = far ? lastRow : m_grid.Geometry().RowAway(to.row, 1);
        break;
    case Qt::Key_Left:
        to.column = far ? firstColumn : m_grid.NextColumn(to.column, -1);
        break;
    case Qt::Key_Right:
        to.column = far ? lastColumn : m_grid.NextColumn(to.column, 1);
        break;
    case Qt::Key_Home:
        to.column = firstColumn;
        if (far) to.row = firstRow;
        break;
    case Qt::Key_End:
        to.column = lastColumn;
        if (far) to.row = lastRow;
        break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
        // The page turns under the focus, which keeps its place on the screen.
        const int rows = event.key() == Qt::Key_PageDown ? m_selector.RowsPerPage() : -m_selector.RowsPerPage();
        to.row = m_grid.Geometry().RowAway(to.row, rows);
        m_grid.verticalScrollBar()->setValue(m_grid.verticalScrollBar()->value() +
                                             rows * m_grid.Geometry().RowHeight());
        break;
    }
    default:
        return false;
    }
    m_selector.MoveTo(to, extend);
    return true;
}

bool CGridInput::SelectByKey(const QKeyEvent& event) {
    const SGridCell focus = m_grid.FocusCell();
    if (event.matches(QKeySequence::SelectAll)) {
        m_selector.Update({focus, {1, 1}, {m_grid.RowCount(), kLastColumn}});
        return true;
    }
    if (event.key() != Qt::Key_Space) return false;
    const SGridRange range = m_grid.SelectedRange();
    if (event.modifiers() == Qt::ControlModifier) {
        m_selector.Update({focus, {1, range.firstColumn}, {m_grid.RowCount(), range.lastColumn}});
        return true;
    }
    if (event.modifiers() == Qt::ShiftModifier) {
        m_selector.Update({focus, {range.firstRow, 1}, {range.lastRow, kLastColumn}});
        return true;
    }
    return false;
}

bool CGridInput::EditByKey(const QKeyEvent& event) {
    const SGridCell at = m_grid.FocusCell();
    if (event.key() == Qt::Key_F2 && event.modifiers() == Qt::NoModifier) return m_edit.Begin(at.row, at.column);
    return IsTyped(event) && m_edit.Begin(at.row, at.column, BytesFromQt(event.text()));
}

void CGridInput::RequestMenu() {
    const SGridCell at = m_grid.FocusCell();
    m_grid.EnsureVisible(at.row, at.column);
    const QRect place = m_grid.Geometry().VisibleCellRect(at.row, at.column);
    const bool any = m_grid.RowCount() > 0 && m_grid.ColumnCount() > 0;
    Q_EMIT m_grid.ContextMenuRequested(any ? EGridPart::Cell : EGridPart::Outside, any ? at.row : -1,
                                       any ? at.column : -1, m_grid.viewport()->mapToGlobal(place.bottomLeft()));
}

void CGridInput::KeyPress(QKeyEvent& event) {
    // What the editor has no use for must not move the focus under it.
    if (m_edit.IsOpen()) return event.ignore();
    const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
    switch (event.key()) {
    case Qt::Key_Escape:
        if (!m_drag.IsOn()) break;
        return m_drag.Cancel();
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        if ((event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) != 0) break;
        const SGridCell focus = m_grid.FocusCell();
        return m_selector.MoveTo({m_grid.Geometry().RowAway(focus.row, shift ? -1 : 1), focus.column}, false);
    }
    case Qt::Key_F10:
        if (event.modifiers() != Qt::ShiftModifier) break;
        return RequestMenu();
    default:
        break;
    }
    const bool alt = event.modifiers().testFlag(Qt::AltModifier);
    if (!alt && (MoveByKey(event) || SelectByKey(event))) return;
    if (!EditByKey(event)) event.ignore(); // the window's shortcuts and the focus chain
}

// ---- Mouse

int CGridInput::BorderAt(const QPoint& place) const {
    if (place.y() < 0 || place.y() >= m_grid.Geometry().HeaderHeight() || place.x() < 0) return 0;
    int column = m_grid.Geometry().ColumnAt(place.x());
    if (column < 0) column = m_grid.ColumnCount() + 1;
    if (column >= 1 && column <= m_grid.ColumnCount() &&
        m_grid.Geometry().ColumnLeft(column) + m_grid.Geometry().ColumnWidth(column) - place.x() <= kGripWidth)
        return column;
    const int stuck = m_grid.Geometry().StuckColumn();
    const bool underFixed =
        !m_grid.Geometry().IsFixed(column) && m_grid.Geometry().ColumnLeft(column) <= m_grid.Geometry().FixedWidth();
    const int left = underFixed ? m_grid.Geometry().FixedWidth() : m_grid.Geometry().ColumnLeft(column);
    if (place.x() - left >= kGripWidth) return 0;
    if (underFixed && stuck > 0) return stuck;
    const int from = underFixed || (stuck > 0 && column == stuck) ? m_grid.Geometry().ShownLockedColumns() + 1 : column;
    const int before = m_grid.NextColumn(from, -1);
    return before != from ? before : 0;
}

void CGridInput::UpdateCursor(const QPoint& place) {
    const bool resizing = m_drag.IsResizing() || (!m_drag.IsOn() && BorderAt(place) > 0);
    if (resizing)
        m_grid.viewport()->setCursor(Qt::SplitHCursor);
    else if (m_drag.IsFar())
        m_grid.viewport()->setCursor(Qt::ClosedHandCursor);
    else
        m_grid.viewport()->unsetCursor();
}

void CGridInput::MousePress(const QMouseEvent& event) {
    m_edit.Finish(EEditEnd::Stay);
    const QPoint place = event.position().toPoint();
    const SGridCell at = m_grid.CellAt(place);
    if (event.button() == Qt::RightButton) {
        m_drag.Cancel();
        return m_selector.SelectUnder(at); // a menu opens on what is selected, or else on what is under the mouse
    }
    if (event.button() != Qt::LeftButton) return;
    if (const int border = BorderAt(place); border > 0)
        m_drag.StartResize(place, border);
    else
        m_drag.Press(place, at, event.modifiers().testFlag(Qt::ShiftModifier));
}

void CGridInput::MouseMove(const QMouseEvent& event) {
    const QPoint place = event.position().toPoint();
    // A window that opened while the button was down, such as one about the edit that the press ended, got its release.
    if (m_drag.IsOn() && !event.buttons().testFlag(Qt::LeftButton)) m_drag.Cancel();
    if (m_drag.IsOn()) m_drag.To(place);
    UpdateCursor(place);
}

void CGridInput::MouseRelease(const QMouseEvent& event) {
    if (event.button() == Qt::LeftButton && m_drag.IsOn()) m_drag.Drop();
    UpdateCursor(event.position().toPoint());
}

void CGridInput::DoubleClick(const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton) return;
    const QPoint place = event.position().toPoint();
    const SGridCell at = m_grid.CellAt(place);
    if (const int border = BorderAt(place); border > 0)
        m_grid.Resize(border, m_grid.FitWidth(border));
    else if (m_grid.PartOf(at) == EGridPart::ColumnHeader)
        Q_EMIT m_grid.HeaderDoubleClicked(at.column);
    else if (m_grid.PartOf(at) == EGridPart::Cell && !m_edit.Begin(at.row, at.column))
        Q_EMIT m_grid.CellDoubleClicked(at.row, at.column);
}

void CGridInput::Menu(QContextMenuEvent& event) {
    event.accept();
    if (event.reason() == QContextMenuEvent::Keyboard) return RequestMenu();
    const SGridCell at = m_grid.CellAt(event.pos());
    const EGridPart part = m_grid.PartOf(at);
    const bool outside = part == EGridPart::Outside;
    Q_EMIT m_grid.ContextMenuRequested(part, outside ? -1 : at.row, outside ? -1 : at.column, event.globalPos());
}

void CGridInput::TurnZoom(QWheelEvent& event) {
    event.accept();
    m_zoomRest += event.angleDelta().y();
    const int notches = m_zoomRest / kWheelNotch;
    m_zoomRest -= notches * kWheelNotch;
    if (notches != 0) Q_EMIT m_grid.ZoomTurned(notches);
}

void CGridInput::Wheel(QWheelEvent& event) {
    if (event.modifiers().testFlag(Qt::ControlModifier)) return TurnZoom(event);
    QPoint pixels;
    if (event.phase() != Qt::NoScrollPhase && !event.pixelDelta().isNull()) {
        pixels = event.pixelDelta();
    } else {
        // A notch moves whole rows; finer wheels move their part of it, and what is less than a pixel is kept.
        const int perNotch = std::max(1, QApplication::wheelScrollLines()) * m_grid.Geometry().RowHeight();
        const QPoint angle = event.modifiers().testFlag(Qt::ShiftModifier) && event.angleDelta().x() == 0
                                 ? event.angleDelta().transposed()
                                 : event.angleDelta();
        m_wheelRest += angle * perNotch;
        pixels = QPoint(m_wheelRest.x() / kWheelNotch, m_wheelRest.y() / kWheelNotch);
        m_wheelRest -= pixels * kWheelNotch;
    }
    m_grid.horizontalScrollBar()->setValue(m_grid.horizontalScrollBar()->value() - pixels.x());
    m_grid.verticalScrollBar()->setValue(m_grid.verticalScrollBar()->value() - pixels.y());
    event.accept();
}

} // namespace vx
