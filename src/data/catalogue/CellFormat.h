// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/ColourRule.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vx {

enum class ECellAlign : uint8_t { Left = 0, Center = 1, Right = 2 };

inline constexpr int32_t kMostDecimals = 6;
inline constexpr int32_t kUnchosenDecimals = 4; ///< What a record has whose decimals nobody chose.

/// How one cell, one column or the whole grid looks.
struct SCellFormat {
    static constexpr int32_t kAutomatic = -1; ///< The colour that the theme gives.

    // Colours are 0xBBGGRR.
    int32_t textColour = kAutomatic;
    int32_t backColour = kAutomatic;
    int32_t upColour = 0x008000;   ///< Text colour of a value that rose.
    int32_t downColour = 0x0000C0; ///< Text colour of a value that fell.
    int32_t unchangedColour = kAutomatic;
    int32_t borderStyle = 0;
    int32_t cellKind = 0;
    int32_t reserved = 0; ///< Kept as a file has it.
    std::string fontFace = "Arial";
    bool bold = false;
    bool italic = false;
    int32_t fontSizePt = 9; ///< As a file has it; see ShownFontSize.
    ECellAlign alignment = ECellAlign::Left;
    int32_t decimals = kUnchosenDecimals; ///< 0..kMostDecimals
    bool colourByDirection = true;        ///< Colours by the rule below; off, a number has the text's colour.

    // What the text of a record has no field for.

    EColourRule colourRule = EColourRule::OfField; ///< Counts while colourByDirection is on.
    /// The user took the bold away that a text which stands out (a symbol, a heading) has by itself.
    bool regular = false;

    bool operator==(const SCellFormat&) const = default;
};

inline constexpr size_t kMostFontFace = 63; ///< Bytes of a font's name.

/// Whether two formats have the same text.
bool HaveSameFields(const SCellFormat& a, const SCellFormat& b);

/// Whether a font's name can be written into a watchlist and read again: at most kMostFontFace bytes, not empty,
/// without the separators of the text and without control characters.
bool IsStorableFont(std::string_view face);

/// Whether the text of a cell is drawn bold. standsOut: it is bold unless the user said otherwise.
inline bool IsDrawnBold(const SCellFormat& format, bool standsOut) {
    return format.bold || (standsOut && !format.regular);
}

/// The size in which the text of a cell is drawn: between 4 and 96 points, whatever a file asks for.
int ShownFontSize(const SCellFormat& format);

/// Appends the fifteen fields of a record, each followed by ",". With a base, fields equal to its own are left empty.
void AppendFormatFields(std::string& out, const SCellFormat& format, const SCellFormat* base);

/// Takes over the fields of a record's text; an empty field and one that is missing leave the format as it is, and
/// those beyond the fifteenth are not looked at.
///
/// Errors  none: numbers are read leniently, decimals are brought into 0..kMostDecimals, any word but "Center" and
///         "Right" aligns left, any but "TRUE" is false; a font's name is cut to kMostFontFace bytes, and one that
///         could not be written again is passed over
void ReadFormatFields(std::string_view text, SCellFormat& format);

} // namespace vx
