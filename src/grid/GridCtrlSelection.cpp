#include "grid/GridAccessible.h"
#include "grid/GridCtrl.h"

#include <QAccessible>
#include <QScrollBar>
#include <algorithm>

// The focus cell and the selected range.

namespace vx {

namespace {

int RowAfterMove(const std::vector<int>& newRowOf, int row) {
    return static_cast<size_t>(row) < newRowOf.size() ? newRowOf[static_cast<size_t>(row)] : row;
}

} // namespace

SGridSelection CGridCtrl::Clamped(SGridSelection selection) const {
    for (SGridCell* cell : {&selection.focus, &selection.anchor, &selection.reach}) {
        cell->row = std::clamp(cell->row, 1, std::max(1, RowCount()));
        cell->column = std::clamp(cell->column, 1, std::max(1, ColumnCount()));
    }
    selection.focus.row = m_geometry.RowAway(selection.focus.row, 0); // A range may hold hidden rows.
    return selection;
}

// A row that was not selected never becomes so. Hidden rows that were selected with others may stay elsewhere.
SGridSelection CGridCtrl::WithItsRows(const std::vector<int>& newRowOf) const {
    SGridSelection next = m_selection;
    next.focus.row = RowAfterMove(newRowOf, next.focus.row);
    if (WholeColumnsSelected()) return next;
    const SGridRange range = m_selection.Range();
    int first = RowCount() + 1;
    int last = 0;
    for (int row = range.firstRow; row <= range.lastRow; ++row) {
        if (IsRowHidden(row)) continue;
        first = std::min(first, RowAfterMove(newRowOf, row));
        last = std::max(last, RowAfterMove(newRowOf, row));
    }
    int selected = 0; // Of the rows that are now from the first to the last.
    for (int row = range.firstRow; row <= range.lastRow; ++row) {
        const int now = RowAfterMove(newRowOf, row);
        if (now >= first && now <= last) ++selected;
    }
    if (selected != last - first + 1) first = last = next.focus.row;
    // The anchor stays with the row of the focus where that is an edge of the range.
    const bool down = next.focus.row == first || (next.focus.row != last && next.anchor.row <= next.reach.row);
    next.anchor.row = down ? first : last;
    next.reach.row = down ? last : first;
    return next;
}

void CGridCtrl::MoveRows(const std::vector<int>& newRowOf, std::vector<int> hidden) {
    const SGridSelection next = WithItsRows(newRowOf);
    if (m_editing) m_editedCell.row = RowAfterMove(newRowOf, m_editedCell.row);
    m_rowsMoved = true;
    m_geometry.SetHiddenRows(std::move(hidden));
    UpdateSelection(next);
    LayoutChanged();
}

QRect CGridCtrl::RangeRect(const SGridRange& range) const {
    const int top = m_geometry.RowTop(range.firstRow);
    const int bottom = m_geometry.RowTop(range.lastRow) + m_geometry.CellRect(range.lastRow, 0).height();
    return {0, top, viewport()->width(), bottom - top};
}

void CGridCtrl::UpdateSelection(const SGridSelection& next) {
    const SGridSelection old = m_selection;
    m_selection = Clamped(next);
    if (m_selection == old) return;
    const QRect header(0, 0, viewport()->width(), m_geometry.HeaderHeight());
    viewport()->update(QRegion(header) | RangeRect(old.Range()) | RangeRect(m_selection.Range()));
    if (m_selection.focus != old.focus && hasFocus()) updateMicroFocus(); // not every cell takes texts
    const SGridSelection now = m_selection;                               // a receiver may select something else
    if (now.focus != old.focus && !(now.focus.row == old.focus.row && IsSpan(now.focus.row))) AnnounceFocus();
    if (now.Range() != old.Range()) AnnounceSelection(*this, old, now);
    if (now.focus != old.focus) Q_EMIT FocusCellChanged(now.focus.row, now.focus.column);
    if (now.Range() != old.Range()) Q_EMIT SelectionChanged();
}

void CGridCtrl::AnnounceFocus() {
    AnnounceFocusCell(*this);
    m_speech.Moved();
}

void CGridCtrl::SetFocusCell(int row, int column) {
    row = m_geometry.RowAway(row, 0);
    const int top = m_geometry.RowTop(row);
    if (top < m_geometry.HeaderHeight() || top + m_geometry.RowHeight() > viewport()->height()) {
        const int above = m_geometry.ScrolledHeight() / m_geometry.RowHeight() / 2;
        verticalScrollBar()->setValue((m_geometry.PlaceOfRow(row) - 1 - above) * m_geometry.RowHeight());
    }
    const SGridCell cell{row, std::clamp(column, 1, std::max(1, ColumnCount()))};
    const bool seen = m_geometry.VisibleCellRect(cell.row, cell.column).width() == ColumnWidth(cell.column);
    if (!seen && !IsSpan(row)) {
        // Its right neighbour too, where there is room: what was looked for should not hide in the corner.
        EnsureVisible(cell.row, NextColumn(cell.column, 1));
        EnsureVisible(cell.row, cell.column);
    }
    UpdateSelection({cell, cell, cell});
}

void CGridCtrl::SelectRange(const SGridRange& range) {
    const SGridCell first{range.firstRow, range.firstColumn};
    UpdateSelection({first, first, {range.lastRow, range.lastColumn}});
}

void CGridCtrl::EnsureVisible(int row, int column) {
    const QPoint scroll = m_geometry.ScrollToShow(row, column);
    horizontalScrollBar()->setValue(scroll.x());
    verticalScrollBar()->setValue(scroll.y());
}

void CGridCtrl::KeepSelectionInside() {
    SGridSelection inside = Clamped(m_selection);
    // All that was selected has been hidden: the neighbour of it is selected alone.
    if (inside.focus.row != m_selection.focus.row && !inside.Range().HasRow(inside.focus.row))
        inside = {inside.focus, inside.focus, inside.focus};
    UpdateSelection(inside);
    SGridCell focus = m_selection.focus;
    if (ColumnWidth(focus.column) > 0) return;
    // The column under the focus has been hidden: on to its neighbour, the next one if there is one.
    const int next = NextColumn(focus.column, 1);
    focus.column = next != focus.column ? next : NextColumn(focus.column, -1);
    UpdateSelection({focus, focus, focus});
}

int CGridCtrl::NextColumn(int column, int step) const {
    for (int c = column + step; c >= 1 && c <= ColumnCount(); c += step)
        if (ColumnWidth(c) > 0) return c;
    return column;
}

int CGridCtrl::RowsPerPage() const { return std::max(1, m_geometry.ScrolledHeight() / m_geometry.RowHeight()); }

void CGridCtrl::MoveTo(SGridCell cell, bool extend) {
    cell.row = m_geometry.RowAway(cell.row, 0);
    cell.column = std::clamp(cell.column, 1, std::max(1, ColumnCount()));
    SGridCell anchor = m_selection.anchor;
    if (IsRowHidden(anchor.row)) anchor.row = m_selection.focus.row;
    if (extend)
        UpdateSelection({m_selection.focus, anchor, cell});
    else
        UpdateSelection({cell, cell, cell});
    EnsureVisible(cell.row, cell.column);
}

bool CGridCtrl::StepInRow(int step) {
    if (RowCount() == 0) return false;
    // A row with one text across all columns is one stop.
    SGridCell to = m_selection.focus;
    const int column = IsSpan(to.row) ? to.column : NextColumn(to.column, step);
    if (column == to.column) {
        const int row = m_geometry.RowAway(to.row, step);
        if (row == to.row) return false;
        to.row = row;
        to.column = step > 0 ? NextColumn(0, 1) : NextColumn(ColumnCount() + 1, -1);
    } else {
        to.column = column;
    }
    MoveTo(to, false);
    return true;
}

void CGridCtrl::SelectUnder(const SGridCell& at) {
    const SGridRange range = SelectedRange();
    switch (PartOf(at)) {
    case EGridPart::Cell:
        if (!range.Has(at.row, at.column)) MoveTo(at, false);
        break;
    case EGridPart::RowHeader:
        if (!WholeRowsSelected() || !range.HasRow(at.row)) SelectRow(at.row);
        break;
    case EGridPart::ColumnHeader:
        if (!WholeColumnsSelected() || !range.HasColumn(at.column)) SelectColumn(at.column);
        break;
    default:
        break;
    }
}

void CGridCtrl::SelectRow(int row) {
    UpdateSelection({{row, m_selection.focus.column}, {row, 1}, {row, ColumnCount()}});
}

void CGridCtrl::SelectColumn(int column) {
    UpdateSelection({{m_selection.focus.row, column}, {1, column}, {RowCount(), column}});
}

bool CGridCtrl::WholeColumnsSelected() const {
    const SGridRange range = SelectedRange();
    return RowCount() > 0 && range.firstRow == 1 && range.lastRow == RowCount();
}

bool CGridCtrl::WholeRowsSelected() const {
    const SGridRange range = SelectedRange();
    return ColumnCount() > 0 && range.firstColumn == 1 && range.lastColumn == ColumnCount();
}

void CGridCtrl::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    // After the grid itself has been announced, which happens behind this event.
    if (QAccessible::isActive())
        QMetaObject::invokeMethod(
            this, [this] { AnnounceFocus(); }, Qt::QueuedConnection);
    viewport()->update(RangeRect(m_selection.Range()));
}

void CGridCtrl::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    CancelDrag();
    if (m_composing) FinishEdit(EEditEnd::Stay);
    viewport()->update(RangeRect(m_selection.Range()));
}

} // namespace vx
