// SPDX-License-Identifier: MIT
#pragma once

#include "grid/CellSource.h"

#include <QRgb>

namespace vx {

/// Every colour the grid paints with.
///
/// Shape   each text colour reaches a contrast of 4.5:1 on every background that it can have, the colours of focus
/// and alert 3:1
struct SGridTheme {
    // Backgrounds of cells.
    QRgb base;     ///< Odd rows and the space without cells.
    QRgb shade;    ///< Even rows when row shading is on.
    QRgb span;     ///< Rows with one text across all columns.
    QRgb selected; ///< The selected range.
    QRgb flashUp;  ///< A cell that has just risen, or fallen.
    QRgb flashDown;
    // Texts of cells.
    QRgb text;
    QRgb up;
    QRgb down;
    QRgb unchanged;
    QRgb stale;
    QRgb spanText;
    // The header row and the row-number column.
    QRgb header;
    QRgb headerSelected; ///< Header cells of selected columns and rows.
    QRgb headerText;
    // Lines.
    QRgb gridLine;
    QRgb headerLine; ///< Between header cells, and under and beside the fixed parts.
    QRgb focus;      ///< The rectangle around the focus cell.
    QRgb focusIdle;  ///< The same while the keyboard is elsewhere.
    QRgb alert;      ///< Marks of alerts.
    QRgb border;     ///< Lines around cells that the user chose, and those of a range.
    QRgb shape;      ///< Bars, ranges and heat without a direction.

    QRgb RoleColor(ETextRole role) const {
        switch (role) {
        case ETextRole::Up:
            return up;
        case ETextRole::Down:
            return down;
        case ETextRole::Unchanged:
            return unchanged;
        case ETextRole::Stale:
            return stale;
        default:
            return text;
        }
    }
};

inline constexpr SGridTheme kLightGridTheme = {.base = 0xFFFFFFFF,
                                               .shade = 0xFFF5F7F9,
                                               .span = 0xFFE9EDF2,
                                               .selected = 0xFFDCE8F8,
                                               .flashUp = 0xFFDDF3E4,
                                               .flashDown = 0xFFFBE3E2,
                                               .text = 0xFF1B2128,
                                               .up = 0xFF0A6B34,
                                               .down = 0xFFB3191E,
                                               .unchanged = 0xFF505A66,
                                               .stale = 0xFF5F6873,
                                               .spanText = 0xFF24303D,
                                               .header = 0xFFEDF0F3,
                                               .headerSelected = 0xFFD5DFEB,
                                               .headerText = 0xFF3A444F,
                                               .gridLine = 0xFFE2E6EA,
                                               .headerLine = 0xFFBCC4CD,
                                               .focus = 0xFF1F6FD0,
                                               .focusIdle = 0xFF7A8591,
                                               .alert = 0xFFB45309,
                                               .border = 0xFF6B7683,
                                               .shape = 0xFF1F6FD0};

inline constexpr SGridTheme kDarkGridTheme = {.base = 0xFF13171C,
                                              .shade = 0xFF181D23,
                                              .span = 0xFF222A33,
                                              .selected = 0xFF21374F,
                                              .flashUp = 0xFF15372A,
                                              .flashDown = 0xFF44232A,
                                              .text = 0xFFE2E7EC,
                                              .up = 0xFF4CC38A,
                                              .down = 0xFFFF8A80,
                                              .unchanged = 0xFFA3AEBA,
                                              .stale = 0xFF98A2AD,
                                              .spanText = 0xFFD3DCE6,
                                              .header = 0xFF20262D,
                                              .headerSelected = 0xFF2E3C4C,
                                              .headerText = 0xFFB9C3CE,
                                              .gridLine = 0xFF272D34,
                                              .headerLine = 0xFF3B444E,
                                              .focus = 0xFF5BA4F5,
                                              .focusIdle = 0xFF7C8793,
                                              .alert = 0xFFF2B33D,
                                              .border = 0xFF8792A0,
                                              .shape = 0xFF5BA4F5};

/// 0xBBGGRR to an opaque 0xAARRGGBB.
constexpr QRgb RgbFromColorRef(int32_t color) {
    const auto c = static_cast<uint32_t>(color);
    return 0xFF000000u | (c & 0xFFu) << 16 | (c & 0xFF00u) | (c >> 16 & 0xFFu);
}

/// The contrast of two opaque colours, 1 (none) to 21 (black on white).
///
/// Source  the relative luminance and contrast ratio of the Web Content Accessibility Guidelines 2.1
double ContrastRatio(QRgb a, QRgb b);

/// The colour of a role on a background that the user chose: the theme's own when it can be read there, else the other
/// theme's, else black or white.
QRgb ReadableRoleColor(const SGridTheme& theme, ETextRole role, QRgb background);

/// The colour that a text is painted in on a background: the user's own, for ETextRole::Explicit, unless it would
/// hardly be seen there, else that of its role.
QRgb ReadableTextColor(const SGridTheme& theme, ETextRole role, QRgb wanted, QRgb background);

/// The background that shows a direction, Up or Down. lit: where it is always there, a change lights it up more.
QRgb DirectionTint(const SGridTheme& theme, ETextRole direction, bool lit);

/// A background with so much of a colour in it, or less: the text on it stays readable, and one that was hardly so
/// without the colour stays nearly as it was.
///
/// Units   strength: 0 for the background itself to kFullStrength for the colour
inline constexpr int kFullStrength = 64;
QRgb ShapeColor(QRgb background, QRgb color, int strength, QRgb text);

} // namespace vx
