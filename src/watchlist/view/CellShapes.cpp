// SPDX-License-Identifier: MIT
#include "watchlist/view/CellShapes.h"

#include "data/text/DrawnNumber.h"
#include "grid/GridGeometry.h"
#include "watchlist/document/CellFormatStore.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/exchange/RowCellText.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace vx {

namespace {

// Up, down and zero as the format colours texts; in a colour without a direction where it does not.
void ColourShape(double number, const SCellFormat& format, SCellShape& shape) {
    if (!format.colourByDirection || number == 0) return;
    SCell text;
    TakeDirectionColour(format, number > 0 ? EDirection::Up : EDirection::Down, text);
    shape.role = text.role;
    shape.color = text.textColor;
}

uint16_t PartOf(double whole) { return static_cast<uint16_t>(std::lround(whole * SCellShape::kWhole)); }

// Whether a cell draws the line that it shares with a neighbour: of thin and thick all four sides, of a box those where
// the neighbour has none.
bool DrawsSide(EBorder border, EBorder neighbour) {
    return border == EBorder::Thin || border == EBorder::Thick || (border == EBorder::Box && neighbour != EBorder::Box);
}
bool DrawsBottom(EBorder border, EBorder below) { return border == EBorder::Bottom || DrawsSide(border, below); }

SCellShape RangeShape(const SCellFormat& format, const CSymbolRec& record) {
    const std::optional<SDayRange> day = DayRange(record);
    if (!day) return {};
    SCellShape shape;
    shape.kind = ECellShape::Range;
    if (day->open) shape.fineMark = PartOf(*day->open);
    if (day->last) shape.strongMark = PartOf(*day->last);
    if (!day->open || !day->last) return shape;
    shape.from = std::min(shape.fineMark, shape.strongMark);
    shape.to = std::max(shape.fineMark, shape.strongMark);
    ColourShape(*day->last - *day->open, format, shape);
    return shape;
}

} // namespace

void TakeColour(int32_t colour, int32_t unchosen, ETextRole role, SCell& cell) {
    const bool own = colour != unchosen && colour >= 0;
    cell.role = own ? ETextRole::Explicit : role;
    if (own) cell.textColor = colour;
}

void TakeDirectionColour(const SCellFormat& format, EDirection direction, SCell& cell) {
    static const SCellFormat unchosen;
    switch (direction) {
    case EDirection::Up:
        return TakeColour(format.upColour, unchosen.upColour, ETextRole::Up, cell);
    case EDirection::Down:
        return TakeColour(format.downColour, unchosen.downColour, ETextRole::Down, cell);
    default:
        return TakeColour(format.unchangedColour >= 0 ? format.unchangedColour : format.textColour,
                          SCellFormat::kAutomatic, ETextRole::Unchanged, cell);
    }
}

CCellShapes::CCellShapes(const CWatchlistDoc& doc, const CGridGeometry& geometry)
    : m_doc(doc), m_geometry(geometry), m_scales(doc) {}

void CCellShapes::ColumnsChanged() {
    m_headingColumn = HeadingColumn(m_doc.Columns());
    m_scales.Reset();
}

// Of a heading, which is one cell, its own.
EBorder CCellShapes::BorderAt(int row, int column) const {
    const bool heading = m_doc.RowKind(row) == ERowKind::Annotation;
    return BorderOf(m_doc.Formats().Effective(row, heading ? m_headingColumn : column).borderStyle);
}

EBorder CCellShapes::Beside(int row, int column, int step) const {
    do {
        column += step;
        if (column < 1 || column > m_geometry.ColumnCount()) return EBorder::None;
    } while (m_geometry.ColumnWidth(column) == 0);
    return BorderAt(row, column);
}

EBorder CCellShapes::Below(int row, int column, int step) const {
    const int place = m_geometry.ShownIndexOf(row) + step;
    if (place < 1 || place > m_geometry.ShownRowCount()) return EBorder::None;
    return BorderAt(m_geometry.ShownRowAt(place), column);
}

uint8_t CCellShapes::Borders(int row, int column, const SCellFormat& format) const {
    const EBorder border = BorderOf(format.borderStyle);
    if (border == EBorder::None) return 0;
    const bool thick = border == EBorder::Thick;
    const auto asThick = [&](EBorder other) { return !thick || other == EBorder::Thick; };
    const EBorder left = Beside(row, column, -1);
    const EBorder upper = Below(row, column, -1);
    int sides = thick ? kThickBorders : 0;
    if (DrawsSide(border, Beside(row, column, 1))) sides |= kRightBorder;
    if (DrawsBottom(border, Below(row, column, 1))) sides |= kBottomBorder;
    if (DrawsSide(border, left) && !(DrawsSide(left, border) && asThick(left))) sides |= kLeftBorder;
    if (DrawsSide(border, upper) && !(DrawsBottom(upper, border) && asThick(upper))) sides |= kTopBorder;
    return static_cast<uint8_t>(sides);
}

uint8_t CCellShapes::HeadingBorders(const SCellFormat& format) {
    switch (BorderOf(format.borderStyle)) {
    case EBorder::None:
        return 0;
    case EBorder::Bottom:
        return kBottomBorder;
    case EBorder::Thick:
        return kAllBorders | kThickBorders;
    default:
        return kAllBorders;
    }
}

SCellShape CCellShapes::Shape(int column, const SFieldEntry& entry, const SCellFormat& format,
                              const CSymbolRec& record) {
    const ECellKind kind = CellKindOf(format.cellKind);
    if (kind == ECellKind::Plain || !CanShow(entry, kind)) return {};
    if (kind == ECellKind::Range) return RangeShape(format, record);
    const std::optional<double> number = DrawnNumber(record, entry);
    return number ? NumberShape(column, entry, format, *number) : SCellShape();
}

SCellShape CCellShapes::NumberShape(int column, const SFieldEntry& entry, const SCellFormat& format, double number) {
    const bool heat = CellKindOf(format.cellKind) == ECellKind::Heat;
    const bool twoSides = HasTwoSides(entry);
    const CColumnScale& scale = m_scales.Use(column, entry, number);
    const std::optional<double> part = heat && !twoSides ? scale.Level(number) : scale.Share(number);
    if (!part) return {};
    SCellShape shape;
    shape.kind = heat ? ECellShape::Heat : ECellShape::Bar;
    if (twoSides || (number < 0 && !heat)) ColourShape(number, format, shape);
    if (heat || !twoSides) {
        shape.to = PartOf(std::abs(*part));
        return shape;
    }
    constexpr uint16_t kZero = SCellShape::kWhole / 2;
    shape.from = shape.to = shape.fineMark = kZero;
    (number < 0 ? shape.from : shape.to) = PartOf(0.5 + *part / 2);
    return shape;
}

} // namespace vx
