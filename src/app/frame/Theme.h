// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

#include <string_view>

namespace vx {

enum class ETheme { System, Light, Dark };

/// The theme of a name: "light" or "dark"; any other name is the system's theme.
ETheme ThemeByName(std::string_view name);

/// Gives the whole application the palette of a theme. System means dark when the platform's own window colour is
/// dark, else light.
///
/// Returns whether the palette in use is a dark one
bool ApplyTheme(ETheme theme);

/// The style of all widgets but the grid: that of the toolkit, quieter in small things and with outlines that can be
/// seen. Dialog buttons have no pictures, since their words say enough; disabled texts have no shadow, which blurs them
/// in the dark; what can be checked, pressed or typed into has an outline of at least 3:1 in both themes; message boxes
/// have plain signs. Dialogs fit on their screen.
class CProgramStyle : public QProxyStyle {
public:
    CProgramStyle();

    using QProxyStyle::polish;
    void polish(QWidget* widget) override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

} // namespace vx
