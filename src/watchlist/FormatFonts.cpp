#include "watchlist/FormatFonts.h"

#include <algorithm>

namespace vx {

uint8_t CFormatFonts::Find(const SCellFormat& format, bool strong) {
    static const SCellFormat plain;
    const bool isPlain =
        format.fontSizePt == plain.fontSizePt && !format.bold && !format.italic && format.fontFace == plain.fontFace;
    if (isPlain && !strong) return 0;
    const SFont font{format.fontFace, ShownFontSize(format), format.bold || isPlain, format.italic};
    for (const SKnown& known : m_known) {
        if (known.size == font.size && known.bold == font.bold && known.italic == font.italic &&
            known.face == font.face)
            return known.number;
    }
    Want(font);
    return 0;
}

void CFormatFonts::Want(const SFont& font) {
    const auto last = m_wanted.begin() + static_cast<std::ptrdiff_t>(m_wantedCount);
    const bool noted = std::any_of(m_wanted.begin(), last, [&](const SWanted& wanted) {
        return wanted.size == font.size && wanted.bold == font.bold && wanted.italic == font.italic &&
               std::string_view(wanted.face.data(), wanted.faceLength) == font.face;
    });
    if (noted || last == m_wanted.end() || font.face.size() > kMostFontFace) return;
    std::copy(font.face.begin(), font.face.end(), last->face.begin());
    last->faceLength = font.face.size();
    last->size = font.size;
    last->bold = font.bold;
    last->italic = font.italic;
    ++m_wantedCount;
}

} // namespace vx
