// SPDX-License-Identifier: MIT
#include "grid/GridMarks.h"

#include <QPainter>
#include <algorithm>

namespace vx {

namespace {

constexpr int kLine = 3;   // of an insertion
constexpr int kFrame = 2;  // around the row under a drop
constexpr int kDash = 4;   // of a copied range's border, and as much between two
constexpr int kBorder = 2; // its thickness

/// The line between two columns, over the header and the rows.
QRect InsertColumnLine(int before, const CGridGeometry& geometry) {
    int x = before > geometry.ColumnCount() ? geometry.ContentRight() : geometry.ColumnLeft(before);
    if (!geometry.IsFixed(before)) x = std::max(x, geometry.FixedWidth());
    x = std::min(x, geometry.Viewport().width() - 1);
    return {x - kLine / 2 - 1, 0, kLine, std::min(geometry.ContentBottom(), geometry.Viewport().height())};
}

/// The line between two rows, over the row numbers and the cells.
QRect InsertRowLine(int before, const CGridGeometry& geometry) {
    const int y = std::clamp(geometry.RowTop(before), geometry.HeaderHeight(),
                             std::max(geometry.HeaderHeight(), geometry.Viewport().height() - 1));
    return {0, y - kLine / 2 - 1, std::min(geometry.ContentRight(), geometry.Viewport().width()), kLine};
}

QRect RowPlace(int row, const CGridGeometry& geometry) {
    const QRect rows(0, geometry.HeaderHeight(), geometry.Viewport().width(), geometry.ScrolledHeight());
    return QRect(0, geometry.RowTop(row), std::min(geometry.ContentRight(), rows.width()), geometry.RowHeight())
        .intersected(rows);
}

/// A range as it would stand if nothing were hidden, and the part of the viewport in which it may be seen.
struct SRangePlace {
    QRect whole;
    QRect room;
};
SRangePlace PlaceOf(const SGridRange& range, const CGridGeometry& geometry) {
    const QRect first = geometry.CellRect(range.firstRow, range.firstColumn);
    const QRect last = geometry.CellRect(range.lastRow, range.lastColumn);
    const int stuck = geometry.StuckColumn();
    const bool locked = range.firstColumn <= geometry.ShownLockedColumns();
    const bool holdsStuck = stuck > 0 && range.HasColumn(stuck);
    const int fixed = locked ? 0 : holdsStuck ? geometry.ColumnLeft(stuck) : geometry.FixedWidth();
    // A range that begins in the fixed columns reaches at least to their edge, wherever the rest has scrolled to.
    const bool beyond = holdsStuck || (locked && range.lastColumn > geometry.ShownLockedColumns());
    const int right = beyond ? std::max(last.right(), geometry.FixedWidth() - 1) : last.right();
    return {QRect(QPoint(first.left(), first.top()), QPoint(right, last.bottom())),
            QRect(fixed, geometry.HeaderHeight(), geometry.Viewport().width() - fixed, geometry.ScrolledHeight())};
}

QRect Cut(const QRect& rect, const QRect& room) { return rect.intersected(room); }

/// Dashes are counted from the range's corner, so that a part painted alone fits the rest; only what can be seen is
/// drawn, for a range may be a million rows high.
void DashedBorder(QPainter& painter, const SRangePlace& place, const QColor& color) {
    const QRect& r = place.whole;
    const QRect seen = Cut(r, place.room);
    if (seen.isEmpty()) return;
    constexpr int kPeriod = 2 * kDash;
    for (int x = r.left() + (seen.left() - r.left()) / kPeriod * kPeriod; x <= seen.right(); x += kPeriod)
        for (const int y : {r.top(), r.bottom() - kBorder + 1})
            painter.fillRect(Cut(QRect(x, y, kDash, kBorder), seen), color);
    for (int y = r.top() + (seen.top() - r.top()) / kPeriod * kPeriod; y <= seen.bottom(); y += kPeriod)
        for (const int x : {r.left(), r.right() - kBorder + 1})
            painter.fillRect(Cut(QRect(x, y, kBorder, kDash), seen), color);
}

} // namespace

QRegion PlacesOfMarks(const SGridMarks& marks, const CGridGeometry& geometry) {
    QRegion places;
    if (marks.insertColumn > 0) places |= InsertColumnLine(marks.insertColumn, geometry);
    if (marks.insertRow > 0) places |= InsertRowLine(marks.insertRow, geometry);
    if (marks.dropRow > 0) places |= RowPlace(marks.dropRow, geometry);
    if (marks.copied) {
        const SRangePlace place = PlaceOf(*marks.copied, geometry);
        places |= Cut(place.whole, place.room);
    }
    return places;
}

void PaintMarks(QPainter& painter, const SGridMarks& marks, const CGridGeometry& geometry, const SGridTheme& theme) {
    const QColor color = QColor::fromRgb(theme.focus);
    if (marks.copied) DashedBorder(painter, PlaceOf(*marks.copied, geometry), color);
    if (marks.insertColumn > 0) painter.fillRect(InsertColumnLine(marks.insertColumn, geometry), color);
    if (marks.insertRow > 0) painter.fillRect(InsertRowLine(marks.insertRow, geometry), color);
    if (marks.dropRow <= 0) return;
    const QRect r = RowPlace(marks.dropRow, geometry);
    painter.fillRect(Cut(QRect(r.left(), r.top(), r.width(), kFrame), r), color);
    painter.fillRect(Cut(QRect(r.left(), r.bottom() - kFrame + 1, r.width(), kFrame), r), color);
    painter.fillRect(Cut(QRect(r.left(), r.top(), kFrame, r.height()), r), color);
    painter.fillRect(Cut(QRect(r.right() - kFrame + 1, r.top(), kFrame, r.height()), r), color);
}

} // namespace vx
