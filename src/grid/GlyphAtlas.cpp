// SPDX-License-Identifier: MIT
#include "grid/GlyphAtlas.h"

#include "base/Windows1252.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace vx {

namespace {

constexpr double kPointsPerInch = 72;
constexpr size_t kMaxFonts = 256;
// A window is on one screen; a second scale is needed for a picture of it or a move between screens.
constexpr size_t kMaxAtlases = 64;
constexpr int kWhole = 100; // percent
constexpr int kMargin = 3;  // around a character's box, for what smoothing and slanting add

int16_t Small(double value) { return static_cast<int16_t>(std::clamp<long>(std::lround(value), -30000, 30000)); }

bool IsBlank(int code) {
    return code <= 0x20 || code == 0x7F || code == 0xA0 || code == 0x81 || code == 0x8D || code == 0x8F ||
           code == 0x90 || code == 0x9D;
}

QImage EmptyImage(int width, int height) {
    QImage image(std::max(1, width), std::max(1, height), QImage::Format_ARGB32_Premultiplied);
    image.fill(0);
    return image;
}

} // namespace

CGlyphAtlas::CGlyphAtlas(const SGridFont& font, double dotsPerInch, double scale) : m_font(font.family) {
    m_font.setPixelSize(std::max(1, static_cast<int>(std::lround(font.size * dotsPerInch / kPointsPerInch * scale))));
    m_font.setBold(font.bold);
    m_font.setItalic(font.italic);
    m_font.setKerning(false);
    m_font.setStyleStrategy(static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    const QFontMetricsF metrics(m_font);
    m_ascent = static_cast<int>(std::lround(metrics.ascent()));
    m_descent = static_cast<int>(std::lround(metrics.descent()));
    m_digitHeight = static_cast<int>(std::lround(metrics.tightBoundingRect(QStringLiteral("0")).height()));
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        m_digitAdvance =
            std::max(m_digitAdvance, static_cast<int>(std::lround(metrics.horizontalAdvance(QChar(digit)))));
}

void CGlyphAtlas::Prepare(int code, SGlyph& glyph) {
    glyph.prepared = true;
    if (code >= kSymbolUp) return PrepareSymbol(code, glyph);
    const QFontMetricsF metrics(m_font);
    // A soft hyphen has no shape of its own outside line breaking, yet it is a byte of the cell.
    const char16_t character = code == 0xAD ? u'-' : CharFromWindows1252(static_cast<unsigned char>(code));
    const bool digit = code >= '0' && code <= '9';
    const double advance = metrics.horizontalAdvance(IsBlank(code) ? QChar(u' ') : QChar(character));
    glyph.advance = digit ? Small(m_digitAdvance) : Small(advance);
    if (IsBlank(code)) return;

    const QRect box =
        metrics.boundingRect(QChar(character)).toAlignedRect().adjusted(-kMargin, -kMargin, kMargin, kMargin);
    QImage image = EmptyImage(box.width(), box.height());
    const int shift = digit ? (m_digitAdvance - Small(advance)) / 2 : 0;
    {
        QPainter painter(&image);
        painter.setFont(m_font);
        painter.setPen(Qt::white);
        painter.drawText(QPoint(-box.left(), -box.top()), QString(QChar(character)));
    }
    Store(glyph, image, box.left() + shift, box.top());
}

void CGlyphAtlas::PrepareSymbol(int code, SGlyph& glyph) {
    // As high as a digit, with the shape standing on the middle of the digits' height. Rounded down, so that ten of
    // them are at no scale wider than the column's default width has room for.
    const double side = std::max(4, m_digitHeight);
    const double width = std::floor(side * 0.78);
    QImage image = EmptyImage(static_cast<int>(width) + 2, static_cast<int>(side) + 2);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::white);
        const double high = side * 0.14;
        const double low = side * 0.86;
        QPainterPath path;
        if (code == kSymbolDot) {
            const double radius = side * 0.19;
            path.addEllipse(QPointF(width / 2, side / 2), radius, radius);
        } else {
            const bool up = code == kSymbolUp;
            path.moveTo(0, up ? low : high);
            path.lineTo(width, up ? low : high);
            path.lineTo(width / 2, up ? high : low);
            path.closeSubpath();
        }
        painter.drawPath(path);
    }
    glyph.advance = Small(width + std::max(1.0, std::floor(side * 0.16)));
    Store(glyph, image, 0, -static_cast<int>(side));
}

void CGlyphAtlas::Store(SGlyph& glyph, const QImage& image, int originX, int originY) {
    int left = image.width(), right = -1, top = image.height(), bottom = -1;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(line[x]) == 0) continue;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = y;
        }
    }
    if (right < 0) return;
    glyph.left = Small(originX + left);
    glyph.top = Small(originY + top);
    glyph.width = Small(right - left + 1);
    glyph.height = Small(bottom - top + 1);
    glyph.offset = static_cast<uint32_t>(m_pixels.size());
    const auto rowBytes = static_cast<size_t>(glyph.RowBytes());
    m_pixels.resize(m_pixels.size() + rowBytes * static_cast<size_t>(glyph.height), 0);
    uint8_t* to = m_pixels.data() + glyph.offset;
    for (int y = top; y <= bottom; ++y, to += rowBytes) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = left; x <= right; ++x)
            std::fill_n(to + (x - left) * SGlyph::kBytesPerPixel, SGlyph::kBytesPerPixel,
                        static_cast<uint8_t>(qAlpha(line[x])));
    }
}

CGridFonts::CGridFonts() : m_fonts(1) {}

int CGridFonts::Add(const SGridFont& font) {
    const auto known = std::find(m_fonts.begin(), m_fonts.end(), font);
    if (known != m_fonts.end()) return static_cast<int>(known - m_fonts.begin());
    if (m_fonts.size() >= kMaxFonts) return 0;
    m_fonts.push_back(font);
    return Count() - 1;
}

void CGridFonts::KeepDefault() {
    m_fonts.resize(1);
    std::erase_if(m_atlases, [](const SEntry& entry) { return entry.font > 0; });
}

void CGridFonts::SetDotsPerInch(double dotsPerInch) {
    if (dotsPerInch == m_dotsPerInch) return;
    m_dotsPerInch = dotsPerInch;
    m_atlases.clear();
}

void CGridFonts::SetZoom(int percent) {
    if (percent == m_zoom) return;
    m_zoom = percent;
    m_atlases.clear();
}

int CGridFonts::Zoomed(int length) const {
    if (m_zoom == kWhole || length <= 0) return length;
    return std::max(1, (length * m_zoom + kWhole / 2) / kWhole);
}

CGlyphAtlas& CGridFonts::Atlas(int id, double scale) {
    const size_t font = Known(id);
    scale *= static_cast<double>(m_zoom) / kWhole;
    for (const SEntry& entry : m_atlases)
        if (entry.font == font && entry.scale == scale) return *entry.atlas;
    if (m_atlases.size() >= kMaxAtlases) m_atlases.erase(m_atlases.begin());
    m_atlases.push_back({font, scale, std::make_unique<CGlyphAtlas>(m_fonts[font], m_dotsPerInch, scale)});
    return *m_atlases.back().atlas;
}

int CGridFonts::LineHeight() {
    int height = 0;
    for (int id = 0; id < Count(); ++id) {
        CGlyphAtlas& atlas = Atlas(id, 1);
        height = std::max(height, atlas.Ascent() + atlas.Descent());
    }
    return height;
}

} // namespace vx
