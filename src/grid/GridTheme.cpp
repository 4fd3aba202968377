// SPDX-License-Identifier: MIT
#include "grid/GridTheme.h"

#include <algorithm>
#include <cmath>

namespace vx {

namespace {

constexpr double kReadable = 4.5;
// A user's own text colour on a background that the theme chose gives way when it would hardly be seen there, as black
// chosen in the light theme is on the dark one.
constexpr double kHardlySeen = 2.0;

constexpr double kKeptContrast = 0.9; // What a shape leaves of a contrast that is below kReadable.

double LinearChannel(int value) {
    const double c = value / 255.0;
    return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double Luminance(QRgb color) {
    return 0.2126 * LinearChannel(qRed(color)) + 0.7152 * LinearChannel(qGreen(color)) +
           0.0722 * LinearChannel(qBlue(color));
}

QRgb Mixed(QRgb background, QRgb color, int strength) {
    const auto channel = [&](int under, int over) {
        return (under * (kFullStrength - strength) + over * strength + kFullStrength / 2) / kFullStrength;
    };
    return qRgb(channel(qRed(background), qRed(color)), channel(qGreen(background), qGreen(color)),
                channel(qBlue(background), qBlue(color)));
}

} // namespace

double ContrastRatio(QRgb a, QRgb b) {
    const double one = Luminance(a);
    const double other = Luminance(b);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

QRgb ReadableRoleColor(const SGridTheme& theme, ETextRole role, QRgb background) {
    for (const QRgb color : {theme.RoleColor(role), kLightGridTheme.RoleColor(role), kDarkGridTheme.RoleColor(role)})
        if (ContrastRatio(color, background) >= kReadable) return color;
    return ContrastRatio(0xFF000000, background) >= kReadable ? 0xFF000000 : 0xFFFFFFFF;
}

QRgb ReadableTextColor(const SGridTheme& theme, ETextRole role, QRgb wanted, QRgb background) {
    if (role != ETextRole::Explicit) return ReadableRoleColor(theme, role, background);
    return ContrastRatio(wanted, background) < kHardlySeen ? theme.text : wanted;
}

QRgb DirectionTint(const SGridTheme& theme, ETextRole direction, bool lit) {
    const QRgb tint = direction == ETextRole::Up ? theme.flashUp : theme.flashDown;
    if (!lit) return tint;
    const QRgb full = theme.RoleColor(direction);
    const auto mixed = [](int a, int b) { return (3 * a + b) / 4; };
    return qRgb(mixed(qRed(tint), qRed(full)), mixed(qGreen(tint), qGreen(full)), mixed(qBlue(tint), qBlue(full)));
}

QRgb ShapeColor(QRgb background, QRgb color, int strength, QRgb text) {
    const double bare = ContrastRatio(text, background);
    const double least = bare > kReadable ? kReadable : bare * kKeptContrast;
    for (; strength > 0; --strength)
        if (const QRgb mixed = Mixed(background, color, strength); ContrastRatio(text, mixed) >= least) return mixed;
    return background;
}

} // namespace vx
