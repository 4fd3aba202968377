// SPDX-License-Identifier: MIT
#include "grid/GridView.h"

#include "base/Clock.h"
#include "base/qt/QtText.h"

#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <array>
#include <utility>

namespace vx {

namespace {

constexpr int kHeaderPadding = 3; // what the header row has more than the others
constexpr int kWhole = 100;       // percent
constexpr int kMinNumberDigits = 3;
constexpr int kFitRows = 10000;
constexpr int kMinFitWidth = 24;

} // namespace

CGridView::CGridView(QWidget* parent) : QAbstractScrollArea(parent), m_corner(new QWidget) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    // Every pixel is painted in each pass, so nothing needs to be wiped first.
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setAttribute(Qt::WA_NoSystemBackground);
    viewport()->setMouseTracking(true);
    viewport()->setAcceptDrops(true);
    setAttribute(Qt::WA_InputMethodEnabled);
    m_corner->setAutoFillBackground(true);
    setCornerWidget(m_corner);
}

CGridView::~CGridView() = default;

void CGridView::Begin() {
    m_fonts.SetDotsPerInch(logicalDpiY());
    ChooseTheme();
    MeasureFonts();
}

void CGridView::SetSource(const CCellSource* source) {
    m_source = source;
    UpdateAll();
}

void CGridView::SetRowCount(int rows) {
    if (rows == RowCount()) return;
    m_geometry.SetRowCount(rows);
    FitRowNumbers();
    LayoutChanged();
    ShapeChanged();
}

void CGridView::SetHiddenRows(std::vector<int> rising) {
    if (rising == m_geometry.HiddenRows()) return;
    m_geometry.SetHiddenRows(std::move(rising));
    LayoutChanged();
    ShapeChanged();
}

void CGridView::SetColumnCount(int columns, int defaultWidth) {
    if (columns == ColumnCount()) return;
    m_geometry.SetColumnCount(columns, m_fonts.Zoomed(defaultWidth));
    m_widths.resize(static_cast<size_t>(ColumnCount()) + 1, defaultWidth);
    LayoutChanged();
    ShapeChanged();
}

void CGridView::SetColumnWidth(int column, int width) {
    if (TakeWidth(column, width)) LayoutChanged();
}

void CGridView::SetColumnWidths(const std::vector<int>& widths) {
    bool changed = false;
    const int columns = std::min(ColumnCount(), static_cast<int>(widths.size()));
    for (int column = 1; column <= columns; ++column)
        changed |= TakeWidth(column, widths[static_cast<size_t>(column) - 1]);
    if (changed) LayoutChanged();
}

bool CGridView::TakeWidth(int column, int width) {
    if (column < 1 || column > ColumnCount()) return false;
    int& kept = m_widths[static_cast<size_t>(column)];
    kept = std::clamp(width, 0, kMaxColumnWidth);
    return m_geometry.SetColumnWidth(column, m_fonts.Zoomed(kept));
}

int CGridView::FitWidth(int column) {
    if (m_source == nullptr || column < 1 || column > ColumnCount()) return ColumnWidth(column);
    m_cell.Reset();
    m_source->FillHeader(column, m_cell);
    int width = CGridPainter::NeededWidth(m_cell, m_fonts, devicePixelRatioF());
    if (m_marks.SortOf(column) != ESortMark::None) width += m_fonts.Zoomed(CGridPainter::kSortMarkRoom);
    const auto measure = [&](int firstPlace, int lastPlace) {
        for (int place = firstPlace; place <= lastPlace; ++place) {
            const int row = m_geometry.ShownRowAt(place);
            m_cell.Reset();
            if (m_source->FillSpan(row, m_cell)) continue;
            m_cell.Reset();
            m_source->FillCell(row, column, m_cell);
            width = std::max(width, CGridPainter::NeededWidth(m_cell, m_fonts, devicePixelRatioF()));
        }
    };
    measure(1, std::min(m_geometry.ShownRowCount(), kFitRows));
    measure(std::max(kFitRows + 1, m_geometry.ShownIndexOf(m_geometry.FirstVisibleRow())),
            m_geometry.ShownIndexOf(m_geometry.LastVisibleRow()));
    // Rounded up, so that it is not less when it is drawn.
    return std::clamp((width * kWhole + Zoom() - 1) / Zoom(), kMinFitWidth, kMaxColumnWidth);
}

std::string CGridView::ShownText(int row, int column) const {
    if (m_source == nullptr || row < 0 || row > RowCount() || column < 0 || column > ColumnCount()) return {};
    m_cell.Reset();
    if (row == 0 && column == 0) return {};
    if (row == 0) {
        m_source->FillHeader(column, m_cell);
    } else if (column == 0) {
        m_source->FillRowNumber(row, m_cell);
    } else if (!m_source->FillSpan(row, m_cell)) {
        m_cell.Reset();
        m_source->FillCell(row, column, m_cell);
    }
    return std::string(m_cell.Text());
}

bool CGridView::IsSpan(int row) const {
    m_cell.Reset();
    return m_source != nullptr && row >= 1 && row <= RowCount() && m_source->FillSpan(row, m_cell);
}

void CGridView::SetLockedColumns(int columns) {
    if (columns == LockedColumns()) return;
    m_geometry.SetLockedColumns(columns);
    LayoutChanged();
}

void CGridView::SetStickyColumn(int column) {
    const int stuck = m_geometry.StuckColumn();
    m_geometry.SetStickyColumn(column);
    if (m_geometry.StuckColumn() != stuck) VisibleCellsChanged();
}

void CGridView::SetRowNumbersVisible(bool visible) {
    if (visible == m_rowNumbers) return;
    m_rowNumbers = visible;
    FitRowNumbers();
    LayoutChanged();
}

void CGridView::SetRowNumberWidth(int least) {
    if (least == m_rowNumberWidth) return;
    m_rowNumberWidth = least;
    FitRowNumbers();
    LayoutChanged();
}

void CGridView::SetScale(int zoom, int rowPadding) {
    zoom = std::clamp(zoom, kMinZoom, kMaxZoom);
    if (zoom == Zoom() && rowPadding == m_rowPadding) return;
    const double wider = static_cast<double>(zoom) / Zoom();
    const QPoint scroll(m_geometry.ScrollX(), m_geometry.ScrollY());
    const int height = m_geometry.RowHeight();
    m_fonts.SetZoom(zoom);
    m_rowPadding = rowPadding;
    for (int column = 1; column <= ColumnCount(); ++column) TakeWidth(column, ColumnWidth(column));
    FitRowHeights();
    FitRowNumbers();
    m_geometry.SetScroll(qRound(scroll.x() * wider),
                         static_cast<int>(int64_t{scroll.y()} * m_geometry.RowHeight() / height));
    LayoutChanged();
    LookChanged();
}

void CGridView::SetOptions(const SGridOptions& options) {
    if (options == m_options) return;
    m_options = options;
    m_flash.SetVisible(m_geometry);
    UpdateAll();
}

void CGridView::SetThemeMode(EThemeMode mode) {
    m_themeMode = mode;
    ChooseTheme();
}

void CGridView::ChooseTheme() {
    constexpr int kMiddleGray = 128;
    const bool dark = m_themeMode == EThemeMode::Dark ||
                      (m_themeMode == EThemeMode::System && palette().color(QPalette::Base).lightness() < kMiddleGray);
    m_theme = dark ? &kDarkGridTheme : &kLightGridTheme;
    DressScrollBars();
    LookChanged();
    UpdateAll();
}

void CGridView::DressScrollBars() {
    // A theme of the grid's own reaches to its edges; otherwise they are the desktop's.
    QPalette own;
    if (m_themeMode != EThemeMode::System) {
        own.setColor(QPalette::Window, QColor::fromRgb(m_theme->header));
        own.setColor(QPalette::Base, QColor::fromRgb(m_theme->header));
        own.setColor(QPalette::Button, QColor::fromRgb(m_theme->headerSelected));
        own.setColor(QPalette::WindowText, QColor::fromRgb(m_theme->headerText));
        own.setColor(QPalette::ButtonText, QColor::fromRgb(m_theme->headerText));
    }
    horizontalScrollBar()->setPalette(own);
    verticalScrollBar()->setPalette(own);
    m_corner->setPalette(own);
}

int CGridView::AddFont(const SGridFont& font) {
    const int before = m_fonts.Count();
    const int id = m_fonts.Add(font);
    if (m_fonts.Count() > before) MeasureFonts();
    return id;
}

void CGridView::ForgetFonts() {
    m_fonts.KeepDefault();
    MeasureFonts();
}

void CGridView::MeasureFonts() {
    FitRowHeights();
    FitRowNumbers();
    LayoutChanged();
}

void CGridView::FitRowHeights() {
    const int line = m_fonts.LineHeight();
    m_geometry.SetRowHeights(line + m_fonts.Zoomed(m_rowPadding + kHeaderPadding), line + m_fonts.Zoomed(m_rowPadding));
}

void CGridView::FitRowNumbers() {
    int width = 0;
    if (m_rowNumbers) {
        int digits = 1;
        for (int rows = RowCount(); rows >= 10; rows /= 10) ++digits;
        m_cell.Reset();
        const std::array<char, 16> zeros = {'0', '0', '0', '0', '0', '0', '0', '0', '0', '0'};
        m_cell.SetText({zeros.data(), static_cast<size_t>(std::max(digits, kMinNumberDigits))});
        width =
            std::max(m_fonts.Zoomed(m_rowNumberWidth), CGridPainter::NeededWidth(m_cell, m_fonts, devicePixelRatioF()));
    }
    m_geometry.SetColumnWidth(0, width);
}

void CGridView::LayoutChanged() {
    m_geometry.SetViewport(viewport()->size());
    m_geometry.SetScroll(m_geometry.ScrollX(), m_geometry.ScrollY());
    const QPoint scroll(m_geometry.ScrollX(), m_geometry.ScrollY());
    horizontalScrollBar()->setSingleStep(3 * m_geometry.RowHeight());
    horizontalScrollBar()->setPageStep(std::max(1, m_geometry.ScrolledWidth()));
    horizontalScrollBar()->setRange(0, m_geometry.MaxScrollX());
    horizontalScrollBar()->setValue(scroll.x());
    verticalScrollBar()->setSingleStep(m_geometry.RowHeight());
    verticalScrollBar()->setPageStep(std::max(1, m_geometry.ScrolledHeight()));
    verticalScrollBar()->setRange(0, m_geometry.MaxScrollY());
    verticalScrollBar()->setValue(scroll.y());
    KeepSelectionInside();
    VisibleCellsChanged();
}

void CGridView::VisibleCellsChanged() {
    m_dirty.SetVisible(m_geometry);
    m_goingOut.SetVisible(m_geometry);
    m_flash.SetVisible(m_geometry);
    CellsMoved();
    UpdateAll();
}

void CGridView::scrollContentsBy(int, int) {
    m_geometry.SetScroll(horizontalScrollBar()->value(), verticalScrollBar()->value());
    VisibleCellsChanged();
}

void CGridView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    LayoutChanged();
}

void CGridView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) ChooseTheme();
}

void CGridView::SetSortMark(int column, ESortMark mark) {
    SGridMarks next = m_marks;
    next.sortColumn = mark == ESortMark::None ? 0 : column;
    next.sort = mark;
    SetMarks(next);
}

void CGridView::SetMarkedRange(const std::optional<SGridRange>& range) {
    SGridMarks next = m_marks;
    next.copied = range;
    SetMarks(next);
}

void CGridView::SetMarks(const SGridMarks& marks) {
    if (marks == m_marks) return;
    QRegion changed = PlacesOfMarks(m_marks, m_geometry) | PlacesOfMarks(marks, m_geometry);
    if (marks.sortColumn != m_marks.sortColumn || marks.sort != m_marks.sort)
        changed |= QRect(0, 0, viewport()->width(), m_geometry.HeaderHeight());
    m_marks = marks;
    viewport()->update(changed);
}

SGridScene CGridView::Scene() {
    return {m_geometry, *m_theme, m_options, Selection(), m_marks, m_flash, m_fonts, m_source, hasFocus()};
}

void CGridView::paintEvent(QPaintEvent* event) {
    m_rowsMoved = false;
    QPainter painter(viewport());
    const SGridScene scene = Scene();
    ++m_counters.passes;
    m_counters.cells += m_painter.Paint(painter, event->region(), scene);
}

void CGridView::FlushChanges() {
    if (!m_dirty.Any()) return;
    // A cell may differ from what was painted because another row has come to its place.
    const bool flash = m_options.flash && isVisible() && !m_rowsMoved;
    const QRegion region = m_dirty.Take(m_geometry, flash ? &m_flash : nullptr, CClock::Instance().MonotonicMs());
    if (region.isEmpty()) return;
    viewport()->update(region);
    if (m_flash.Any() && !m_flashTimer.isActive())
        m_flashTimer.start(static_cast<int>(CCellFlash::kShowMs), Qt::PreciseTimer, this);
}

void CGridView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_flashTimer.timerId()) return QAbstractScrollArea::timerEvent(event);
    const int64_t now = CClock::Instance().MonotonicMs();
    m_flashEnded.clear();
    m_flash.End(now, m_flashEnded);
    // In a set of their own: what the feed has changed meanwhile waits for the next FlushChanges().
    for (const auto& place : m_flashEnded) m_goingOut.MarkCell(place.row, place.column);
    viewport()->update(m_goingOut.Take(m_geometry, nullptr, now));
    if (!m_flash.Any()) m_flashTimer.stop();
}

bool CGridView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) return ShowTip(*static_cast<QHelpEvent*>(event));
    return QAbstractScrollArea::viewportEvent(event);
}

bool CGridView::ShowTip(const QHelpEvent& event) {
    const SGridCell at = CellAt(event.pos());
    const QString text = at.row >= 0 && at.column >= 0 ? TipAt(at.row, at.column) : QString();
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(event.globalPos(), PlainTipText(text), viewport(),
                           m_geometry.VisibleCellRect(at.row, at.column));
    return true;
}

QString CGridView::TipAt(int row, int column) {
    if (m_source == nullptr || (row == 0 && column == 0)) return {};
    const std::string own = row == 0 ? m_source->HeaderTip(column) : m_source->CellTip(row, column);
    if (!own.empty() || column == 0) return QtText(own);
    // Without a tip of its own a cell shows what it had to cut.
    m_cell.Reset();
    int room = m_geometry.ColumnWidth(column);
    if (row == 0) {
        m_source->FillHeader(column, m_cell);
        if (m_marks.SortOf(column) != ESortMark::None) room -= m_fonts.Zoomed(CGridPainter::kSortMarkRoom);
    } else if (m_source->FillSpan(row, m_cell)) {
        room = viewport()->width() - m_geometry.ColumnWidth(0);
    } else {
        m_cell.Reset();
        m_source->FillCell(row, column, m_cell);
    }
    return CGridPainter::NeededWidth(m_cell, m_fonts, devicePixelRatioF()) > room ? QtText(m_cell.Text()) : QString();
}

void CGridView::EnsureVisible(int row, int column) {
    const QPoint scroll = m_geometry.ScrollToShow(row, column);
    horizontalScrollBar()->setValue(scroll.x());
    verticalScrollBar()->setValue(scroll.y());
}

int CGridView::NextColumn(int column, int step) const {
    for (int c = column + step; c >= 1 && c <= ColumnCount(); c += step)
        if (ColumnWidth(c) > 0) return c;
    return column;
}

EGridPart CGridView::PartOf(const SGridCell& cell) {
    if (cell.row < 0 || cell.column < 0) return EGridPart::Outside;
    if (cell.row == 0) return cell.column == 0 ? EGridPart::Corner : EGridPart::ColumnHeader;
    return cell.column == 0 ? EGridPart::RowHeader : EGridPart::Cell;
}

void CGridView::Resize(int column, int width) {
    if (width == ColumnWidth(column)) return;
    SetColumnWidth(column, width);
    Q_EMIT ColumnResized(column, ColumnWidth(column));
}

void CGridView::ResizeDrawn(int column, int drawn) {
    if (drawn != m_geometry.ColumnWidth(column)) Resize(column, qRound(drawn * double{kWhole} / Zoom()));
}

void CGridView::TakeMovedRows(std::vector<int> hidden) {
    m_rowsMoved = true;
    m_geometry.SetHiddenRows(std::move(hidden));
}

bool CGridView::WholeColumnsSelected() const {
    const SGridRange range = SelectedRange();
    return RowCount() > 0 && range.firstRow == 1 && range.lastRow == RowCount();
}

bool CGridView::WholeRowsSelected() const {
    const SGridRange range = SelectedRange();
    return ColumnCount() > 0 && range.firstColumn == 1 && range.lastColumn == ColumnCount();
}

QRect CGridView::RangeRect(const SGridRange& range) const {
    const int top = m_geometry.RowTop(range.firstRow);
    const int bottom = m_geometry.RowTop(range.lastRow) + m_geometry.CellRect(range.lastRow, 0).height();
    return {0, top, viewport()->width(), bottom - top};
}

} // namespace vx
