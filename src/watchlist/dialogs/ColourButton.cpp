#include "watchlist/dialogs/ColourButton.h"

#include "data/catalogue/CellFormat.h"

#include <QColorDialog>
#include <QMenu>
#include <QPainter>

#include <array>

namespace vx {

namespace {

struct SNamedColour {
    const char* name;
    int32_t colour;
};

constexpr std::array kColours = {
    SNamedColour{"Black", 0x000000},  SNamedColour{"Grey", 0x808080},   SNamedColour{"White", 0xFFFFFF},
    SNamedColour{"Red", 0x0000C0},    SNamedColour{"Orange", 0x0070D8}, SNamedColour{"Yellow", 0x80E8FF},
    SNamedColour{"Green", 0x008000},  SNamedColour{"Teal", 0x808000},   SNamedColour{"Blue", 0xC05000},
    SNamedColour{"Purple", 0x90207A}, SNamedColour{"Pink", 0xC8B8FF},   SNamedColour{"Light blue", 0xFFE0C8}};

constexpr QSize kSwatch(40, 14);

QColor FromFile(int32_t colour) { return QColor(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF); }

int32_t ToFile(const QColor& colour) { return colour.blue() << 16 | colour.green() << 8 | colour.red(); }

QString HexText(int32_t colour) { return FromFile(colour).name().toUpper(); }

QIcon Swatch(int32_t colour, const QPalette& palette) {
    QPixmap pixmap(kSwatch * 2);
    pixmap.setDevicePixelRatio(2);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette.color(QPalette::Mid));
    const QRectF frame = QRectF(QPointF(0, 0), QSizeF(kSwatch)).adjusted(0.5, 0.5, -0.5, -0.5);
    if (colour == SCellFormat::kAutomatic) {
        painter.drawRect(frame);
        painter.drawLine(frame.bottomLeft(), frame.topRight());
    } else {
        painter.setBrush(FromFile(colour));
        painter.drawRect(frame);
    }
    return QIcon(pixmap);
}

QString NameOf(int32_t colour) {
    if (colour == SCellFormat::kAutomatic) return QStringLiteral("Automatic");
    for (const SNamedColour& named : kColours)
        if (named.colour == colour) return QString::fromUtf8(named.name);
    return HexText(colour);
}

} // namespace

CColourButton::CColourButton(QWidget* parent) : QToolButton(parent) {
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setPopupMode(QToolButton::InstantPopup);
    setIconSize(kSwatch);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto* menu = new QMenu(this);
    const auto add = [&](int32_t colour) {
        menu->addAction(Swatch(colour, palette()), NameOf(colour), this, [this, colour] { Choose(colour); });
    };
    add(SCellFormat::kAutomatic);
    menu->addSeparator();
    for (const SNamedColour& named : kColours) add(named.colour);
    menu->addSeparator();
    menu->addAction(QStringLiteral("&Other..."), this, &CColourButton::ChooseAny);
    setMenu(menu);
    SetColour(SCellFormat::kAutomatic);
}

void CColourButton::SetColour(int32_t colour) {
    m_colour = colour;
    setIcon(Swatch(colour, palette()));
    setText(NameOf(colour));
}

void CColourButton::Choose(int32_t colour) {
    SetColour(colour);
    Q_EMIT ColourChosen(colour);
}

void CColourButton::ChooseAny() {
    QColorDialog dialog(m_colour == SCellFormat::kAutomatic ? QColor(Qt::gray) : FromFile(m_colour), this);
    dialog.setOption(QColorDialog::DontUseNativeDialog);
    if (dialog.exec() == QDialog::Accepted) Choose(ToFile(dialog.currentColor()));
}

} // namespace vx
