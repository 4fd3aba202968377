// SPDX-License-Identifier: MIT
#include "watchlist/view/FormatFonts.h"

#include <algorithm>

namespace vx {

namespace {

bool IsPlain(const SCellFormat& format, bool strong) {
    static const SCellFormat plain;
    return format.fontSizePt == plain.fontSizePt && !IsDrawnBold(format, strong) && !format.italic &&
           format.fontFace == plain.fontFace;
}

} // namespace

uint8_t CFormatFonts::Find(const SCellFormat& format, bool strong) {
    if (IsPlain(format, strong)) return 0;
    if (const size_t known = KnownIndex(format, strong); known < m_known.size()) return m_known[known].number;
    Want(FontOf(format, strong));
    return 0;
}

CFormatFonts::SFont CFormatFonts::FontOf(const SCellFormat& format, bool strong) {
    return {format.fontFace, ShownFontSize(format), IsDrawnBold(format, strong), format.italic};
}

// Their number when it has none.
size_t CFormatFonts::KnownIndex(const SCellFormat& format, bool strong) const {
    if (IsPlain(format, strong)) return m_known.size();
    const SFont font = FontOf(format, strong);
    const auto found = std::find_if(m_known.begin(), m_known.end(), [&](const SKnown& known) {
        return known.size == font.size && known.bold == font.bold && known.italic == font.italic &&
               known.face == font.face;
    });
    return static_cast<size_t>(found - m_known.begin());
}

void CFormatFonts::Forget() {
    m_known.clear();
    m_wantedCount = 0;
    Find(SCellFormat{}, true);
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
