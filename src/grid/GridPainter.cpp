// SPDX-License-Identifier: MIT
#include "grid/GridPainter.h"

#include "base/Windows1252.h"
#include "grid/DirtyCells.h"

#include <QPainter>
#include <cmath>

namespace vx {

namespace {

constexpr std::string_view kEllipsis = "...";
constexpr double kSeenMark = 3.0;  // The contrast at which a mark can be seen against the background.
constexpr int kCellMark = 6;       // Its size in logical pixels.
constexpr int kHiddenRowMark = 16; // its width without row numbers, in logical pixels
constexpr int kShapeEdge = 2;      // Around a bar, in logical pixels.
constexpr int kRangeHeight = 4;    // Of a range and its marks, in logical pixels: under the digits.

int ArrowOf(ETextRole direction) {
    return direction == ETextRole::Up ? kSymbolUp : direction == ETextRole::Down ? kSymbolDown : kSymbolDot;
}

// The same for all three.
int ArrowRoom(CGlyphAtlas& atlas) { return atlas.Glyph(kSymbolUp).advance + atlas.Glyph(' ').advance; }

int RunWidth(CGlyphAtlas& atlas, const SCell& cell) {
    if (!cell.tickTrend) return atlas.TextWidth(cell.Text());
    int width = 0;
    for (const char c : cell.Text())
        width += atlas.Glyph(CGridPainter::SymbolOf(static_cast<unsigned char>(c))).advance;
    return width;
}

} // namespace

int CGridPainter::SymbolOf(unsigned char byte) {
    switch (static_cast<char>(byte)) {
    case kTickUp:
        return kSymbolUp;
    case kTickDown:
        return kSymbolDown;
    case kTickDot:
        return kSymbolDot;
    default:
        return byte;
    }
}

int CGridPainter::NeededWidth(const SCell& cell, CGridFonts& fonts, double scale) {
    // One pixel for the grid line and one for edges that fall between device pixels.
    CGlyphAtlas& atlas = fonts.Atlas(cell.font, scale);
    const int arrow = cell.directionMark == EDirectionMark::Arrow ? ArrowRoom(atlas) : 0;
    const double text = (RunWidth(atlas, cell) + arrow) / scale;
    return static_cast<int>(std::ceil(text + 2 * kTextPadding * fonts.Zoom() / 100.0)) + 2;
}

QRect CGridPainter::Device(const QRect& rect) const {
    const int left = Device(rect.left());
    const int top = Device(rect.top());
    return {left, top, Device(rect.left() + rect.width()) - left, Device(rect.top() + rect.height()) - top};
}

int CGridPainter::Paint(QPainter& painter, const QRegion& region, const SGridScene& scene) {
    m_scene = &scene;
    m_painted = 0;
    m_selected = scene.selection.Range();
    const double scale = painter.deviceTransform().m11();
    m_scale = scale > 0 ? scale : 1;
    m_scaleFixed = std::lround(m_scale * (int64_t{1} << kFixedBits));
    m_zoomedFixed = m_scaleFixed * scene.fonts.Zoom() / 100;
    m_line = std::max(1, static_cast<int>(m_scale));

    painter.save();
    painter.scale(1 / m_scale, 1 / m_scale);
    m_canvas.SetPainter(painter);
    for (const QRect& rect : region) PaintRect(painter, rect);
    painter.restore();
    if (scene.marks.AnyOnTop()) PaintMarks(painter, scene.marks, scene.geometry, scene.theme);
    m_scene = nullptr;
    return m_painted;
}

void CGridPainter::PaintRect(QPainter& painter, const QRect& rect) {
    const CGridGeometry& geometry = m_scene->geometry;
    if (rect.top() < geometry.HeaderHeight()) PaintStrip(0, rect);
    const int top = std::max(rect.top(), geometry.HeaderHeight());
    const int firstRow = geometry.RowAt(top);
    if (firstRow > 0 && rect.bottom() >= top)
        for (int row = firstRow; row <= geometry.RowCount() && geometry.RowTop(row) <= rect.bottom();
             row = geometry.NextShownRow(row + 1))
            PaintStrip(row, rect);
    PaintEmptySpace(painter, rect);
}

void CGridPainter::PaintEmptySpace(QPainter& painter, const QRect& rect) {
    const int top = std::max(rect.top(), m_scene->geometry.ContentBottom());
    if (top <= rect.bottom())
        painter.fillRect(Device(QRect(rect.left(), top, rect.width(), rect.bottom() - top + 1)),
                         QColor::fromRgb(m_scene->theme.base));
}

void CGridPainter::PaintStrip(int row, const QRect& clip) {
    const CGridGeometry& geometry = m_scene->geometry;
    const QRect line(clip.left(), geometry.RowTop(row), clip.width(),
                     row == 0 ? geometry.HeaderHeight() : geometry.RowHeight());
    QRect place = line.intersected(clip);
    if (row > 0) place.setTop(std::max(place.top(), geometry.HeaderHeight()));
    if (place.isEmpty()) return;
    m_canvas.Begin(Device(place));
    PaintRow(row);
    m_canvas.Flush();
}

void CGridPainter::PaintRow(int row) {
    const CGridGeometry& geometry = m_scene->geometry;
    const SGridTheme& theme = m_scene->theme;
    m_cell.Reset();
    const bool header = row == 0;
    const bool span = !header && m_scene->source != nullptr && m_scene->source->FillSpan(row, m_cell);
    m_rowColor = header                                                            ? theme.header
                 : m_scene->options.shading && geometry.ShownIndexOf(row) % 2 == 0 ? theme.shade
                                                                                   : theme.base;
    m_canvas.Fill(m_canvas.Place(), m_rowColor);
    if (span) {
        PaintSpan(row);
    } else {
        PaintColumns(row, 1, geometry.ShownLockedColumns());
        if (const int stuck = geometry.StuckColumn(); stuck > 0) PaintColumns(row, stuck, stuck);
        PaintColumns(row, geometry.FirstScrolledColumn(), geometry.LastScrolledColumn());
        if (header || m_scene->options.lines == EGridLines::Both) {
            const QRect all = Device(QRect(0, geometry.RowTop(row), geometry.Viewport().width(),
                                           header ? geometry.HeaderHeight() : geometry.RowHeight()));
            const int from = header ? 0 : Device(geometry.ContentRight());
            m_canvas.Fill({from, all.bottom() - m_line + 1, all.width(), m_line},
                          header ? theme.headerLine : theme.gridLine);
        }
        if (!header) PaintHint(row);
    }
    if (geometry.ColumnWidth(0) > 0)
        PaintHeaderCell(row, 0);
    else if (!header) // Without row numbers the mark of hidden rows is drawn at the edge of the cells.
        PaintHiddenRowMark(row, Device(QRect(0, geometry.RowTop(row), kHiddenRowMark, geometry.RowHeight())),
                           m_canvas.Place());
}

void CGridPainter::PaintSpan(int row) {
    const CGridGeometry& geometry = m_scene->geometry;
    const SGridTheme& theme = m_scene->theme;
    const int left = geometry.ColumnWidth(0);
    const QRect rect =
        Device(QRect(left, geometry.RowTop(row), geometry.Viewport().width() - left, geometry.RowHeight()));
    // A row that is selected among others shows which columns; alone, it is selected as the one text that it is.
    const bool selected = m_selected.HasRow(row) && m_selected.firstRow == m_selected.lastRow;
    m_background = selected                               ? theme.selected
                   : m_cell.background != kAutomaticColor ? RgbFromColorRef(m_cell.background)
                                                          : theme.span;
    m_canvas.Fill(rect, m_background);
    if (m_selected.HasRow(row) && !selected)
        for (int column = m_selected.firstColumn; column <= m_selected.lastColumn; ++column)
            m_canvas.Fill(Device(geometry.VisibleCellRect(row, column)), theme.selected);
    if (m_scene->options.lines == EGridLines::Both)
        m_canvas.Fill({rect.left(), rect.bottom() - m_line + 1, rect.width(), m_line}, theme.gridLine);
    if (m_cell.borders != 0) PaintBorders(rect, rect);
    const bool plain = m_cell.role == ETextRole::Normal && m_cell.background == kAutomaticColor;
    DrawText(rect, rect, plain ? theme.spanText : TextColor());
    if (m_scene->selection.focus.row == row)
        m_canvas.Frame(rect, m_scene->hasKeyboard ? 2 * m_line : m_line,
                       m_scene->hasKeyboard ? theme.focus : theme.focusIdle);
    ++m_painted;
}

void CGridPainter::PaintColumns(int row, int first, int last) {
    const CGridGeometry& geometry = m_scene->geometry;
    const QRect& place = m_canvas.Place();
    for (int column = first; column <= last; ++column) {
        if (geometry.ColumnWidth(column) == 0) continue;
        const QRect visible = Device(geometry.VisibleCellRect(row, column)).intersected(place);
        if (visible.isEmpty()) continue;
        if (row == 0)
            PaintHeaderCell(row, column);
        else
            PaintCell(row, column, Device(geometry.CellRect(row, column)), visible);
    }
}

// In each of the row's pieces that are painted apart the text begins at the same place.
void CGridPainter::PaintHint(int row) {
    m_cell.Reset();
    if (m_scene->source == nullptr || !m_scene->source->FillRowHint(row, m_cell)) return;
    const QRect run = Device(WidestEmptyRun(row));
    m_cell.Reset();
    m_scene->source->FillRowHint(row, m_cell);
    const int width = RunWidth(m_scene->fonts.Atlas(m_cell.font, m_scale), m_cell) + 2 * Zoomed(kTextPadding);
    if (m_scene->options.lines == EGridLines::Both) ClearLinesBetween(row, run.left(), run.left() + width);
    m_background = m_rowColor;
    DrawText(run, run.intersected(m_canvas.Place()), TextColor());
}

// Takes the lines beside cells away where a text is drawn. That of the fixed columns and the focus's frame stay.
void CGridPainter::ClearLinesBetween(int row, int left, int right) {
    const CGridGeometry& geometry = m_scene->geometry;
    const SGridCell& focus = m_scene->selection.focus;
    for (int column = 1; column < geometry.ColumnCount(); ++column) {
        if (column == geometry.LastFixedColumn()) continue;
        if (row == focus.row && (column == focus.column || column + 1 == focus.column)) continue;
        const QRect cell = Device(geometry.VisibleCellRect(row, column));
        const QRect line(cell.right() - m_line + 1, cell.top(), m_line, cell.height() - m_line);
        if (cell.isEmpty() || line.left() <= left || line.right() >= right) continue;
        m_canvas.Fill(line.intersected(m_canvas.Place()),
                      m_selected.Has(row, column) ? m_scene->theme.selected : m_rowColor);
    }
}

QRect CGridPainter::WidestEmptyRun(int row) {
    const CGridGeometry& geometry = m_scene->geometry;
    QRect widest, run;
    const auto look = [&](int first, int last) {
        for (int column = first; column <= last; ++column) {
            const QRect seen = geometry.VisibleCellRect(row, column);
            if (seen.isEmpty()) continue;
            m_cell.Reset();
            m_scene->source->FillCell(row, column, m_cell);
            run = m_cell.length > 0 ? QRect() : run.united(seen);
            if (run.width() > widest.width()) widest = run;
        }
    };
    look(1, geometry.ShownLockedColumns());
    if (const int stuck = geometry.StuckColumn(); stuck > 0) look(stuck, stuck);
    look(geometry.FirstScrolledColumn(), geometry.LastScrolledColumn());
    return widest;
}

QRgb CGridPainter::CellBackground(int row, int column) const {
    if (m_selected.Has(row, column)) return m_scene->theme.selected;
    const bool lit = !m_cell.steady && m_scene->flash.IsLit(row, column);
    if (const ETextRole shown = m_cell.directionMark != EDirectionMark::None ? m_cell.direction : m_cell.role;
        lit || m_cell.directionMark == EDirectionMark::Background) {
        if (shown == ETextRole::Up || shown == ETextRole::Down)
            return DirectionTint(m_scene->theme, shown, lit && m_cell.directionMark == EDirectionMark::Background);
        // A change without a direction is seen in the text; colour is left to what it means.
    }
    return m_cell.background != kAutomaticColor ? RgbFromColorRef(m_cell.background) : m_rowColor;
}

// At the left edge, where arrows of a column are below each other. Returns what is left of the cell for its text.
QRect CGridPainter::DrawArrow(const QRect& rect, const QRect& clip) {
    if (m_cell.directionMark != EDirectionMark::Arrow) return rect;
    CGlyphAtlas& atlas = m_scene->fonts.Atlas(m_cell.font, m_scale);
    const int code = ArrowOf(m_cell.direction);
    const SGlyph& glyph = atlas.Glyph(code);
    m_canvas.Glyph(atlas, glyph, rect.left() + Zoomed(kTextPadding), Baseline(rect, atlas),
                   SymbolColor(code, TextColor()), clip);
    return rect.adjusted(ArrowRoom(atlas), 0, 0, 0);
}

void CGridPainter::PaintCell(int row, int column, const QRect& rect, const QRect& clip) {
    const SGridTheme& theme = m_scene->theme;
    m_cell.Reset();
    if (m_scene->source != nullptr) m_scene->source->FillCell(row, column, m_cell);
    ++m_painted;

    m_background = CellBackground(row, column);
    if (m_background != m_rowColor) m_canvas.Fill(clip, m_background);
    const CGridGeometry& geometry = m_scene->geometry;
    const bool lastFixed = column == geometry.LastFixedColumn();
    QRect inner = clip;
    if (m_scene->options.lines == EGridLines::Both) {
        m_canvas.Fill(QRect(rect.left(), rect.bottom() - m_line + 1, rect.width(), m_line).intersected(clip),
                      theme.gridLine);
        m_canvas.Fill(QRect(rect.right() - m_line + 1, rect.top(), m_line, rect.height()).intersected(clip),
                      theme.gridLine);
        inner = inner.intersected(rect.adjusted(0, 0, -m_line, -m_line));
    }
    if (lastFixed)
        m_canvas.Fill(QRect(rect.right() - m_line + 1, rect.top(), m_line, rect.height()).intersected(clip),
                      theme.headerLine);
    const QRgb text = TextColor();
    if (m_cell.shape.kind != ECellShape::None) PaintShape(rect, inner, text);
    if (m_cell.borders != 0) PaintBorders(rect, clip);
    if (m_cell.length > 0) DrawText(DrawArrow(rect, inner), inner, text);
    if (m_cell.marks != 0) PaintCellMarks(rect, inner);
    if (m_scene->selection.focus == SGridCell{row, column}) {
        // The frame keeps to what can be seen of the cell, so that it is whole under the locked columns' edge too.
        const QRect seen = Device(geometry.VisibleCellRect(row, column));
        const bool strong = m_scene->hasKeyboard;
        m_canvas.Frame(seen, strong ? 2 * m_line : m_line, strong ? theme.focus : theme.focusIdle);
    }
}

// At the right edge, beside the texts: a note at the top, what fired at the bottom, what is armed above that.
void CGridPainter::PaintCellMarks(const QRect& rect, const QRect& clip) {
    const SGridTheme& theme = m_scene->theme;
    // Three of them have room, one above the other.
    const int size = std::min(Zoomed(kCellMark), (rect.height() - 2 * m_line) / 3);
    const int right = rect.right() - m_line;
    const int bottom = rect.bottom() - m_line;
    const auto fill = [&](const QRect& place, QRgb color) { m_canvas.Fill(place.intersected(clip), color); };
    const auto dot = [&](const QRect& place, QRgb color) {
        const double radius = place.width() / 2.0;
        for (int y = 0; y < place.height(); ++y) {
            const double up = radius - y - 0.5;
            const int side = static_cast<int>(std::lround(radius - std::sqrt(radius * radius - up * up)));
            fill({place.left() + side, place.top() + y, place.width() - 2 * side, 1}, color);
        }
    };
    if ((m_cell.marks & kNoteMark) != 0)
        for (int y = 0; y < size; ++y)
            fill({right - size + 1 + y, rect.top() + y, size - y, 1}, MarkColor(theme.focus));
    QRect place(right - m_line - size + 1, bottom - m_line - size + 1, size, size);
    if ((m_cell.marks & kFiredMark) != 0) {
        dot(place, MarkColor(theme.alert));
        place.translate(0, -size - m_line);
    }
    if ((m_cell.marks & kArmedMark) == 0) return;
    dot(place, MarkColor(theme.alert));
    const int ring = (size + 3) / 6;
    dot(place.adjusted(ring, ring, -ring, -ring), m_background);
}

void CGridPainter::PaintShape(const QRect& rect, const QRect& clip, QRgb text) {
    const SGridTheme& theme = m_scene->theme;
    SShapeLook look{.background = m_background, .text = text, .color = ShapeRoleColor(), .axis = theme.headerLine};
    look.line = m_line;
    look.edge = Device(kShapeEdge);
    look.rangeHeight = Device(kRangeHeight);
    if (m_cell.shape.kind == ECellShape::Range) {
        look.color = MarkColor(look.color, m_cell.shape.role);
        look.fine = MarkColor(theme.border);
        look.strong = MarkColor(theme.text);
    }
    m_shapes.Paint(m_canvas, m_cell.shape, rect, clip, look);
}

void CGridPainter::PaintBorders(const QRect& rect, const QRect& clip) {
    const int thickness = (m_cell.borders & kThickBorders) != 0 ? 2 * m_line : m_line;
    vx::PaintBorders(m_canvas, m_cell.borders, rect, clip, thickness, MarkColor(m_scene->theme.border));
}

void CGridPainter::PaintHeaderCell(int row, int column) {
    const CGridGeometry& geometry = m_scene->geometry;
    const SGridTheme& theme = m_scene->theme;
    const QRect rect = Device(geometry.CellRect(row, column));
    const QRect clip = Device(geometry.VisibleCellRect(row, column)).intersected(m_canvas.Place());
    if (clip.isEmpty()) return;
    m_cell.Reset();
    if (m_scene->source != nullptr && column > 0) m_scene->source->FillHeader(column, m_cell);
    if (m_scene->source != nullptr && column == 0 && row > 0) m_scene->source->FillRowNumber(row, m_cell);
    ++m_painted;

    const bool selected = (row > 0 && m_selected.HasRow(row)) || (column > 0 && m_selected.HasColumn(column));
    const bool reached = selected && geometry.RowCount() > 0;
    m_background = reached ? theme.headerSelected : theme.header;
    m_canvas.Fill(clip, m_background);
    const QRgb below = row == 0 ? theme.headerLine : theme.gridLine;
    if (row == 0 || m_scene->options.lines == EGridLines::Both)
        m_canvas.Fill(QRect(rect.left(), rect.bottom() - m_line + 1, rect.width(), m_line).intersected(clip), below);
    m_canvas.Fill(QRect(rect.right() - m_line + 1, rect.top(), m_line, rect.height()).intersected(clip),
                  theme.headerLine);
    QRect text = rect.adjusted(0, 0, 0, -m_line);
    if (const ESortMark mark = row == 0 ? m_scene->marks.SortOf(column) : ESortMark::None; mark != ESortMark::None) {
        PaintSortMark(rect, clip, mark);
        text.setRight(std::max(text.left(), text.right() - Zoomed(kSortMarkRoom)));
    }
    row == 0 ? PaintHiddenMark(column, rect, clip) : PaintHiddenRowMark(row, rect, clip);
    if (m_cell.length > 0)
        DrawText(text, clip.intersected(text.adjusted(0, 0, -m_line, 0)),
                 m_cell.role == ETextRole::Normal ? theme.headerText : TextColor());
}

void CGridPainter::PaintSortMark(const QRect& rect, const QRect& clip, ESortMark mark) {
    CGlyphAtlas& atlas = m_scene->fonts.Atlas(0, m_scale);
    const SGlyph& glyph = atlas.Glyph(mark == ESortMark::Ascending ? kSymbolUp : kSymbolDown);
    const int baseline = rect.top() + (rect.height() - m_line + atlas.DigitHeight() + 1) / 2;
    const int x = rect.right() - m_line - Zoomed(kTextPadding) - glyph.width + 1;
    m_canvas.Glyph(atlas, glyph, x, baseline, m_scene->theme.headerText, clip);
}

void CGridPainter::PaintHiddenMark(int column, const QRect& rect, const QRect& clip) {
    const CGridGeometry& geometry = m_scene->geometry;
    const int width = 2 * m_line;
    if (column < geometry.ColumnCount() && geometry.ColumnWidth(column + 1) == 0)
        m_canvas.Fill(QRect(rect.right() - width + 1, rect.top(), width, rect.height()).intersected(clip),
                      m_scene->theme.focusIdle);
    int before = column - 1;
    while (before > 0 && geometry.ColumnWidth(before) == 0) --before;
    // Without row numbers hidden columns at the beginning have no other neighbour.
    if (column > 1 && before == 0 && geometry.ColumnWidth(0) == 0)
        m_canvas.Fill(QRect(rect.left(), rect.top(), width, rect.height()).intersected(clip), m_scene->theme.focusIdle);
}

void CGridPainter::PaintHiddenRowMark(int row, const QRect& rect, const QRect& clip) {
    const CGridGeometry& geometry = m_scene->geometry;
    const int height = 2 * m_line;
    if (row < geometry.RowCount() && geometry.IsRowHidden(row + 1))
        m_canvas.Fill(QRect(rect.left(), rect.bottom() - height + 1, rect.width(), height).intersected(clip),
                      m_scene->theme.focusIdle);
    // Hidden rows at the beginning have no other neighbour.
    if (row > 1 && geometry.ShownIndexOf(row) == 1)
        m_canvas.Fill(QRect(rect.left(), rect.top(), rect.width(), height).intersected(clip), m_scene->theme.focusIdle);
}

// Selecting and lighting a cell cover the background that the user chose for it.
bool CGridPainter::IsOnOwnBackground() const {
    return m_cell.background != kAutomaticColor && m_background == RgbFromColorRef(m_cell.background);
}

QRgb CGridPainter::TextColor() {
    if (m_cell.role != ETextRole::Explicit || m_cell.textColor == kAutomaticColor) return RoleColor(m_cell.role);
    const QRgb own = RgbFromColorRef(m_cell.textColor);
    return IsOnOwnBackground() ? own : Readable(ETextRole::Explicit, own);
}

QRgb CGridPainter::RoleColor(ETextRole role) {
    const QRgb color = m_scene->theme.RoleColor(role);
    return IsOnOwnBackground() ? Readable(role, color) : color;
}

QRgb CGridPainter::MarkColor(QRgb wanted, ETextRole role) {
    if (!IsOnOwnBackground()) return wanted;
    SReadable& known = m_marks[(m_background ^ wanted ^ m_background >> 7 ^ wanted >> 13) % m_marks.size()];
    if (known.color != 0 && known.background == m_background && known.wanted == wanted) return known.color;
    const bool seen = ContrastRatio(wanted, m_background) >= kSeenMark;
    known = {m_background, wanted, seen ? wanted : Readable(role, wanted)};
    return known.color;
}

QRgb CGridPainter::ShapeRoleColor() const {
    const SCellShape& shape = m_cell.shape;
    if (shape.role == ETextRole::Explicit && shape.color != kAutomaticColor) return RgbFromColorRef(shape.color);
    const bool directed = shape.role == ETextRole::Up || shape.role == ETextRole::Down;
    return directed ? m_scene->theme.RoleColor(shape.role) : m_scene->theme.shape;
}

QRgb CGridPainter::SymbolColor(int code, QRgb text) {
    if (code < kSymbolUp || m_cell.role == ETextRole::Stale) return text;
    return RoleColor(code == kSymbolUp ? ETextRole::Up : code == kSymbolDown ? ETextRole::Down : ETextRole::Unchanged);
}

QRgb CGridPainter::Readable(ETextRole role, QRgb wanted) {
    const QRgb background = m_background;
    SReadable& known = m_readable[(background ^ wanted ^ background >> 7 ^ wanted >> 13) % m_readable.size()];
    if (known.color != 0 && known.background == background && known.wanted == wanted) return known.color;
    known = {background, wanted, ReadableTextColor(m_scene->theme, role, wanted, background)};
    return known.color;
}

int CGridPainter::Baseline(const QRect& rect, const CGlyphAtlas& atlas) const {
    return rect.top() + (rect.height() - m_line - atlas.Ascent() - atlas.Descent() + 1) / 2 + atlas.Ascent();
}

void CGridPainter::DrawText(const QRect& rect, const QRect& clip, QRgb color) {
    CGlyphAtlas& atlas = m_scene->fonts.Atlas(m_cell.font, m_scale);
    const int padding = Zoomed(kTextPadding);
    const int room = rect.width() - 2 * padding - m_line;
    const int baseline = Baseline(rect, atlas);
    int x = rect.left() + padding;
    std::string_view text = m_cell.Text();
    const int width = RunWidth(atlas, m_cell);
    if (width <= room) {
        if (m_cell.align == EAlign::Right) x = rect.right() - m_line - padding - width + 1;
        if (m_cell.align == EAlign::Center) x += (room - width) / 2;
        return DrawRun(atlas, text, x, baseline, color, clip);
    }
    // A cut text always starts at its beginning: the end of a number alone would read as another number.
    if (!m_scene->options.ellipsis) return DrawRun(atlas, text, x, baseline, color, clip);
    int left = room - atlas.EllipsisWidth();
    size_t kept = 0;
    for (; kept < text.size(); ++kept) {
        const auto byte = static_cast<unsigned char>(text[kept]);
        left -= atlas.Glyph(m_cell.tickTrend ? SymbolOf(byte) : byte).advance;
        if (left < 0) break;
    }
    text = text.substr(0, kept);
    DrawRun(atlas, text, x, baseline, color, clip);
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        x += atlas.Glyph(m_cell.tickTrend ? SymbolOf(byte) : byte).advance;
    }
    DrawRun(atlas, kEllipsis, x, baseline, color, clip);
}

void CGridPainter::DrawRun(CGlyphAtlas& atlas, std::string_view text, int x, int baseline, QRgb color,
                           const QRect& clip) {
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const int code = m_cell.tickTrend ? SymbolOf(byte) : byte;
        const SGlyph& glyph = atlas.Glyph(code);
        if (x > clip.right()) return;
        m_canvas.Glyph(atlas, glyph, x, baseline, SymbolColor(code, color), clip);
        x += glyph.advance;
    }
}

} // namespace vx
