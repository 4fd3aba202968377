#pragma once

#include "grid/GlyphAtlas.h"

#include <QImage>
#include <QRect>

class QPainter;

namespace vx {

/// A strip of pixels, about one row high, in which cells are put together before the strip is copied to the window in
/// one piece. It stays in the processor's cache and is reused for every row.
///
/// Units   device pixels of the viewport
/// Thread  GUI thread only
class CGridCanvas {
public:
    /// Starts a strip at a place of the viewport; its content is undefined until it is filled.
    void Begin(const QRect& place);
    const QRect& Place() const { return m_place; }

    void Fill(const QRect& rect, QRgb color);
    /// A rectangle's outline inside its edges.
    void Frame(const QRect& rect, int thickness, QRgb color);
    /// One prepared character with the pen at (x, baseline); nothing is drawn outside clip.
    void Glyph(const CGlyphAtlas& atlas, const SGlyph& glyph, int x, int baseline, QRgb color, const QRect& clip);

    /// Copies the strip; the painter's coordinates are the viewport's device pixels.
    void Flush(QPainter& painter) const;

private:
    QRgb* Line(int y) const { return m_pixels + static_cast<ptrdiff_t>(y - m_place.top()) * m_stride; }

    QImage m_image;
    QRgb* m_pixels = nullptr;
    int m_stride = 0;
    QRect m_place;
};

} // namespace vx
