// SPDX-License-Identifier: MIT
#pragma once

#include "grid/CellSource.h"
#include "grid/GridCanvas.h"

#include <QRect>
#include <QRgb>

#include <array>

namespace vx {

/// Sizes and colours in which the shape of a cell is painted.
///
/// Units   device pixels
struct SShapeLook {
    QRgb background = 0; ///< Of the cell.
    QRgb text = 0;       ///< Which stays readable.
    QRgb color = 0;
    QRgb axis = 0;   ///< Where zero is.
    QRgb fine = 0;   ///< The line and the fine mark of a range.
    QRgb strong = 0; ///< Its strong mark.
    int line = 1;    ///< Thickness.
    int edge = 0;    ///< Room around bars and ranges.
    int rangeHeight = 0;
};

/// Paints what is drawn of the numbers of cells. The colour of a bar or of heat is one step or more below where the
/// text would be hard to read.
class CGridShapes {
public:
    void Paint(CGridCanvas& canvas, const SCellShape& shape, const QRect& cell, const QRect& clip,
               const SShapeLook& look);

private:
    void PaintBar(CGridCanvas& canvas, const SCellShape& shape, const QRect& cell, const QRect& clip,
                  const SShapeLook& look);
    QRgb BehindText(const SShapeLook& look, int strength);

    struct SKnown {
        QRgb background = 0;
        QRgb color = 0;
        QRgb text = 0;
        int strength = -1;
        QRgb mixed = 0;
    };
    std::array<SKnown, 256> m_known{}; ///< By a number made of what ShapeColor takes.
};

/// Paints lines inside the edges of a cell; borders: of ECellBorder.
void PaintBorders(CGridCanvas& canvas, uint8_t borders, const QRect& cell, const QRect& clip, int thickness,
                  QRgb color);

} // namespace vx
