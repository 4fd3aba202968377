// SPDX-License-Identifier: MIT
#include "watchlist/view/WatchlistGrid.h"

#include "base/qt/QtText.h"
#include "grid/GridCtrl.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/ColumnMoves.h"

#include <QMimeData>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <array>

namespace vx {

namespace {

constexpr int kHintMargin = 24; // Logical pixels around the hint of an empty watchlist.

} // namespace

CWatchlistGrid::CWatchlistGrid(CWatchlistDoc& doc, QWidget* parent)
    : CNorvGridCtrl(parent), m_doc(doc), m_cells(doc, Geometry()) {
    setObjectName(QStringLiteral("watchlistGrid"));
    setAcceptDrops(true);
    SetSource(&m_cells);
    EnterFonts();
    connect(this, &CGridCtrl::ColumnResized, this, &CWatchlistGrid::NoteWidth);
    Rebuild();
}

CWatchlistGrid::~CWatchlistGrid() { SetSource(nullptr); }

void CWatchlistGrid::Rebuild() {
    const CColumnMap& columns = m_doc.Columns();
    m_cells.ColumnsChanged();
    TakeScale();
    SetColumnCount(columns.Count() - 1, kDefaultColumnWidthPx);
    if (!IsBusy()) m_draggedWidth.reset(); // The drag was given up.
    std::vector<int> widths;
    for (int column = 1; column < columns.Count(); ++column)
        widths.push_back(m_draggedWidth && m_draggedWidth->first == column ? m_draggedWidth->second
                                                                           : columns.At(column).width);
    SetColumnWidths(widths);
    SetLockedColumns(m_doc.Options().lockedColumns);
    PlaceSticky();
    SetRowNumbersVisible(m_doc.Options().showRowNumbers);
    SetRowNumberWidth(columns.At(kRowNumberColumn).width);
    SetRowCount(m_doc.RowCount());
    DropUnusedFonts();
    SetHiddenRows(m_doc.HiddenRows());
    UpdateAll();
}

void CWatchlistGrid::TakeScale() {
    constexpr std::array kPadding = {2, kRowPadding, 14}; // By EDensity.
    const SScale& scale = m_doc.Options().scale;
    SetScale(scale.zoom, kPadding[static_cast<size_t>(scale.density)]);
}

void CWatchlistGrid::TakeRowOrder(const std::vector<int>& newRowOf) { MoveRows(newRowOf, m_doc.HiddenRows()); }

void CWatchlistGrid::KeepSymbolInSight(bool keep) {
    m_symbolInSight = keep;
    PlaceSticky();
}

void CWatchlistGrid::PlaceSticky() {
    SetStickyColumn(m_symbolInSight ? std::max(0, m_doc.Columns().PositionOf(kSymbolColumn)) : 0);
}

void CWatchlistGrid::MarkChangedCells(int row) {
    const CGridGeometry& geometry = Geometry();
    if (row < geometry.FirstVisibleRow() || row > geometry.LastVisibleRow() || IsRowHidden(row)) return;
    if (m_doc.RowKind(row) != ERowKind::Symbol || m_cells.MayChangeHint(row)) {
        MarkRowChanged(row);
        return;
    }
    MarkDifferentCells(row);
}

void CWatchlistGrid::MarkDifferentCells(int row) {
    const CGridGeometry& geometry = Geometry();
    const auto mark = [&](int first, int last) {
        for (int column = first; column <= last; ++column)
            if (m_cells.DiffersFromPainted(row, column)) MarkCellChanged(row, column);
    };
    mark(1, geometry.ShownLockedColumns());
    if (const int stuck = geometry.StuckColumn(); stuck > 0) mark(stuck, stuck);
    mark(geometry.FirstScrolledColumn(), geometry.LastScrolledColumn());
}

void CWatchlistGrid::MarkEditedRow(int row) {
    MarkChangedCells(row);
    const CGridGeometry& geometry = Geometry();
    const int place = geometry.ShownIndexOf(row);
    for (const int beside : {place - 1, place + 1}) {
        if (beside < 1 || beside > geometry.ShownRowCount()) continue;
        const int other = geometry.ShownRowAt(beside);
        const bool seen = other >= geometry.FirstVisibleRow() && other <= geometry.LastVisibleRow();
        if (seen && m_doc.RowKind(other) != ERowKind::Annotation) MarkDifferentCells(other);
    }
}

void CWatchlistGrid::ReadScales(bool wanted) {
    m_cells.Scales().ReadOn(wanted);
    UpdateIfRescaled();
}

void CWatchlistGrid::UpdateIfRescaled() {
    if (m_cells.Scales().TakeChanged()) UpdateAll();
}

void CWatchlistGrid::SetStale(bool stale) {
    if (stale == m_stale) return;
    m_stale = stale;
    m_cells.SetStale(stale);
    UpdateAll();
}

int CWatchlistGrid::FieldAt(int column) const {
    return column >= 1 && column < m_doc.Columns().Count() ? m_doc.Columns().At(column).number : kNoField;
}

// Editing

bool CWatchlistGrid::MayEdit(int row, int column) const {
    return row >= 1 && row <= CRowTable::kMaxRow && FieldAt(column) > kRowNumberColumn;
}

std::string CWatchlistGrid::EditText(int row, int column) const {
    const std::string_view typed = m_doc.TypedText(row);
    if (m_doc.RowKind(row) == ERowKind::Annotation)
        return std::string(m_doc.IsRejected(row) || !typed.empty() ? typed : m_doc.AnnotationText(row));
    if (m_doc.RowSymbol(row) == kCommaSymbol && FieldAt(column) == Special().symbol && !typed.empty())
        return std::string(typed);
    std::array<char, kMostCellText> text;
    const size_t length = CColumnReader(m_doc, column).Read(row, text);
    return {text.data(), length};
}

bool CWatchlistGrid::AcceptsDrop(const QMimeData& offered) const { return offered.hasText() && !offered.hasUrls(); }

bool CWatchlistGrid::StandsForMore(int row, int column) const {
    const SSpecialColumns& special = Special();
    const int field = FieldAt(column);
    const ERowKind kind = m_doc.RowKind(row);
    if (kind == ERowKind::Empty) return field >= 0 && field == special.notes && m_doc.Notes().Has(row);
    return kind == ERowKind::Symbol && field >= 0 &&
           (field == special.alerts || field == special.notes || field == special.news ||
            field == special.latestHeadline);
}

void CWatchlistGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    const SGridCell at = CellAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && StandsForMore(at.row, at.column))
        Q_EMIT CellDoubleClicked(at.row, at.column);
    else
        CNorvGridCtrl::mouseDoubleClickEvent(event);
}

// Widths: the document learns of a drag once, when the button is let go.

void CWatchlistGrid::NoteWidth(int column, int width) {
    m_draggedWidth = {column, width};
    if (!IsBusy()) KeepWidth();
}

void CWatchlistGrid::mouseReleaseEvent(QMouseEvent* event) {
    CNorvGridCtrl::mouseReleaseEvent(event);
    if (!IsBusy()) KeepWidth();
}

void CWatchlistGrid::KeepWidth() {
    if (const auto chosen = std::exchange(m_draggedWidth, {})) vx::SetColumnWidth(m_doc, chosen->first, chosen->second);
}

// Painting

void CWatchlistGrid::EnterFonts() {
    m_cells.Fonts().TakeWanted([this](const CFormatFonts::SFont& font) {
        return AddFont({QtText(font.face), font.size, font.bold, font.italic});
    });
}

void CWatchlistGrid::EnterAllFonts() {
    const CCellFormatStore& formats = m_doc.Formats();
    const auto enter = [&](const SCellFormat& format, bool strong) {
        m_cells.Fonts().Find(format, false);
        if (strong) m_cells.Fonts().Find(format, true);
        if (m_cells.Fonts().HasWanted()) EnterFonts();
    };
    const int heading = HeadingColumn(m_doc.Columns());
    enter(formats.GridFormat(), true);
    formats.ForEach([&](int row, int column) {
        const int field = FieldAt(column);
        enter(formats.Effective(row, column),
              column == heading || field == Special().symbol || field == Special().news);
    });
}

// Rows are as high as the tallest font: one that no cell has any more must not keep them so.
void CWatchlistGrid::DropUnusedFonts() {
    const CCellFormatStore& formats = m_doc.Formats();
    const bool unused = m_cells.Fonts().HasUnused([&](auto&& visit) {
        bool goOn = visit(formats.GridFormat());
        formats.ForEach([&](int row, int column) { goOn = goOn && visit(formats.Effective(row, column)); });
    });
    if (!unused) return;
    m_cells.Fonts().Forget();
    ForgetFonts();
    EnterFonts();
}

void CWatchlistGrid::paintEvent(QPaintEvent* event) {
    m_cells.SetPainted(&event->region());
    CNorvGridCtrl::paintEvent(event);
    m_cells.SetPainted(nullptr);
    if (m_cells.Fonts().HasWanted()) {
        const auto enter = [this] {
            EnterFonts();
            UpdateAll();
        };
        QMetaObject::invokeMethod(this, enter, Qt::QueuedConnection);
    }
    // Cells were painted by a scale that a later one widened.
    if (m_cells.Scales().HasChanged())
        QMetaObject::invokeMethod(this, &CWatchlistGrid::UpdateIfRescaled, Qt::QueuedConnection);
    if (m_doc.LastUsedRow() == 0) PaintHint(*event);
}

void CWatchlistGrid::PaintHint(QPaintEvent& event) {
    const int top = Geometry().ContentBottom();
    const QRect room = viewport()->rect().adjusted(kHintMargin, top + kHintMargin, -kHintMargin, -kHintMargin);
    if (room.isEmpty() || !event.rect().intersects(room)) return;
    QPainter painter(viewport());
    painter.setFont(font());
    painter.setPen(QColor::fromRgb(Theme().stale));
    painter.drawText(room, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
                     QStringLiteral("Type a symbol in the first column, paste a list, or press Ctrl+K to search."));
}

SGridRegion SelectedRegion(const CGridCtrl& grid) {
    SGridRegion out{grid.SelectedRange(), grid.FocusCell(), ERegion::Block};
    if (out.Rows() == 1 && out.Columns() == 1) {
        out.kind = ERegion::Cell;
        return out;
    }
    const bool rows = out.range.firstColumn <= 1 && out.range.lastColumn >= grid.ColumnCount();
    const bool columns = out.range.firstRow <= 1 && out.range.lastRow >= grid.RowCount();
    if (rows != columns) out.kind = rows ? ERegion::Rows : ERegion::Columns;
    return out;
}

} // namespace vx
