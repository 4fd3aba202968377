// SPDX-License-Identifier: MIT
#include "app/frame/Theme.h"

#include "app/frame/Dialogs.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QDialog>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QPushButton>
#include <QStyleFactory>
#include <QStyleOption>
#include <QToolTip>

#include <algorithm>

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
    QApplication::setStyle(new CProgramStyle);
    const QPalette palette = Build(dark);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    return dark;
}

namespace {

// Lines at which one sees what can be used, at least 3 : 1 on every surface they are drawn on, and quieter ones that
// only part one area from another.
struct SLines {
    QRgb outline;
    QRgb frame;
};

constexpr SLines kLightLines{0xFF7F868F, 0xFFB0B5BC};
constexpr SLines kDarkLines{0xFF838B97, 0xFF565D68};
// The style underneath draws its outlines in the window colour, darker by this factor, which is lost in the dark.
constexpr double kOutlineDarker = 1.4;

constexpr int kItemMargin = 4;
constexpr int kItemHeightMore = 4;
constexpr int kButtonWidthMore = 8;
constexpr double kCorner = 2.5;
constexpr double kButtonRing = 3.5; ///< From the edge of a button to its focus ring.
constexpr int kBoxIconSides[] = {32, 48, 64, 128};

const SLines& LinesOf(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Base).lightness() < 128 ? kDarkLines : kLightLines;
}

QColor OutlineColor(const QStyleOption& option) {
    return QColor::fromRgb(option.state.testFlag(QStyle::State_Enabled) ? LinesOf(option.palette).outline
                                                                        : LinesOf(option.palette).frame);
}

/// The option with a palette in which the style underneath draws its outlines in this colour.
template <class Option> Option WithOutline(const Option& option, const QColor& outline) {
    const auto raised = [](int part) { return std::min(255, static_cast<int>(part * kOutlineDarker + 0.5)); };
    Option copy(option);
    copy.palette.setColor(QPalette::Window, {raised(outline.red()), raised(outline.green()), raised(outline.blue())});
    copy.palette.setColor(QPalette::Highlight, option.palette.color(QPalette::Link));
    return copy;
}

/// The box or the ring before a choice, and what is in it when it is made.
void DrawChoice(const QStyleOption& option, bool round, QPainter& painter) {
    const bool made = option.state.testFlag(QStyle::State_On);
    const bool partly = option.state.testFlag(QStyle::State_NoChange);
    const bool enabled = option.state.testFlag(QStyle::State_Enabled);
    const QPalette& palette = option.palette;
    const QColor accent = palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::Highlight);
    const bool filled = (made || partly) && enabled;
    const bool pressed = option.state.testFlag(QStyle::State_Sunken);
    const double side = std::min(option.rect.width(), option.rect.height()) - 1;
    const QPointF middle = QRectF(option.rect).center();
    const QRectF box(middle.x() - side / 2, middle.y() - side / 2, side, side);
    const QColor mark = filled ? palette.color(QPalette::HighlightedText)
                               : palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::Text);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(filled || option.state.testFlag(QStyle::State_MouseOver) ? palette.color(QPalette::Link)
                                                                            : OutlineColor(option));
    painter.setBrush(filled ? accent : palette.color(pressed ? QPalette::Button : QPalette::Base));
    round ? painter.drawEllipse(box) : painter.drawRoundedRect(box, kCorner, kCorner);
    if (round && made) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(mark);
        painter.drawEllipse(box.center(), side * 0.22, side * 0.22);
    } else if (partly) {
        painter.setPen(QPen(mark, 2));
        painter.drawLine(box.center() - QPointF(side / 4, 0), box.center() + QPointF(side / 4, 0));
    } else if (made) {
        painter.setPen(QPen(mark, side / 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const auto at = [&box](double x, double y) { return box.topLeft() + QPointF(x, y) * box.width(); };
        const QPointF tick[] = {at(0.23, 0.52), at(0.43, 0.72), at(0.78, 0.30)};
        painter.setBrush(Qt::NoBrush);
        painter.drawPolyline(tick, 3);
    }
    painter.restore();
}

/// The sign of a message box: a disc of one colour with its mark.
QIcon BoxIcon(QRgb colour, QChar mark) {
    QIcon icon;
    for (const int side : kBoxIconSides) {
        QPixmap picture(side, side);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromRgb(colour));
        painter.drawEllipse(QRectF(0, 0, side, side).adjusted(1, 1, -1, -1));
        QFont font = QApplication::font();
        font.setPixelSize(side * 5 / 8);
        font.setBold(true);
        painter.setFont(font);
        painter.setPen(Qt::white);
        painter.drawText(picture.rect(), Qt::AlignCenter, mark);
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

void DrawRing(const QRectF& place, const QColor& colour, QPainter& painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colour);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(place, kCorner, kCorner);
    painter.restore();
}

/// Where the keyboard is.
void DrawFocus(const QStyleOption& option, QPainter& painter) {
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    DrawRing(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5),
             option.palette.color(selected ? QPalette::HighlightedText : QPalette::Link), painter);
}

/// The same for a button: inside its outline, which tells whether it is the default one.
void DrawButtonFocus(const QStyleOption& option, QPainter& painter) {
    DrawRing(QRectF(option.rect).adjusted(kButtonRing, kButtonRing, -kButtonRing, -kButtonRing),
             option.palette.color(QPalette::ButtonText), painter);
}

} // namespace

CProgramStyle::CProgramStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void CProgramStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    auto* dialog = qobject_cast<QDialog*>(widget);
    if (dialog && !dialog->findChild<CDialogFit*>(QString(), Qt::FindDirectChildrenOnly)) new CDialogFit(*dialog);
}

int CProgramStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                             QStyleHintReturn* returned) const {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons || hint == SH_EtchDisabledText) return 0;
    return QProxyStyle::styleHint(hint, option, widget, returned);
}

int CProgramStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    if (metric == PM_FocusFrameHMargin || metric == PM_HeaderMargin) return kItemMargin;
    return QProxyStyle::pixelMetric(metric, option, widget);
}

QIcon CProgramStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    switch (icon) {
    case SP_MessageBoxInformation:
        return BoxIcon(0xFF2F6FD0, QLatin1Char('i'));
    case SP_MessageBoxQuestion:
        return BoxIcon(0xFF2F6FD0, QLatin1Char('?'));
    case SP_MessageBoxWarning:
        return BoxIcon(0xFFB45F06, QLatin1Char('!'));
    case SP_MessageBoxCritical:
        return BoxIcon(0xFFC62828, QLatin1Char('!'));
    default:
        return QProxyStyle::standardIcon(icon, option, widget);
    }
}

QSize CProgramStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                      const QWidget* widget) const {
    const QSize needed = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (type == CT_PushButton) return needed + QSize(kButtonWidthMore, 0); // The ring stands off its text.
    return type == CT_ItemViewItem ? needed + QSize(0, kItemHeightMore) : needed;
}

void CProgramStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
    if (element == CE_PushButton) {
        QProxyStyle::drawControl(element, option, painter, widget);
        if (option->state.testFlag(State_HasFocus)) DrawButtonFocus(*option, *painter);
        return;
    }
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element != CE_MenuItem || item == nullptr || item->menuItemType != QStyleOptionMenuItem::Separator ||
        !item->text.isEmpty())
        return QProxyStyle::drawControl(element, option, painter, widget);
    // The lines between the groups of a menu, which the style underneath hides in a dark palette.
    const QRect& place = item->rect;
    painter->fillRect(QRect(place.left(), place.center().y(), place.width(), 1), item->palette.color(QPalette::Mid));
}

void CProgramStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                       const QWidget* widget) const {
    const QColor outline = OutlineColor(*option);
    if (const auto* spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option)) {
        const auto outlined = WithOutline(*spin, outline);
        return QProxyStyle::drawComplexControl(control, &outlined, painter, widget);
    }
    if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option)) {
        const auto outlined = WithOutline(*combo, outline);
        return QProxyStyle::drawComplexControl(control, &outlined, painter, widget);
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void CProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
    switch (element) {
    case PE_IndicatorCheckBox:
    case PE_IndicatorRadioButton:
        return DrawChoice(*option, element == PE_IndicatorRadioButton, *painter);
    case PE_IndicatorHeaderArrow:
        if (const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option)) {
            // Rising values as a triangle that rises, as in the grid; the toolkit's point the other way.
            QStyleOptionHeader turned(*header);
            turned.sortIndicator = header->sortIndicator == QStyleOptionHeader::SortUp ? QStyleOptionHeader::SortDown
                                                                                       : QStyleOptionHeader::SortUp;
            return QProxyStyle::drawPrimitive(element, &turned, painter, widget);
        }
        break;
    case PE_FrameFocusRect:
        if (!qobject_cast<const QPushButton*>(widget)) DrawFocus(*option, *painter);
        return;
    case PE_PanelButtonCommand:
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
            auto outlined = WithOutline(*button, OutlineColor(*option));
            if (qobject_cast<const QPushButton*>(widget)) outlined.state &= ~State_HasFocus;
            return QProxyStyle::drawPrimitive(element, &outlined, painter, widget);
        }
        if (const auto* tool = qstyleoption_cast<const QStyleOptionToolButton*>(option)) {
            const auto outlined = WithOutline(*tool, OutlineColor(*option));
            return QProxyStyle::drawPrimitive(element, &outlined, painter, widget);
        }
        break;
    case PE_PanelMenu: {
        const SLines& lines = LinesOf(option->palette);
        // Above what lies under it: white on the light window, and lighter than the grid in the dark.
        painter->fillRect(option->rect,
                          option->palette.color(&lines == &kDarkLines ? QPalette::Window : QPalette::Base));
        painter->setPen(QColor::fromRgb(lines.outline));
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        return;
    }
    case PE_FrameLineEdit:
    case PE_Frame:
        if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option)) {
            const bool line = element == PE_FrameLineEdit;
            if (!line && option->state.testFlag(State_HasFocus) && qobject_cast<const QAbstractScrollArea*>(widget))
                return DrawFocus(*option, *painter);
            const auto outlined =
                WithOutline(*frame, line ? OutlineColor(*option) : QColor::fromRgb(LinesOf(option->palette).frame));
            return QProxyStyle::drawPrimitive(element, &outlined, painter, widget);
        }
        break;
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

} // namespace vx
