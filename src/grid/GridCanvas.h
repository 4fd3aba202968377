// SPDX-License-Identifier: MIT
#pragma once

#include "grid/GlyphAtlas.h"

#include <QImage>
#include <QRect>

class QPainter;

namespace vx {

/// A strip of pixels, about one row high, in which cells are put together. It is the window's own image where the
/// program can write into that; elsewhere a strip of its own, which stays in the processor's cache, is reused for every
/// row and copied to the window in one piece.
///
/// Units   device pixels of the viewport
class CGridCanvas {
public:
    /// From now on strips are painted with this painter, whose coordinates are the viewport's device pixels and which
    /// outlives them. Nothing may be painted otherwise between Begin and Flush.
    void SetPainter(QPainter& painter);

    /// Starts a strip at a place of the viewport; its content is undefined until it is filled.
    void Begin(const QRect& place);
    const QRect& Place() const { return m_place; }

    void Fill(const QRect& rect, QRgb color);
    /// A rectangle's outline inside its edges.
    void Frame(const QRect& rect, int thickness, QRgb color);
    /// One prepared character with the pen at (x, baseline); nothing is drawn outside clip.
    void Glyph(const CGlyphAtlas& atlas, const SGlyph& glyph, int x, int baseline, QRgb color, const QRect& clip);

    /// The strip is finished.
    void Flush() const;

private:
    QRgb* Line(int y) const { return m_pixels + static_cast<ptrdiff_t>(y - m_place.top()) * m_stride; }

    bool BeginInWindow();

    QPainter* m_painter = nullptr;
    const QImage* m_window = nullptr; ///< Null: strips go through m_image.
    QPoint m_origin;                  ///< Of the viewport in m_window.
    QImage m_image;
    bool m_inWindow = false;
    QRgb* m_pixels = nullptr;
    int m_stride = 0;
    QRect m_place;
};

} // namespace vx
