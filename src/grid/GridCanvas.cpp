// SPDX-License-Identifier: MIT
#include "grid/GridCanvas.h"

#include <QPaintEngine>
#include <QPainter>
#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace vx {

namespace {

constexpr int kGroup = SGlyph::kPixelGroup;
constexpr int kGroupBytes = kGroup * SGlyph::kBytesPerPixel;

// Vectors of the compiler, one processor register each: a group of four pixels as bytes, and half a group as 16-bit
// channels while it is blended.
using Bytes = uint8_t __attribute__((vector_size(kGroupBytes)));
using Channels = uint16_t __attribute__((vector_size(kGroupBytes)));
static_assert(std::endian::native == std::endian::little, "widening puts a zero byte after each byte");

inline Bytes Load(const void* bytes) {
    Bytes value;
    std::memcpy(&value, bytes, sizeof(value));
    return value;
}
inline Channels WidenLow(Bytes b) {
    return reinterpret_cast<Channels>(
        __builtin_shufflevector(b, Bytes{}, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23));
}
inline Channels WidenHigh(Bytes b) {
    return reinterpret_cast<Channels>(
        __builtin_shufflevector(b, Bytes{}, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31));
}

// Each channel over the other by its coverage; adding a 256th of the rounded sum to it divides by 255 exactly, so
// coverage 0 leaves a pixel as it is and 255 gives the colour itself.
inline Channels BlendChannels(Channels under, Channels over, Channels cover) {
    const Channels sum = over * cover + under * (255 - cover) + 128;
    return (sum + (sum >> 8)) >> 8;
}

// Four pixels; over is the colour in each half group's channels.
inline void BlendGroup(QRgb* to, const uint8_t* coverage, Channels over) {
    const Bytes under = Load(to);
    const Bytes cover = Load(coverage);
    const auto low = reinterpret_cast<Bytes>(BlendChannels(WidenLow(under), over, WidenLow(cover)));
    const auto high = reinterpret_cast<Bytes>(BlendChannels(WidenHigh(under), over, WidenHigh(cover)));
    const Bytes blended = __builtin_shufflevector(low, high, 0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
    std::memcpy(to, &blended, sizeof(blended));
}

// One pixel of the same.
inline QRgb BlendPixel(QRgb under, QRgb over, uint32_t coverage) {
    const uint32_t rest = 255 - coverage;
    uint32_t rb = (over & 0xFF00FFu) * coverage + (under & 0xFF00FFu) * rest + 0x800080u;
    rb = (rb + (rb >> 8 & 0xFF00FFu)) >> 8 & 0xFF00FFu;
    uint32_t g = (over >> 8 & 0xFFu) * coverage + (under >> 8 & 0xFFu) * rest + 0x80u;
    g = (g + (g >> 8)) & 0xFF00u;
    return 0xFF000000u | rb | g;
}

} // namespace

void CGridCanvas::SetPainter(QPainter& painter) {
    m_painter = &painter;
    m_window = nullptr;
    const QTransform transform = painter.deviceTransform();
    const QPaintEngine* engine = painter.paintEngine();
    const QPointF origin(transform.dx(), transform.dy());
    if (transform.type() > QTransform::TxTranslate || origin != QPointF(origin.toPoint())) return;
    // What else a painter does to what is painted with it.
    if (painter.hasClipping() || painter.opacity() < 1 ||
        painter.compositionMode() != QPainter::CompositionMode_SourceOver)
        return;
    if (engine->type() != QPaintEngine::Raster || engine->paintDevice()->devType() != QInternal::Image) return;
    const auto* image = static_cast<const QImage*>(engine->paintDevice());
    if (image->format() != QImage::Format_RGB32 && image->format() != QImage::Format_ARGB32_Premultiplied) return;
    m_window = image;
    m_origin = origin.toPoint();
}

// The last group of a character may reach over the edge of the strip and leave the pixels there as they are: they must
// be pixels of the image, if only of its next line.
bool CGridCanvas::BeginInWindow() {
    if (m_window == nullptr) return false;
    const QRect target = m_place.translated(m_origin);
    if (!m_window->rect().contains(target)) return false;
    if (target.right() + kGroup >= m_window->width() && target.bottom() + 1 >= m_window->height()) return false;
    // The painter's own device: nobody else holds the image, and constBits() does not copy it.
    auto* const bits = const_cast<uchar*>(m_window->constBits());
    const qsizetype lineBytes = m_window->bytesPerLine();
    m_stride = static_cast<int>(lineBytes / static_cast<qsizetype>(sizeof(QRgb)));
    m_pixels = reinterpret_cast<QRgb*>(bits + target.top() * lineBytes) + target.left();
    return true;
}

void CGridCanvas::Begin(const QRect& place) {
    m_place = place;
    m_inWindow = BeginInWindow();
    if (m_inWindow) return;
    if (m_image.width() < place.width() + kGroup || m_image.height() < place.height())
        // The last group of a character may reach over the edge of the strip.
        m_image = QImage(std::max(m_image.width(), place.width() + kGroup), std::max(m_image.height(), place.height()),
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
    if (x0 > x1 || y0 > y1) return;
    const int rowBytes = glyph.RowBytes();
    const uint8_t* cover = atlas.Pixels(glyph) + (y0 - top) * rowBytes;
    QRgb* to = Line(y0) + (left - m_place.left());
    if (x1 - x0 + 1 < glyph.width) {
        for (int y = y0; y <= y1; ++y, cover += rowBytes, to += m_stride)
            for (int i = x0 - left; i <= x1 - left; ++i)
                to[i] = BlendPixel(to[i], color, cover[i * SGlyph::kBytesPerPixel]);
        return;
    }
    std::array<QRgb, kGroup> group;
    group.fill(color);
    const Channels channels = WidenLow(Load(group.data()));
    for (int y = y0; y <= y1; ++y, cover += rowBytes, to += m_stride)
        for (int i = 0; i < rowBytes; i += kGroupBytes)
            BlendGroup(to + i / SGlyph::kBytesPerPixel, cover + i, channels);
}

void CGridCanvas::Flush() const {
    if (!m_inWindow) m_painter->drawImage(m_place.topLeft(), m_image, QRect(QPoint(0, 0), m_place.size()));
}

} // namespace vx
