// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/CellFormat.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// The fonts of cell formats and the numbers they have in the grid's font table.
///
/// Painting asks for numbers and may not enter a font into the table, which lays the grid out anew: a font that has no
/// number yet is noted, shown in the default font, and entered by TakeWanted once painting is over.
///
/// Thread  GUI thread only. Find allocates nothing
class CFormatFonts {
public:
    /// A font as a format names it.
    struct SFont {
        std::string_view face;
        int size = 0; ///< Points.
        bool bold = false;
        bool italic = false;
    };

    /// The number of a format's font; the grid's default font has 0.
    ///
    /// strong: the text stands out (a symbol, a heading) and is bold unless the user said otherwise
    uint8_t Find(const SCellFormat& format, bool strong);

    /// Whether a font has a number that no format asks for any more. forEachFormat(visit) calls visit(const
    /// SCellFormat&) for each format there is, until it returns false.
    template <typename ForEachFormat> bool HasUnused(ForEachFormat&& forEachFormat) const {
        std::vector<bool> used(m_known.size());
        size_t unused = used.size();
        const auto mark = [&](const SCellFormat& format) {
            for (const bool strong : {false, true}) {
                const size_t known = KnownIndex(format, strong);
                if (known >= used.size() || used[known]) continue;
                used[known] = true;
                --unused;
            }
            return unused > 0;
        };
        if (mark(SCellFormat{})) forEachFormat(mark);
        return unused > 0;
    }
    /// No font has a number any more but the default one; that in which the default stands out is wanted again.
    void Forget();

    bool HasWanted() const { return m_wantedCount > 0; }
    /// Has each font that Find missed entered by enter(const SFont&) -> number.
    template <typename Enter> void TakeWanted(Enter&& enter) {
        for (size_t i = 0; i < m_wantedCount; ++i) {
            const SWanted& wanted = m_wanted[i];
            const SFont font{{wanted.face.data(), wanted.faceLength}, wanted.size, wanted.bold, wanted.italic};
            m_known.push_back(
                {std::string(font.face), font.size, font.bold, font.italic, static_cast<uint8_t>(enter(font))});
        }
        m_wantedCount = 0;
    }

private:
    struct SKnown {
        std::string face;
        int size;
        bool bold;
        bool italic;
        uint8_t number;
    };
    struct SWanted {
        std::array<char, kMostFontFace> face{};
        size_t faceLength = 0;
        int size = 0;
        bool bold = false;
        bool italic = false;
    };
    static SFont FontOf(const SCellFormat& format, bool strong);
    size_t KnownIndex(const SCellFormat& format, bool strong) const;
    void Want(const SFont& font);

    std::vector<SKnown> m_known;
    std::array<SWanted, 8> m_wanted{}; ///< More of them wait for the next painting.
    size_t m_wantedCount = 0;
};

} // namespace vx
