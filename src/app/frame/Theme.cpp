#include "app/frame/Theme.h"

#include "app/frame/QuietStyle.h"

#include <QApplication>
#include <QPalette>
#include <QToolTip>

namespace vx {

namespace {

struct SPaletteRow {
    QPalette::ColorRole role;
    QRgb light;
    QRgb dark;
};

// One row per role; text on its background has a contrast of at least 4.5 : 1 in both columns.
constexpr SPaletteRow kPalette[] = {{QPalette::Window, 0xFFF3F4F6, 0xFF1B1E23},
                                    {QPalette::WindowText, 0xFF1A1D21, 0xFFE4E7EB},
                                    {QPalette::Base, 0xFFFFFFFF, 0xFF14161A},
                                    {QPalette::AlternateBase, 0xFFF6F8FA, 0xFF1A1D22},
                                    {QPalette::Text, 0xFF1A1D21, 0xFFE4E7EB},
                                    {QPalette::Button, 0xFFE8EAED, 0xFF2A2E35},
                                    {QPalette::ButtonText, 0xFF1A1D21, 0xFFE4E7EB},
                                    {QPalette::BrightText, 0xFFFFFFFF, 0xFFFFFFFF},
                                    {QPalette::ToolTipBase, 0xFF2A2E35, 0xFFE4E7EB},
                                    {QPalette::ToolTipText, 0xFFF3F4F6, 0xFF1A1D21},
                                    {QPalette::Highlight, 0xFF1F5FBF, 0xFF2F6FD0},
                                    {QPalette::HighlightedText, 0xFFFFFFFF, 0xFFFFFFFF},
                                    {QPalette::PlaceholderText, 0xFF5F6670, 0xFF9AA2AD},
                                    {QPalette::Link, 0xFF1F5FBF, 0xFF7FB2FF},
                                    {QPalette::Light, 0xFFFFFFFF, 0xFF3A3F47},
                                    {QPalette::Midlight, 0xFFF0F1F3, 0xFF30343B},
                                    {QPalette::Mid, 0xFFB9BEC5, 0xFF4A505A},
                                    {QPalette::Dark, 0xFF9AA1AA, 0xFF0E1013},
                                    {QPalette::Shadow, 0xFF6B727B, 0xFF000000}};

QPalette Build(bool dark) {
    QPalette palette;
    for (const SPaletteRow& row : kPalette) palette.setColor(row.role, QColor::fromRgb(dark ? row.dark : row.light));
    const QColor faded = QColor::fromRgb(dark ? 0xFF7C8490 : 0xFF7A818A);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faded);
    return palette;
}

bool SystemIsDark() {
    static const bool dark = QApplication::palette().color(QPalette::Window).lightness() < 128;
    return dark;
}

} // namespace

ETheme ThemeByName(std::string_view name) {
    if (name == "light") return ETheme::Light;
    return name == "dark" ? ETheme::Dark : ETheme::System;
}

bool ApplyTheme(ETheme theme) {
    const bool systemIsDark = SystemIsDark(); // Asked before the first palette of ours hides it.
    const bool dark = theme == ETheme::System ? systemIsDark : theme == ETheme::Dark;
    QApplication::setStyle(new CQuietStyle);
    const QPalette palette = Build(dark);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    return dark;
}

} // namespace vx
