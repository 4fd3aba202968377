// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QRgb>
#include <QString>
#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace vx {

/// One entry of the grid's font table.
///
/// Units   size in points
struct SGridFont {
    QString family = QStringLiteral("Arial");
    int size = 9;
    bool bold = false;
    bool italic = false;

    bool operator==(const SGridFont&) const = default;
};

/// One prepared character: how much of each pixel it covers, 0 to 255, row by row.
///
/// Shape   four equal bytes per pixel, one for each channel, and rows filled up with zeros to a multiple of kPixelGroup
///         pixels, so that whole groups can be blended at once
/// Units   device pixels; left and top from the pen position on the baseline
struct SGlyph {
    static constexpr int kPixelGroup = 4;
    static constexpr int kBytesPerPixel = 4;

    /// Bytes from one row of pixels to the next.
    int RowBytes() const { return (width + kPixelGroup - 1) / kPixelGroup * kPixelGroup * kBytesPerPixel; }

    int16_t left = 0;
    int16_t top = 0;
    int16_t width = 0;
    int16_t height = 0;
    int16_t advance = 0;
    bool prepared = false;
    uint32_t offset = 0; ///< Into CGlyphAtlas::Pixels().
};

/// The symbols that the atlas draws itself, numbered after the 256 characters.
enum EGridSymbol : int { kSymbolUp = 256, kSymbolDown, kSymbolDot };

/// The prepared characters of one font at one scale: the whole Windows-1252 page and the grid's symbols. Every cell's
/// text is made of these, so painting lays out no text and asks no font engine.
///
/// Shape   a character is prepared when it is first asked for; widths are whole device pixels, digits share one width.
///         Kerning is left out: numbers must not move as they change
/// Units   device pixels
class CGlyphAtlas {
public:
    /// dotsPerInch: of the logical screen; scale: device pixels per logical pixel.
    CGlyphAtlas(const SGridFont& font, double dotsPerInch, double scale);

    int Ascent() const { return m_ascent; }
    int Descent() const { return m_descent; }
    /// Height of a digit over the baseline.
    int DigitHeight() const { return m_digitHeight; }
    int EllipsisWidth() { return 3 * Glyph('.').advance; }

    /// A character (0..255) or one of EGridSymbol.
    const SGlyph& Glyph(int code) {
        SGlyph& glyph = m_glyphs[static_cast<size_t>(code)];
        if (!glyph.prepared) Prepare(code, glyph);
        return glyph;
    }
    const uint8_t* Pixels(const SGlyph& glyph) const { return m_pixels.data() + glyph.offset; }
    int TextWidth(std::string_view text) {
        int width = 0;
        for (const char c : text) width += Glyph(static_cast<unsigned char>(c)).advance;
        return width;
    }

private:
    void Prepare(int code, SGlyph& glyph);
    void PrepareSymbol(int code, SGlyph& glyph);
    void Store(SGlyph& glyph, const class QImage& image, int originX, int originY);

    QFont m_font;
    int m_ascent = 0;
    int m_descent = 0;
    int m_digitHeight = 0;
    int m_digitAdvance = 0;
    std::array<SGlyph, 259> m_glyphs{};
    std::vector<uint8_t> m_pixels;
};

/// The grid's font table with the atlas of each font at the scales in use.
///
/// Shape   ids 0..255 in order of adding; id 0 exists from the start
/// Owns    the atlases; a reference stays good until the next Atlas(), KeepDefault(), SetDotsPerInch() or SetZoom()
class CGridFonts {
public:
    CGridFonts();

    /// The id of an equal font, or of a new entry; the default font's id when the table is full.
    int Add(const SGridFont& font);
    /// Forgets all fonts but the default one.
    void KeepDefault();
    void SetDotsPerInch(double dotsPerInch);
    /// Every font is so much larger than it says; 100 percent is its own size.
    void SetZoom(int percent);
    int Zoom() const { return m_zoom; }
    /// What a length at 100 percent measures at the zoom; never 0 for more than 0.
    int Zoomed(int length) const;
    const SGridFont& Font(int id) const { return m_fonts[Known(id)]; }
    int Count() const { return static_cast<int>(m_fonts.size()); }

    /// scale: device pixels per logical pixel.
    CGlyphAtlas& Atlas(int id, double scale);
    /// The height of the tallest font's line in logical pixels, at the zoom.
    int LineHeight();

private:
    struct SEntry {
        size_t font;
        double scale;
        std::unique_ptr<CGlyphAtlas> atlas;
    };
    size_t Known(int id) const { return static_cast<size_t>(id) < m_fonts.size() ? static_cast<size_t>(id) : 0; }

    std::vector<SGridFont> m_fonts;
    std::vector<SEntry> m_atlases;
    double m_dotsPerInch = 96;
    int m_zoom = 100;
};

} // namespace vx
