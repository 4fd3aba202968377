// SPDX-License-Identifier: MIT
#include "grid/GridCtrl.h"

#include <QAccessible>
#include <QDropEvent>
#include <QMimeData>

#include <utility>

namespace vx {

CGridCtrl::CGridCtrl(QWidget* parent) : CGridView(parent) {
    InstallGridAccessibility();
    Begin();
}

CGridCtrl::~CGridCtrl() = default;

void CGridCtrl::SetSource(const CCellSource* source) {
    if (source == nullptr) EndEdit(false);
    CGridView::SetSource(source);
}

void CGridCtrl::FlushChanges() {
    m_speech.TextsChanged();
    CGridView::FlushChanges();
}

void CGridCtrl::LookChanged() {
    if (m_edit.IsOpen()) m_edit.Dress();
}

void CGridCtrl::timerEvent(QTimerEvent* event) {
    if (!m_drag.OnTimer(event->timerId())) CGridView::timerEvent(event);
}

bool CGridCtrl::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave && !m_drag.IsOn()) viewport()->unsetCursor();
    return CGridView::viewportEvent(event);
}

void CGridCtrl::MoveRows(const std::vector<int>& newRowOf, std::vector<int> hidden) {
    const SGridSelection next = m_selector.WithItsRows(newRowOf);
    if (IsEditing()) m_edit.MoveToRow(RowAfterMove(newRowOf, EditedCell().row));
    TakeMovedRows(std::move(hidden));
    m_selector.Update(next);
    LayoutChanged();
}

void CGridCtrl::focusInEvent(QFocusEvent* event) {
    CGridView::focusInEvent(event);
    // After the grid itself has been announced, which happens after this event.
    if (QAccessible::isActive())
        QMetaObject::invokeMethod(
            this, [this] { m_selector.Announce(); }, Qt::QueuedConnection);
    viewport()->update(RangeRect(SelectedRange()));
}

void CGridCtrl::focusOutEvent(QFocusEvent* event) {
    CGridView::focusOutEvent(event);
    m_drag.Cancel();
    if (m_edit.IsComposing()) m_edit.Finish(EEditEnd::Stay);
    viewport()->update(RangeRect(SelectedRange()));
}

void CGridCtrl::SelectRange(const SGridRange& range) {
    const SGridCell first{range.firstRow, range.firstColumn};
    m_selector.Update({first, first, {range.lastRow, range.lastColumn}});
}

bool CGridCtrl::focusNextPrevChild(bool next) {
    // From cell to cell; after the last one and before the first one to the neighbouring widget.
    if (!IsEditing() && hasFocus() && m_selector.StepInRow(next ? 1 : -1)) return true;
    return CGridView::focusNextPrevChild(next);
}

QVariant CGridCtrl::inputMethodQuery(Qt::InputMethodQuery query) const {
    const SGridCell at = FocusCell();
    if (query == Qt::ImEnabled) return IsEditing() || MayEdit(at.row, at.column);
    if (query == Qt::ImCursorRectangle) return Geometry().VisibleCellRect(at.row, at.column);
    return CGridView::inputMethodQuery(query);
}

void CGridCtrl::dragEnterEvent(QDragEnterEvent* event) { dragMoveEvent(event); }

void CGridCtrl::dragMoveEvent(QDragMoveEvent* event) {
    if (event->mimeData() == nullptr || !AcceptsDrop(*event->mimeData())) return event->ignore();
    // What is dropped here stays where it came from.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    m_drag.Over(event->position().toPoint());
}

void CGridCtrl::dragLeaveEvent(QDragLeaveEvent*) { m_drag.End(); }

void CGridCtrl::dropEvent(QDropEvent* event) {
    m_drag.End();
    EndEdit(true);
    if (event->mimeData() == nullptr || !AcceptsDrop(*event->mimeData())) return event->ignore();
    event->setDropAction(Qt::CopyAction);
    event->accept();
    const SGridCell at = m_drag.NearestCell(event->position().toPoint());
    Q_EMIT DataDropped(event->mimeData(), at.row, at.column);
}

CNorvGridCtrl::CNorvGridCtrl(QWidget* parent) : CGridCtrl(parent) {
    setObjectName(QStringLiteral("grid"));
    setAccessibleName(QStringLiteral("Watchlist"));
}

void CNorvGridCtrl::ApplyViewSettings(bool gridLines, bool shading, bool ellipsis, bool reducedMotion) {
    SetOptions({gridLines ? EGridLines::Both : EGridLines::None, shading, ellipsis, !reducedMotion});
}

void CNorvGridCtrl::ApplyTheme(std::string_view name) {
    SetThemeMode(name == "dark" ? EThemeMode::Dark : name == "light" ? EThemeMode::Light : EThemeMode::System);
}

} // namespace vx
