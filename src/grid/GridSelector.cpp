// SPDX-License-Identifier: MIT
#include "grid/GridSelector.h"

#include "grid/GridAccessible.h"
#include "grid/GridView.h"

#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace vx {

SGridSelection CGridSelector::Clamped(SGridSelection selection) const {
    for (SGridCell* cell : {&selection.focus, &selection.anchor, &selection.reach}) {
        cell->row = std::clamp(cell->row, 1, std::max(1, m_grid.RowCount()));
        cell->column = std::clamp(cell->column, 1, std::max(1, m_grid.ColumnCount()));
    }
    selection.focus.row = m_grid.Geometry().RowAway(selection.focus.row, 0); // A range may hold hidden rows.
    return selection;
}

// A row that was not selected never becomes so. Hidden rows that were selected with others may stay elsewhere.
SGridSelection CGridSelector::WithItsRows(const std::vector<int>& newRowOf) const {
    SGridSelection next = m_state;
    next.focus.row = RowAfterMove(newRowOf, next.focus.row);
    if (m_grid.WholeColumnsSelected()) return next;
    const SGridRange range = Range();
    int first = m_grid.RowCount() + 1;
    int last = 0;
    for (int row = range.firstRow; row <= range.lastRow; ++row) {
        if (m_grid.IsRowHidden(row)) continue;
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

void CGridSelector::Update(const SGridSelection& next) {
    const SGridSelection old = m_state;
    m_state = Clamped(next);
    if (m_state == old) return;
    const QRect header(0, 0, m_grid.viewport()->width(), m_grid.Geometry().HeaderHeight());
    m_grid.viewport()->update(QRegion(header) | m_grid.RangeRect(old.Range()) | m_grid.RangeRect(Range()));
    if (m_state.focus != old.focus && m_grid.hasFocus()) m_grid.updateMicroFocus(); // not every cell takes texts
    const SGridSelection now = m_state; // a receiver may select something else
    if (now.focus != old.focus && !(now.focus.row == old.focus.row && m_grid.IsSpan(now.focus.row))) Announce();
    if (now.Range() != old.Range()) AnnounceSelection(m_grid, old, now);
    if (now.focus != old.focus) Q_EMIT m_grid.FocusCellChanged(now.focus.row, now.focus.column);
    if (now.Range() != old.Range()) Q_EMIT m_grid.SelectionChanged();
}

void CGridSelector::Announce() {
    AnnounceFocusCell(m_grid);
    m_speech.Moved();
}

void CGridSelector::FocusOn(int row, int column) {
    row = m_grid.Geometry().RowAway(row, 0);
    const int top = m_grid.Geometry().RowTop(row);
    if (top < m_grid.Geometry().HeaderHeight() || top + m_grid.Geometry().RowHeight() > m_grid.viewport()->height()) {
        const int above = m_grid.Geometry().ScrolledHeight() / m_grid.Geometry().RowHeight() / 2;
        m_grid.verticalScrollBar()->setValue((m_grid.Geometry().ShownIndexOf(row) - 1 - above) *
                                             m_grid.Geometry().RowHeight());
    }
    const SGridCell cell{row, std::clamp(column, 1, std::max(1, m_grid.ColumnCount()))};
    const bool seen =
        m_grid.Geometry().VisibleCellRect(cell.row, cell.column).width() == m_grid.Geometry().ColumnWidth(cell.column);
    if (!seen && !m_grid.IsSpan(row)) {
        // Its right neighbour too, where there is room: what was looked for should not hide in the corner.
        m_grid.EnsureVisible(cell.row, m_grid.NextColumn(cell.column, 1));
        m_grid.EnsureVisible(cell.row, cell.column);
    }
    Update({cell, cell, cell});
}

void CGridSelector::KeepInside() {
    SGridSelection inside = Clamped(m_state);
    // All that was selected has been hidden: the neighbour of it is selected alone.
    if (inside.focus.row != m_state.focus.row && !inside.Range().HasRow(inside.focus.row))
        inside = {inside.focus, inside.focus, inside.focus};
    Update(inside);
    SGridCell focus = m_state.focus;
    if (m_grid.ColumnWidth(focus.column) > 0) return;
    // The column under the focus has been hidden: on to its neighbour, the next one if there is one.
    const int next = m_grid.NextColumn(focus.column, 1);
    focus.column = next != focus.column ? next : m_grid.NextColumn(focus.column, -1);
    Update({focus, focus, focus});
}

int CGridSelector::RowsPerPage() const {
    return std::max(1, m_grid.Geometry().ScrolledHeight() / m_grid.Geometry().RowHeight());
}

void CGridSelector::MoveTo(SGridCell cell, bool extend) {
    cell.row = m_grid.Geometry().RowAway(cell.row, 0);
    cell.column = std::clamp(cell.column, 1, std::max(1, m_grid.ColumnCount()));
    SGridCell anchor = m_state.anchor;
    if (m_grid.IsRowHidden(anchor.row)) anchor.row = m_state.focus.row;
    if (extend)
        Update({m_state.focus, anchor, cell});
    else
        Update({cell, cell, cell});
    m_grid.EnsureVisible(cell.row, cell.column);
}

bool CGridSelector::StepInRow(int step) {
    if (m_grid.RowCount() == 0) return false;
    // A row with one text across all columns is one stop.
    SGridCell to = m_state.focus;
    const int column = m_grid.IsSpan(to.row) ? to.column : m_grid.NextColumn(to.column, step);
    if (column == to.column) {
        const int row = m_grid.Geometry().RowAway(to.row, step);
        if (row == to.row) return false;
        to.row = row;
        to.column = step > 0 ? m_grid.NextColumn(0, 1) : m_grid.NextColumn(m_grid.ColumnCount() + 1, -1);
    } else {
        to.column = column;
    }
    MoveTo(to, false);
    return true;
}

void CGridSelector::SelectUnder(const SGridCell& at) {
    const SGridRange range = Range();
    switch (m_grid.PartOf(at)) {
    case EGridPart::Cell:
        if (!range.Has(at.row, at.column)) MoveTo(at, false);
        break;
    case EGridPart::RowHeader:
        if (!m_grid.WholeRowsSelected() || !range.HasRow(at.row)) SelectRow(at.row);
        break;
    case EGridPart::ColumnHeader:
        if (!m_grid.WholeColumnsSelected() || !range.HasColumn(at.column)) SelectColumn(at.column);
        break;
    default:
        break;
    }
}

void CGridSelector::SelectRow(int row) { Update({{row, m_state.focus.column}, {row, 1}, {row, m_grid.ColumnCount()}}); }

void CGridSelector::SelectColumn(int column) {
    Update({{m_state.focus.row, column}, {1, column}, {m_grid.RowCount(), column}});
}

} // namespace vx
