// SPDX-License-Identifier: MIT
#include "grid/GridShapes.h"

#include "grid/GridTheme.h"

namespace vx {

namespace {

constexpr int kBarStrength = kFullStrength * 3 / 10;
constexpr int kHeatStrength = kFullStrength * 4 / 10;

int Part(int length, int fraction) { return (length * fraction + SCellShape::kWhole / 2) / SCellShape::kWhole; }

void PaintRange(CGridCanvas& canvas, const SCellShape& shape, const QRect& cell, const QRect& clip,
                const SShapeLook& look) {
    const QRect strip(cell.left() + look.edge, cell.bottom() - look.line - look.rangeHeight + 1,
                      cell.width() - 2 * look.edge - look.line, look.rangeHeight);
    const auto fill = [&](int from, int width, int height, QRgb color) {
        const QRect place(strip.left() + from, strip.top() + (strip.height() - height) / 2, width, height);
        canvas.Fill(place.intersected(clip), color);
    };
    const auto mark = [&](int fraction, int width, QRgb color) {
        if (fraction != SCellShape::kNoMark) fill(Part(strip.width() - width, fraction), width, strip.height(), color);
    };
    fill(0, strip.width(), look.line, look.fine);
    const int from = Part(strip.width(), shape.from);
    fill(from, Part(strip.width(), shape.to) - from, strip.height() / 2, look.color);
    mark(shape.fineMark, look.line, look.fine);
    mark(shape.strongMark, 2 * look.line, look.strong);
}

} // namespace

void CGridShapes::Paint(CGridCanvas& canvas, const SCellShape& shape, const QRect& cell, const QRect& clip,
                        const SShapeLook& look) {
    switch (shape.kind) {
    case ECellShape::Bar:
        return PaintBar(canvas, shape, cell, clip, look);
    case ECellShape::Range:
        return PaintRange(canvas, shape, cell, clip, look);
    case ECellShape::Heat:
        return canvas.Fill(clip, BehindText(look, Part(kHeatStrength, shape.to)));
    case ECellShape::None:
        return;
    }
}

void CGridShapes::PaintBar(CGridCanvas& canvas, const SCellShape& shape, const QRect& cell, const QRect& clip,
                           const SShapeLook& look) {
    const QRect room = cell.adjusted(look.edge, look.edge, -look.edge - look.line, -look.edge - look.line);
    int from = room.left() + Part(room.width(), shape.from);
    int to = room.left() + Part(room.width(), shape.to);
    if (shape.from < shape.to) {
        if (to - from < look.line) // The smallest number is seen too, on its side of zero.
            shape.to == shape.fineMark ? from = to - look.line : to = from + look.line;
        canvas.Fill(QRect(from, room.top(), to - from, room.height()).intersected(clip),
                    BehindText(look, kBarStrength));
    }
    if (shape.fineMark != SCellShape::kNoMark)
        canvas.Fill(
            QRect(room.left() + Part(room.width(), shape.fineMark), cell.top(), look.line, cell.height() - look.line)
                .intersected(clip),
            look.axis);
}

QRgb CGridShapes::BehindText(const SShapeLook& look, int strength) {
    SKnown& known = m_known[(look.background ^ look.color >> 3 ^ look.color >> 16 ^ look.text >> 5 ^ look.text >> 17 ^
                             static_cast<QRgb>(strength) * 37) %
                            m_known.size()];
    if (known.strength != strength || known.background != look.background || known.color != look.color ||
        known.text != look.text)
        known = {look.background, look.color, look.text, strength,
                 ShapeColor(look.background, look.color, strength, look.text)};
    return known.mixed;
}

void PaintBorders(CGridCanvas& canvas, uint8_t borders, const QRect& cell, const QRect& clip, int thickness,
                  QRgb color) {
    const auto side = [&](ECellBorder border, int x, int y, int width, int height) {
        if ((borders & border) != 0) canvas.Fill(QRect(x, y, width, height).intersected(clip), color);
    };
    side(kLeftBorder, cell.left(), cell.top(), thickness, cell.height());
    side(kTopBorder, cell.left(), cell.top(), cell.width(), thickness);
    side(kRightBorder, cell.right() - thickness + 1, cell.top(), thickness, cell.height());
    side(kBottomBorder, cell.left(), cell.bottom() - thickness + 1, cell.width(), thickness);
}

} // namespace vx
