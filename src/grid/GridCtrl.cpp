#include "grid/GridCtrl.h"

#include "base/Clock.h"
#include "grid/GridAccessible.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <array>

namespace vx {

namespace {

constexpr int kRowPadding = 6;    // above and below the tallest font's line together
constexpr int kHeaderPadding = 9; // the same for the header row
constexpr int kMinNumberDigits = 3;
constexpr int kFitRows = 10000;
constexpr int kMinFitWidth = 24;

} // namespace

CGridCtrl::CGridCtrl(QWidget* parent) : QAbstractScrollArea(parent), m_corner(new QWidget) {
    InstallGridAccessibility();
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    // Every pixel is painted in each pass, so nothing needs to be wiped first.
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setAttribute(Qt::WA_NoSystemBackground);
    viewport()->setMouseTracking(true);
    m_corner->setAutoFillBackground(true);
    setCornerWidget(m_corner);
    m_fonts.SetDotsPerInch(logicalDpiY());
    ChooseTheme();
    MeasureFonts();
}

CGridCtrl::~CGridCtrl() = default;

void CGridCtrl::SetSource(const CCellSource* source) {
    m_source = source;
    UpdateAll();
}

void CGridCtrl::SetRowCount(int rows) {
    if (rows == RowCount()) return;
    m_geometry.SetRowCount(rows);
    FitRowNumbers();
    LayoutChanged();
}

void CGridCtrl::SetColumnCount(int columns, int defaultWidth) {
    m_geometry.SetColumnCount(columns, defaultWidth);
    LayoutChanged();
}

void CGridCtrl::SetColumnWidth(int column, int width) {
    if (column < 1 || column > ColumnCount()) return;
    m_geometry.SetColumnWidth(column, width);
    LayoutChanged();
}

int CGridCtrl::FitWidth(int column) {
    if (m_source == nullptr || column < 1 || column > ColumnCount()) return ColumnWidth(column);
    m_cell.Reset();
    m_source->FillHeader(column, m_cell);
    int width = std::max(kMinFitWidth, CGridPainter::NeededWidth(m_cell, m_fonts, devicePixelRatioF()));
    const auto measure = [&](int first, int last) {
        for (int row = first; row <= last; ++row) {
            m_cell.Reset();
            if (m_source->FillSpan(row, m_cell)) continue;
            m_cell.Reset();
            m_source->FillCell(row, column, m_cell);
            width = std::max(width, CGridPainter::NeededWidth(m_cell, m_fonts, devicePixelRatioF()));
        }
    };
    measure(1, std::min(RowCount(), kFitRows));
    measure(std::max(kFitRows + 1, m_geometry.FirstVisibleRow()), m_geometry.LastVisibleRow());
    return std::min(width, CGridGeometry::kMaxColumnWidth);
}

void CGridCtrl::SetLockedColumns(int columns) {
    if (columns == LockedColumns()) return;
    m_geometry.SetLockedColumns(columns);
    LayoutChanged();
}

void CGridCtrl::SetRowNumbersVisible(bool visible) {
    if (visible == m_rowNumbers) return;
    m_rowNumbers = visible;
    FitRowNumbers();
    LayoutChanged();
}

void CGridCtrl::SetOptions(const SGridOptions& options) {
    if (options == m_options) return;
    m_options = options;
    m_flash.SetVisible(m_geometry);
    UpdateAll();
}

void CGridCtrl::SetThemeMode(EThemeMode mode) {
    m_themeMode = mode;
    ChooseTheme();
}

void CGridCtrl::ChooseTheme() {
    constexpr int kMiddleGray = 128;
    const bool dark = m_themeMode == EThemeMode::Dark ||
                      (m_themeMode == EThemeMode::System && palette().color(QPalette::Base).lightness() < kMiddleGray);
    m_theme = dark ? &kDarkGridTheme : &kLightGridTheme;
    DressScrollBars();
    UpdateAll();
}

void CGridCtrl::DressScrollBars() {
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

int CGridCtrl::AddFont(const SGridFont& font) {
    const int before = m_fonts.Count();
    const int id = m_fonts.Add(font);
    if (m_fonts.Count() > before) MeasureFonts();
    return id;
}

void CGridCtrl::SetDefaultFont(const SGridFont& font) {
    m_fonts.SetDefault(font);
    MeasureFonts();
}

void CGridCtrl::MeasureFonts() {
    const int line = m_fonts.LineHeight();
    m_geometry.SetRowHeights(line + kHeaderPadding, line + kRowPadding);
    FitRowNumbers();
    LayoutChanged();
}

void CGridCtrl::FitRowNumbers() {
    int width = 0;
    if (m_rowNumbers) {
        int digits = 1;
        for (int rows = RowCount(); rows >= 10; rows /= 10) ++digits;
        m_cell.Reset();
        const std::array<char, 16> zeros = {'0', '0', '0', '0', '0', '0', '0', '0', '0', '0'};
        m_cell.SetText({zeros.data(), static_cast<size_t>(std::max(digits, kMinNumberDigits))});
        width = CGridPainter::NeededWidth(m_cell, m_fonts, devicePixelRatioF());
    }
    m_geometry.SetColumnWidth(0, width);
}

void CGridCtrl::LayoutChanged() {
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

void CGridCtrl::KeepSelectionInside() {
    UpdateSelection(Clamped(m_selection));
    SGridCell focus = m_selection.focus;
    if (ColumnWidth(focus.column) > 0) return;
    // The column under the focus has been hidden: on to its neighbour, the next one if there is one.
    const int next = NextColumn(focus.column, 1);
    focus.column = next != focus.column ? next : NextColumn(focus.column, -1);
    UpdateSelection({focus, focus, focus});
}

void CGridCtrl::VisibleCellsChanged() {
    m_dirty.SetVisible(m_geometry);
    m_goingOut.SetVisible(m_geometry);
    m_flash.SetVisible(m_geometry);
    UpdateAll();
}

void CGridCtrl::scrollContentsBy(int, int) {
    m_geometry.SetScroll(horizontalScrollBar()->value(), verticalScrollBar()->value());
    VisibleCellsChanged();
}

void CGridCtrl::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    LayoutChanged();
}

void CGridCtrl::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) ChooseTheme();
}

SGridScene CGridCtrl::Scene() {
    return {m_geometry, *m_theme, m_options, m_selection, m_flash, m_fonts, m_source, hasFocus()};
}

void CGridCtrl::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const SGridScene scene = Scene();
    ++m_counters.passes;
    m_counters.cells += m_painter.Paint(painter, event->region(), scene);
}

void CGridCtrl::FlushChanges() {
    if (!m_dirty.Any()) return;
    const bool flash = m_options.flash && isVisible();
    const QRegion region = m_dirty.Take(m_geometry, flash ? &m_flash : nullptr, CClock::Instance().MonotonicMs());
    if (region.isEmpty()) return;
    viewport()->update(region);
    if (m_flash.Any() && !m_flashTimer.isActive())
        m_flashTimer.start(static_cast<int>(CCellFlash::kShowMs), Qt::PreciseTimer, this);
}

void CGridCtrl::timerEvent(QTimerEvent* event) {
    if (event->timerId() == m_dragTimer.timerId()) return DragTo(m_dragPlace);
    if (event->timerId() != m_flashTimer.timerId()) return QAbstractScrollArea::timerEvent(event);
    const int64_t now = CClock::Instance().MonotonicMs();
    m_flashEnded.clear();
    m_flash.End(now, m_flashEnded);
    // In a set of their own: what the feed has changed meanwhile waits for the next FlushChanges().
    for (const auto& place : m_flashEnded) m_goingOut.MarkCell(place.row, place.column);
    viewport()->update(m_goingOut.Take(m_geometry, nullptr, now));
    if (!m_flash.Any()) m_flashTimer.stop();
}

SGridSelection CGridCtrl::Clamped(SGridSelection selection) const {
    for (SGridCell* cell : {&selection.focus, &selection.anchor, &selection.reach}) {
        cell->row = std::clamp(cell->row, 1, std::max(1, RowCount()));
        cell->column = std::clamp(cell->column, 1, std::max(1, ColumnCount()));
    }
    return selection;
}

QRect CGridCtrl::RangeRect(const SGridRange& range) const {
    const int top = m_geometry.RowTop(range.firstRow);
    const int bottom = m_geometry.RowTop(range.lastRow) + m_geometry.RowHeight();
    return {0, top, viewport()->width(), bottom - top};
}

void CGridCtrl::UpdateSelection(const SGridSelection& next) {
    const SGridSelection old = m_selection;
    m_selection = Clamped(next);
    if (m_selection == old) return;
    const QRect header(0, 0, viewport()->width(), m_geometry.HeaderHeight());
    viewport()->update(QRegion(header) | RangeRect(old.Range()) | RangeRect(m_selection.Range()));
    if (m_selection.focus != old.focus) AnnounceFocusCell(*this);
    if (m_selection.focus != old.focus) Q_EMIT FocusCellChanged(m_selection.focus.row, m_selection.focus.column);
    if (m_selection.Range() != old.Range()) Q_EMIT SelectionChanged();
}

void CGridCtrl::SetFocusCell(int row, int column) { MoveTo({row, column}, false); }

void CGridCtrl::SelectRange(const SGridRange& range) {
    const SGridCell first{range.firstRow, range.firstColumn};
    UpdateSelection({first, first, {range.lastRow, range.lastColumn}});
}

void CGridCtrl::EnsureVisible(int row, int column) {
    const QPoint scroll = m_geometry.ScrollToShow(row, column);
    horizontalScrollBar()->setValue(scroll.x());
    verticalScrollBar()->setValue(scroll.y());
}

void CGridCtrl::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update(RangeRect(m_selection.Range()));
}

void CGridCtrl::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    CancelResize();
    viewport()->update(RangeRect(m_selection.Range()));
}

} // namespace vx
