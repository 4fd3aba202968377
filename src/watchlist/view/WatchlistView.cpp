// SPDX-License-Identifier: MIT
#include "watchlist/view/WatchlistView.h"

#include "settings/Settings.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/CellEntry.h"
#include "watchlist/view/RegisteredMessage.h"
#include "watchlist/view/WatchlistGrid.h"

#include <QApplication>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <string_view>
#include <utility>

namespace vx {

namespace {

std::string_view View(const QByteArray& bytes) { return {bytes.constData(), static_cast<size_t>(bytes.size())}; }

} // namespace

CWatchlistView::CWatchlistView(CWatchlistDoc& doc, CSettings& settings, QWidget* parent)
    : QWidget(parent), m_doc(doc), m_settings(settings), m_grid(new CWatchlistGrid(doc, this)), m_sorter(doc),
      m_paintMessage(RegisterMessage(kPaintMessageName)), m_connectMessage(RegisterMessage(kConnectStatusMessageName)) {
    setObjectName(QStringLiteral("watchlistView"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_grid);
    setFocusProxy(m_grid);
    connect(m_grid, &CGridCtrl::CellEdited, this, &CWatchlistView::OnCellEdited);
    connect(m_grid, &CGridCtrl::HeaderDoubleClicked, this, &CWatchlistView::OnHeaderSort);

    {
        auto update = m_doc.Update();
        update->Options().sort = {};
        update->Options().trailingRows = SWatchlistOptions{}.trailingRows;
        update->Options().lockedColumns = 0;
    }
    if (!m_settings.ReadBoolean(kShowEllipsis)) m_settings.WriteBoolean(kShowEllipsis, true);
    ApplyViewSettings();
    m_grid->SetFocusCell(1, 1);

    m_repaint.setProperty("timerId", kRepaintTimer);
    connect(&m_repaint, &QTimer::timeout, this, &CWatchlistView::OnRepaintTimer);
    m_repaint.start(kRepaintMs);
    m_autoSort.setObjectName(QStringLiteral("autoSortTimer"));
    m_autoSort.setProperty("timerId", kAutoSortTimer);
    m_autoSort.setSingleShot(true);
    connect(&m_autoSort, &QTimer::timeout, this, &CWatchlistView::OnAutoSortTimer);
    m_doc.SetObserver(this);
}

CWatchlistView::~CWatchlistView() {
    m_repaint.stop();
    m_autoSort.stop();
    m_doc.SetObserver(nullptr);
}

const SSpecialColumns& CWatchlistView::Special() const { return m_grid->Special(); }

void CWatchlistView::ApplyViewSettings() {
    m_grid->ApplyViewSettings(m_settings.ReadBoolean(kShowGridLines), m_settings.ReadBoolean(kShowShading),
                              m_settings.ReadBoolean(kShowEllipsis), m_settings.ReadBoolean(kReducedMotion));
    m_grid->KeepSymbolInSight(m_settings.ReadBoolean(kSymbolInSight));
}

void CWatchlistView::SetScale(const SScale& scale) {
    if (scale == m_doc.Options().scale) return;
    m_doc.RememberScale(scale);
    m_grid->TakeScale();
    Q_EMIT DocumentChanged();
}

// What the user does in the grid

void CWatchlistView::OnCellEdited(int row, int column, const QByteArray& oldText, const QByteArray& newText) {
    if (oldText != newText) {
        m_grid->SetMarkedRange({});
        if (m_doc.IsRejected(row) && !m_grid->EditBeganTyped())
            CorrectRejected(m_doc, row, View(newText));
        else
            EnterCellText(m_doc, row, column, View(oldText), View(newText));
    }
    if (!m_doc.IsModified()) m_doc.Edit({}, [](CWatchlistEdit&) {}); // An edit that changed nothing counts as one too.
    Q_EMIT DocumentChanged();
}

void CWatchlistView::ShowRows(int firstRow, int lastRow) {
    m_doc.RevealRows(firstRow, lastRow);
    m_grid->SelectRange({firstRow, lastRow, 1, m_grid->ColumnCount()});
    const int column = m_grid->FocusCell().column;
    m_grid->EnsureVisible(lastRow, column);
    m_grid->EnsureVisible(firstRow, column);
}

SSortSelection CWatchlistView::SortSelection() const {
    const SGridRange range = m_grid->SelectedRange();
    return {range.firstRow, range.lastRow, range.firstColumn, range.lastColumn, m_grid->FocusCell().column};
}

void CWatchlistView::OnHeaderSort(int column) {
    RequestHeaderSort(m_doc, column, SortSelection());
    ApplySortRecord();
    Q_EMIT DocumentChanged();
}

// Auto sort

void CWatchlistView::ApplySortRecord() {
    const SSortRecord& sort = m_doc.Options().sort;
    m_grid->SetSortMark(sort.column, sort.column < 1  ? ESortMark::None
                                     : sort.ascending ? ESortMark::Ascending
                                                      : ESortMark::Descending);
    if (!sort.autoSort) {
        SetOrderHeld(false);
        return m_autoSort.stop();
    }
    const int period = AutoSortPeriodMs(sort);
    const bool underWay = m_autoSort.interval() == 0;
    if (!m_autoSort.isActive() || (m_autoSort.interval() != period && !underWay)) m_autoSort.start(period);
}

bool CWatchlistView::IsBusy() const {
    return m_orderHeld || m_grid->IsBusy() || m_doc.Undo().IsRecording() ||
           QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr;
}

void CWatchlistView::OnAutoSortTimer() {
    m_autoSort.stop();
    const EAutoSortTick tick = m_sorter.Tick(IsBusy());
    if (tick == EAutoSortTick::UnderWay) return m_autoSort.start(0);
    ApplySortRecord();
    if (tick == EAutoSortTick::Off) Q_EMIT DocumentChanged();
}

void CWatchlistView::HoldOrder(bool hold) {
    SetOrderHeld(hold && m_doc.Options().sort.autoSort);
    if (!hold && m_doc.Options().sort.autoSort) OnAutoSortTimer();
}

void CWatchlistView::SetOrderHeld(bool held) {
    if (std::exchange(m_orderHeld, held) != held) Q_EMIT OrderHeldChanged(held);
}

// What the document tells

void CWatchlistView::OnRepaintTimer() {
    const bool pending = std::exchange(m_pending, false);
    if (pending) {
        m_inRepaint = true;
        m_doc.RepaintChangedRows();
        m_inRepaint = false;
    }
    m_grid->ReadScales(pending);
    if (pending) m_grid->FlushChanges();
}

bool CWatchlistView::ShownRows(std::vector<int>& rows) const {
    const CGridGeometry& geometry = m_grid->Geometry();
    rows.clear();
    for (int row = geometry.NextShownRow(geometry.FirstVisibleRow()); row <= geometry.LastVisibleRow();
         row = geometry.NextShownRow(row + 1))
        rows.push_back(row);
    return true;
}

void CWatchlistView::PostPaintMessage() { QCoreApplication::postEvent(this, new CRegisteredMessage(m_paintMessage)); }

void CWatchlistView::OnGridRebuilt() {
    m_grid->SetMarkedRange({});
    m_grid->Rebuild();
    ApplyViewSettings(); // A file brings some of them along.
    ApplySortRecord();
    Q_EMIT DocumentChanged();
}

void CWatchlistView::OnRowChanged(int row) {
    if (m_inRepaint) return m_grid->MarkChangedCells(row);
    m_grid->MarkEditedRow(row);
    m_grid->FlushChanges();
    Q_EMIT DocumentChanged();
}

void CWatchlistView::OnRowsMoved(const std::vector<int>& newRowOf) { m_grid->TakeRowOrder(newRowOf); }

void CWatchlistView::OnRowsChanged(int, int) {
    m_grid->SetMarkedRange({});
    m_grid->UpdateAll();
    ApplySortRecord();
    Q_EMIT DocumentChanged();
}

void CWatchlistView::OnReset() {
    m_grid->EndEdit(false);
    SetOrderHeld(false);
    m_grid->SetMarkedRange({});
    m_grid->SetFocusCell(1, 1);
    ApplyViewSettings();
}

void CWatchlistView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        m_grid->SetMarkedRange({});
    else
        QWidget::keyPressEvent(event);
}

void CWatchlistView::customEvent(QEvent* event) {
    if (event->type() == m_paintMessage)
        m_doc.OnPaintMessage();
    else if (event->type() == m_connectMessage)
        m_grid->SetStale(static_cast<CRegisteredMessage*>(event)->Number() == 0);
}

} // namespace vx
