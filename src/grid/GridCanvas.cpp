#include "grid/GridCanvas.h"

#include <QPainter>
#include <algorithm>

namespace vx {

namespace {

// Both colours are opaque; coverage 1..255. Red and blue are blended together in one multiplication, green in another;
// adding half and a 256th of the product divides by 255 exactly.
inline QRgb Blend(QRgb under, QRgb over, uint32_t coverage) {
    const uint32_t rest = 255 - coverage;
    uint32_t rb = (over & 0xFF00FFu) * coverage + (under & 0xFF00FFu) * rest + 0x800080u;
    rb = (rb + (rb >> 8 & 0xFF00FFu)) >> 8 & 0xFF00FFu;
    uint32_t g = (over >> 8 & 0xFFu) * coverage + (under >> 8 & 0xFFu) * rest + 0x80u;
    g = (g + (g >> 8)) & 0xFF00u;
    return 0xFF000000u | rb | g;
}

} // namespace

void CGridCanvas::Begin(const QRect& place) {
    m_place = place;
    if (m_image.width() < place.width() || m_image.height() < place.height())
        m_image = QImage(std::max(m_image.width(), place.width()), std::max(m_image.height(), place.height()),
                         QImage::Format_RGB32);
    m_pixels = reinterpret_cast<QRgb*>(m_image.bits());
    m_stride = static_cast<int>(m_image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb)));
}

void CGridCanvas::Fill(const QRect& rect, QRgb color) {
    const QRect r = rect.intersected(m_place);
    if (r.isEmpty()) return;
    for (int y = r.top(); y <= r.bottom(); ++y) std::fill_n(Line(y) + (r.left() - m_place.left()), r.width(), color);
}

void CGridCanvas::Frame(const QRect& rect, int thickness, QRgb color) {
    const int t = std::min({thickness, rect.width(), rect.height()});
    Fill({rect.left(), rect.top(), rect.width(), t}, color);
    Fill({rect.left(), rect.bottom() - t + 1, rect.width(), t}, color);
    Fill({rect.left(), rect.top(), t, rect.height()}, color);
    Fill({rect.right() - t + 1, rect.top(), t, rect.height()}, color);
}

void CGridCanvas::Glyph(const CGlyphAtlas& atlas, const SGlyph& glyph, int x, int baseline, QRgb color,
                        const QRect& clip) {
    const int left = x + glyph.left;
    const int top = baseline + glyph.top;
    const int x0 = std::max({left, clip.left(), m_place.left()});
    const int x1 = std::min({left + glyph.width - 1, clip.right(), m_place.right()});
    const int y0 = std::max({top, clip.top(), m_place.top()});
    const int y1 = std::min({top + glyph.height - 1, clip.bottom(), m_place.bottom()});
    const uint8_t* pixels = atlas.Pixels(glyph);
    for (int row = y0; row <= y1; ++row) {
        const uint8_t* cover = pixels + (row - top) * glyph.width + (x0 - left);
        QRgb* to = Line(row) + (x0 - m_place.left());
        for (int n = x1 - x0; n >= 0; --n, ++cover, ++to) {
            if (*cover == 0) continue;
            *to = *cover == 255 ? color : Blend(*to, color, *cover);
        }
    }
}

void CGridCanvas::Flush(QPainter& painter) const {
    painter.drawImage(m_place.topLeft(), m_image, QRect(QPoint(0, 0), m_place.size()));
}

} // namespace vx
