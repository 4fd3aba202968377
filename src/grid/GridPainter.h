// SPDX-License-Identifier: MIT
#pragma once

#include "grid/CellSource.h"
#include "grid/GlyphAtlas.h"
#include "grid/GridCanvas.h"
#include "grid/GridGeometry.h"
#include "grid/GridMarks.h"
#include "grid/GridSelection.h"
#include "grid/GridShapes.h"
#include "grid/GridTheme.h"

#include <array>

class QPainter;

namespace vx {

enum class EGridLines : uint8_t { Both, None };

/// How a grid looks, apart from its colours and fonts.
struct SGridOptions {
    EGridLines lines = EGridLines::Both;
    bool shading = true;  ///< Every second shown row has the theme's shade.
    bool ellipsis = true; ///< A text wider than its cell ends in "..." instead of at the cell's edge.
    bool flash = true;    ///< A changed cell's background lights up for a moment; off for reduced motion.

    bool operator==(const SGridOptions&) const = default;
};

class CCellFlash;

/// What a painter reads; all of it belongs to the control.
struct SGridScene {
    const CGridGeometry& geometry;
    const SGridTheme& theme;
    const SGridOptions& options;
    const SGridSelection& selection;
    const SGridMarks& marks;
    const CCellFlash& flash;
    CGridFonts& fonts;
    const CCellSource* source; ///< Null: an empty grid.
    bool hasKeyboard;          ///< The focus rectangle is the strong one.
};

/// Paints the cells of a grid that lie in a rectangle of its viewport, row by row through one strip of pixels.
///
/// Shape   at most one FillCell per cell that the rectangle touches; nothing is allocated once fonts and strip exist
class CGridPainter {
public:
    /// Paints the rectangles of a region. The painter's transformation may scale (high-DPI screens, pictures), equally
    /// both ways; texts and lines then start at whole device pixels.
    ///
    /// Returns the number of cells painted, header cells and spanning rows counted once each
    int Paint(QPainter& painter, const QRegion& region, const SGridScene& scene);

    /// Space between a cell's edge and its text, in logical pixels at a zoom of 100 percent.
    static constexpr int kTextPadding = 5;
    /// What a header gives to the mark of the column that the rows are sorted by, the same.
    static constexpr int kSortMarkRoom = 12;
    /// The width in logical pixels that a cell needs to show its text whole on a screen of a scale.
    static int NeededWidth(const SCell& cell, CGridFonts& fonts, double scale);
    /// What a byte of a cell with a tick trend is drawn as: one of EGridSymbol, or the character itself.
    static int SymbolOf(unsigned char byte);

private:
    QRect Device(const QRect& rect) const;
    /// The nearest device pixel.
    int Device(int length) const { return static_cast<int>((length * m_scaleFixed + kHalf) >> kFixedBits); }
    /// The same of a length that grows with the zoom.
    int Zoomed(int length) const { return static_cast<int>((length * m_zoomedFixed + kHalf) >> kFixedBits); }

    void PaintRect(QPainter& painter, const QRect& rect);
    void PaintStrip(int row, const QRect& clip);
    void PaintRow(int row);
    void PaintSpan(int row);
    void PaintColumns(int row, int first, int last);
    void PaintHint(int row);
    void ClearLinesBetween(int row, int left, int right);
    QRect WidestEmptyRun(int row);
    void PaintCell(int row, int column, const QRect& rect, const QRect& clip);
    void PaintCellMarks(const QRect& rect, const QRect& clip);
    void PaintShape(const QRect& rect, const QRect& clip, QRgb text);
    void PaintBorders(const QRect& rect, const QRect& clip);
    void PaintHeaderCell(int row, int column);
    void PaintSortMark(const QRect& rect, const QRect& clip, ESortMark mark);
    void PaintHiddenMark(int column, const QRect& rect, const QRect& clip);
    void PaintHiddenRowMark(int row, const QRect& rect, const QRect& clip);
    void PaintEmptySpace(QPainter& painter, const QRect& rect);

    QRgb CellBackground(int row, int column) const;
    QRect DrawArrow(const QRect& rect, const QRect& clip);
    bool IsOnOwnBackground() const;
    QRgb TextColor();
    QRgb RoleColor(ETextRole role);
    QRgb MarkColor(QRgb wanted, ETextRole role = ETextRole::Normal);
    /// Of what is drawn of the cell's number.
    QRgb ShapeRoleColor() const;
    QRgb SymbolColor(int code, QRgb text);
    /// A colour, or another one of the same meaning when it cannot be seen on the cell's background.
    QRgb Readable(ETextRole role, QRgb wanted);
    int Baseline(const QRect& rect, const CGlyphAtlas& atlas) const;
    void DrawText(const QRect& rect, const QRect& clip, QRgb color);
    void DrawRun(CGlyphAtlas& atlas, std::string_view text, int x, int baseline, QRgb color, const QRect& clip);

    const SGridScene* m_scene = nullptr;
    static constexpr int kFixedBits = 16;
    static constexpr int64_t kHalf = int64_t{1} << (kFixedBits - 1);
    double m_scale = 1;
    int64_t m_scaleFixed = int64_t{1} << kFixedBits;
    int64_t m_zoomedFixed = m_scaleFixed;
    int m_line = 1; // thickness in device pixels
    int m_painted = 0;
    SGridRange m_selected;
    QRgb m_rowColor = 0;
    QRgb m_background = 0; // of the cell being painted
    SCell m_cell;
    CGridCanvas m_canvas;
    CGridShapes m_shapes;

    struct SReadable {
        QRgb background = 0;
        QRgb wanted = 0;
        QRgb color = 0;
    };
    std::array<SReadable, 64> m_readable{};
    std::array<SReadable, 64> m_marks{};
};

} // namespace vx
