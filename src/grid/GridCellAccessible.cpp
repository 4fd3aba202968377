// SPDX-License-Identifier: MIT
#include "grid/GridCellAccessible.h"

#include "base/qt/QtText.h"
#include "grid/GridAccessible.h"
#include "grid/GridView.h"

namespace vx {

namespace {

/// The text of a cell as it is read to the user: arrows and dots have no sound of their own.
QString SpokenText(const CGridView& grid, const SGridCell& at) {
    SCell cell;
    if (at.row > 0 && at.column > 0 && grid.Source() != nullptr && !grid.IsSpan(at.row))
        grid.Source()->FillCell(at.row, at.column, cell);
    if (!cell.tickTrend) return QtText(grid.ShownText(at.row, at.column));
    QStringList words;
    for (const char c : cell.Text()) {
        const int symbol = CGridPainter::SymbolOf(static_cast<unsigned char>(c));
        if (symbol == kSymbolUp) words += QStringLiteral("up");
        if (symbol == kSymbolDown) words += QStringLiteral("down");
        if (symbol == kSymbolDot) words += QStringLiteral("unchanged");
    }
    return words.join(QLatin1Char(' '));
}

} // namespace

QString SpokenCell(const CGridView& grid, const SGridCell& at) {
    const QString text = SpokenText(grid, at);
    if (at.row == 0 || at.column == 0 || grid.IsSpan(at.row)) return text;
    return (SpokenPlace(grid, at.row, at.column) + QLatin1Char(' ') + text).trimmed();
}

CGridCellAccessible::CGridCellAccessible(CGridView* grid, const SGridCell& cell) : m_grid(grid), m_cell(cell) {}

bool CGridCellAccessible::isValid() const {
    return !m_grid.isNull() && m_cell.row <= m_grid->RowCount() && m_cell.column <= m_grid->ColumnCount();
}

bool CGridCellAccessible::IsHeading() const { return role() == QAccessible::Cell && m_grid->IsSpan(m_cell.row); }

// It was handed out before the row got its one text.
bool CGridCellAccessible::IsCovered() const { return m_cell.column > 1 && IsHeading(); }

QAccessibleInterface* CGridCellAccessible::parent() const { return QAccessible::queryAccessibleInterface(m_grid); }

QAccessible::Role CGridCellAccessible::role() const {
    if (m_cell.row == 0) return QAccessible::ColumnHeader;
    return m_cell.column == 0 ? QAccessible::RowHeader : QAccessible::Cell;
}

QString CGridCellAccessible::text(QAccessible::Text kind) const {
    if (!isValid() || IsCovered()) return {};
    if (kind == QAccessible::Name) return SpokenCell(*m_grid, m_cell);
    if (kind == QAccessible::Value) return SpokenText(*m_grid, m_cell);
    if (kind != QAccessible::Description || m_grid->Source() == nullptr || m_cell.column == 0) return {};
    return QtText(m_cell.row == 0 ? m_grid->Source()->HeaderTip(m_cell.column)
                                  : m_grid->Source()->CellTip(m_cell.row, m_cell.column));
}

QRect CGridCellAccessible::Whole() const {
    const CGridGeometry& geometry = m_grid->Geometry();
    const QRect cell = geometry.CellRect(m_cell.row, m_cell.column);
    if (!IsHeading()) return cell;
    const int left = geometry.ColumnWidth(0);
    return {left, cell.top(), geometry.Viewport().width() - left, cell.height()};
}

QRect CGridCellAccessible::Seen() const {
    const CGridGeometry& geometry = m_grid->Geometry();
    if (!IsHeading()) return geometry.VisibleCellRect(m_cell.row, m_cell.column);
    const QRect cells(0, geometry.HeaderHeight(), geometry.Viewport().width(), geometry.ScrolledHeight());
    return Whole().intersected(cells);
}

QRect CGridCellAccessible::rect() const {
    if (!isValid()) return {};
    const QRect seen = Seen();
    const QRect place = seen.isEmpty() ? Whole() : seen;
    return {m_grid->viewport()->mapToGlobal(place.topLeft()), place.size()};
}

QAccessible::State CGridCellAccessible::state() const {
    QAccessible::State state;
    state.invalid = !isValid();
    if (state.invalid) return state;
    const bool heading = IsHeading();
    const bool noWidth = heading ? IsCovered() : m_grid->ColumnWidth(m_cell.column) == 0;
    state.invisible = noWidth || m_grid->IsRowHidden(m_cell.row) || !m_grid->isVisible();
    state.offscreen = Seen().isEmpty();
    if (role() != QAccessible::Cell || IsCovered()) return state;
    const SGridCell focus = m_grid->FocusCell();
    state.focusable = state.selectable = true;
    state.focused = m_grid->hasFocus() && (heading ? focus.row == m_cell.row : focus == m_cell);
    state.selected = isSelected();
    state.editable = m_grid->MayEdit(m_cell.row, m_cell.column);
    state.readOnly = !state.editable;
    return state;
}

void* CGridCellAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableCellInterface) return static_cast<QAccessibleTableCellInterface*>(this);
    if (type == QAccessible::ActionInterface && role() == QAccessible::Cell)
        return static_cast<QAccessibleActionInterface*>(this);
    return nullptr;
}

bool CGridCellAccessible::isSelected() const {
    if (!isValid()) return false;
    const SGridRange range = m_grid->SelectedRange();
    return IsHeading() ? range.HasRow(m_cell.row) : range.Has(m_cell.row, m_cell.column);
}

int CGridCellAccessible::columnExtent() const { return isValid() && IsHeading() ? m_grid->ColumnCount() : 1; }

QStringList CGridCellAccessible::actionNames() const {
    QStringList names{setFocusAction()};
    if (isValid() && m_grid->MayEdit(m_cell.row, m_cell.column)) names += pressAction();
    return names;
}

void CGridCellAccessible::doAction(const QString& name) {
    if (!isValid()) return;
    m_grid->setFocus();
    m_grid->SetFocusCell(m_cell.row, m_cell.column);
    if (name == pressAction()) m_grid->BeginEdit(m_cell.row, m_cell.column);
}

QAccessibleInterface* CGridCellAccessible::Sibling(int row, int column) const {
    return isValid() ? parent()->child(row * (m_grid->ColumnCount() + 1) + column) : nullptr;
}

} // namespace vx
