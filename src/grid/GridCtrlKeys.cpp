#include "grid/GridCtrl.h"

#include "base/qt/QtText.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QScrollBar>

// What the user does with the keyboard while no editor has it.

namespace vx {

namespace {

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

bool CGridCtrl::MoveByKey(const QKeyEvent& event) {
    const bool extend = event.modifiers().testFlag(Qt::ShiftModifier);
    const bool far = event.modifiers().testFlag(Qt::ControlModifier);
    SGridCell to = extend ? m_selection.reach : m_selection.focus;
    const int firstRow = m_geometry.RowAway(1, 0);
    const int lastRow = m_geometry.RowAway(RowCount(), 0);
    const int firstColumn = NextColumn(0, 1);
    const int lastColumn = NextColumn(ColumnCount() + 1, -1);
    switch (event.key()) {
    case Qt::Key_Up:
        to.row = far ? firstRow : m_geometry.RowAway(to.row, -1);
        break;
    case Qt::Key_Down:
        to.row = far ? lastRow : m_geometry.RowAway(to.row, 1);
        break;
    case Qt::Key_Left:
        to.column = far ? firstColumn : NextColumn(to.column, -1);
        break;
    case Qt::Key_Right:
        to.column = far ? lastColumn : NextColumn(to.column, 1);
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
        const int rows = event.key() == Qt::Key_PageDown ? RowsPerPage() : -RowsPerPage();
        to.row = m_geometry.RowAway(to.row, rows);
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

bool CGridCtrl::EditByKey(const QKeyEvent& event) {
    const SGridCell at = m_selection.focus;
    if (event.key() == Qt::Key_F2 && event.modifiers() == Qt::NoModifier) return BeginEdit(at.row, at.column);
    return IsTyped(event) && BeginEdit(at.row, at.column, BytesFromQt(event.text()));
}

void CGridCtrl::RequestMenuByKey() {
    const SGridCell at = m_selection.focus;
    EnsureVisible(at.row, at.column);
    const QRect place = m_geometry.VisibleCellRect(at.row, at.column);
    const bool any = RowCount() > 0 && ColumnCount() > 0;
    Q_EMIT ContextMenuRequested(any ? EGridPart::Cell : EGridPart::Outside, any ? at.row : -1, any ? at.column : -1,
                                viewport()->mapToGlobal(place.bottomLeft()));
}

void CGridCtrl::keyPressEvent(QKeyEvent* event) {
    // What the editor has no use for must not move the focus under it.
    if (m_editing) return event->ignore();
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->key()) {
    case Qt::Key_Escape:
        if (m_drag == EDrag::None) break;
        return CancelDrag();
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        if ((event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) != 0) break;
        const SGridCell focus = m_selection.focus;
        return MoveTo({m_geometry.RowAway(focus.row, shift ? -1 : 1), focus.column}, false);
    }
    case Qt::Key_F10:
        if (event->modifiers() != Qt::ShiftModifier) break;
        return RequestMenuByKey();
    default:
        break;
    }
    const bool alt = event->modifiers().testFlag(Qt::AltModifier);
    if (!alt && (MoveByKey(*event) || SelectByKey(*event))) return;
    if (!EditByKey(*event)) event->ignore(); // the window's shortcuts and the focus chain
}

bool CGridCtrl::focusNextPrevChild(bool next) {
    // From cell to cell; behind the last one and before the first one on to the neighbouring widget.
    if (!m_editing && hasFocus() && StepInRow(next ? 1 : -1)) return true;
    return QAbstractScrollArea::focusNextPrevChild(next);
}

// ---- Input methods

// A composition that has begun stays with the grid until it is done, for a change of the focus would break it off;
// meanwhile the editor shows it.
void CGridCtrl::inputMethodEvent(QInputMethodEvent* event) {
    const bool composing = !event->preeditString().isEmpty();
    const bool done = !event->commitString().isEmpty();
    const SGridCell at = m_selection.focus;
    if (!m_editing) {
        if (!composing && !done) return event->ignore();
        m_composing = true; // keeps the keyboard here
        if (!BeginEdit(at.row, at.column, std::string())) {
            m_composing = false;
            return event->ignore();
        }
    }
    QCoreApplication::sendEvent(m_editor, event);
    if (!m_composing || composing) return;
    m_composing = false;
    if (done)
        m_editor->setFocus();
    else
        EndEdit(false);
}

QVariant CGridCtrl::inputMethodQuery(Qt::InputMethodQuery query) const {
    const SGridCell at = m_selection.focus;
    if (query == Qt::ImEnabled) return m_editing || MayEdit(at.row, at.column);
    if (query == Qt::ImCursorRectangle) return m_geometry.VisibleCellRect(at.row, at.column);
    return QAbstractScrollArea::inputMethodQuery(query);
}

} // namespace vx
