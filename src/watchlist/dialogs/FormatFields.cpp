// SPDX-License-Identifier: MIT
#include "watchlist/dialogs/FormatFields.h"

#include "base/qt/QtText.h"
#include "data/catalogue/CellFormat.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <array>

namespace vx {

namespace {

// What ShownFontSize draws.
constexpr int kSmallestFont = 4;
constexpr int kLargestFont = 96;

// In the list of colour rules: after those of EColourRule.
constexpr int kByNothing = 3;

} // namespace

CFormatFields::CFormatFields(QWidget* parent)
    : QWidget(parent), m_font(new QFontComboBox), m_size(new QSpinBox), m_bold(new QCheckBox(QStringLiteral("&Bold"))),
      m_italic(new QCheckBox(QStringLiteral("&Italic"))), m_alignment(new QComboBox), m_decimals(new QSpinBox),
      m_colourRule(new QComboBox), m_border(new QComboBox), m_kind(new QComboBox) {
    m_font->setObjectName(QStringLiteral("fontFace"));
    m_size->setObjectName(QStringLiteral("fontSize"));
    m_bold->setObjectName(QStringLiteral("bold"));
    m_italic->setObjectName(QStringLiteral("italic"));
    m_alignment->setObjectName(QStringLiteral("alignment"));
    m_decimals->setObjectName(QStringLiteral("decimals"));
    m_colourRule->setObjectName(QStringLiteral("colourRule"));
    m_border->setObjectName(QStringLiteral("border"));
    m_kind->setObjectName(QStringLiteral("cellKind"));
    m_font->setEditable(false);
    m_size->setRange(kSmallestFont, kLargestFont);
    m_size->setSuffix(QStringLiteral(" pt"));
    m_alignment->addItems({QStringLiteral("Left"), QStringLiteral("Center"), QStringLiteral("Right")});
    m_colourRule->addItems(
        {QStringLiteral("Automatic"), QStringLiteral("Direction"), QStringLiteral("Sign"), QStringLiteral("Nothing")});
    m_colourRule->setToolTip(
        QStringLiteral("Differences such as Change have the colour of their sign, all other numbers the one "
                       "of the direction in which they last went."));
    m_decimals->setRange(0, kMostDecimals);
    m_decimals->setToolTip(
        QStringLiteral("A price has the decimals of its symbol, up to %1, or fewer where you choose fewer here. "
                       "%2 leaves it to the symbol.")
            .arg(kMostDecimals)
            .arg(kUnchosenDecimals));

    for (const char* name : kBorderNames) m_border->addItem(QString::fromLatin1(name));
    m_border->setToolTip(QStringLiteral("Box is one line around cells side by side that have it."));
    for (const char* name : kCellKindNames) m_kind->addItem(QString::fromLatin1(name));
    m_kind->setToolTip(
        QStringLiteral("Bar: as long as the number beside the greatest of its column, from the middle for differences\n"
                       "Range of the day: Open and Last between Low and High\n"
                       "Heat: a background that is the stronger, the greater the number is\n"
                       "The number is always shown too."));

    auto* style = new QHBoxLayout;
    style->addWidget(m_bold);
    style->addWidget(m_italic);
    style->addStretch();
    auto* textBox = new QGroupBox(QStringLiteral("Text"));
    auto* text = new QFormLayout(textBox);
    text->addRow(QStringLiteral("&Font:"), m_font);
    text->addRow(QStringLiteral("&Size:"), m_size);
    text->addRow(QString(), style);
    text->addRow(QStringLiteral("&Alignment:"), m_alignment);
    text->addRow(QStringLiteral("Deci&mals:"), m_decimals);

    auto* colourBox = new QGroupBox(QStringLiteral("Colours"));
    auto* colours = new QFormLayout(colourBox);
    m_text = AddColour(*colours, "textColour", QStringLiteral("&Text:"), m_change.textColour);
    m_back = AddColour(*colours, "backColour", QStringLiteral("Bac&kground:"), m_change.backColour);
    colours->addRow(QStringLiteral("Co&lour numbers by:"), m_colourRule);
    m_up = AddColour(*colours, "upColour", QStringLiteral("&Up:"), m_change.upColour);
    m_down = AddColour(*colours, "downColour", QStringLiteral("Do&wn:"), m_change.downColour);
    m_unchanged = AddColour(*colours, "unchangedColour", QStringLiteral("U&nchanged:"), m_change.unchangedColour);

    auto* cellBox = new QGroupBox(QStringLiteral("Cell"));
    auto* cell = new QFormLayout(cellBox);
    cell->addRow(QStringLiteral("Bor&der:"), m_border);
    cell->addRow(QStringLiteral("S&how as:"), m_kind);

    auto* left = new QVBoxLayout;
    left->addWidget(textBox);
    left->addWidget(cellBox);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(left);
    layout->addWidget(colourBox);
    ConnectFields();
}

CColourButton* CFormatFields::AddColour(QFormLayout& form, const char* name, const QString& label,
                                        std::optional<int32_t>& changed) {
    auto* button = new CColourButton;
    button->setObjectName(QString::fromLatin1(name));
    button->setMinimumWidth(150);
    form.addRow(label, button);
    connect(button, &CColourButton::ColourChosen, this, [&changed](int32_t colour) { changed = colour; });
    return button;
}

void CFormatFields::ConnectFields() {
    connect(m_font, &QFontComboBox::currentFontChanged, this, [this](const QFont& font) {
        const std::string face = BytesFromQt(font.family());
        if (IsStorableFont(face)) m_change.fontFace = face;
    });
    connect(m_size, &QSpinBox::valueChanged, this, [this](int points) { m_change.fontSizePt = points; });
    connect(m_bold, &QCheckBox::toggled, this, [this](bool on) { m_change.bold = on; });
    connect(m_italic, &QCheckBox::toggled, this, [this](bool on) { m_change.italic = on; });
    connect(m_alignment, &QComboBox::currentIndexChanged, this,
            [this](int index) { m_change.alignment = static_cast<ECellAlign>(index); });
    connect(m_decimals, &QSpinBox::valueChanged, this, [this](int places) { m_change.decimals = places; });
    connect(m_colourRule, &QComboBox::currentIndexChanged, this, [this](int index) {
        const bool coloured = index != kByNothing;
        m_change.colourByDirection = coloured;
        m_change.colourRule = coloured ? static_cast<EColourRule>(index) : EColourRule::OfField;
        for (QWidget* button : {m_up, m_down, m_unchanged}) button->setEnabled(coloured);
    });
    connect(m_border, &QComboBox::currentIndexChanged, this,
            [this](int index) { m_change.border = static_cast<EBorder>(index); });
    connect(m_kind, &QComboBox::currentIndexChanged, this,
            [this](int index) { m_change.cellKind = static_cast<ECellKind>(index); });
}

// A number that has no name stays in the format until another one is chosen.
void CFormatFields::ShowNumber(QComboBox& box, int32_t number) {
    box.setPlaceholderText(QStringLiteral("Unknown (%1)").arg(number));
    box.setCurrentIndex(number >= 0 && number < box.count() ? number : -1);
}

void CFormatFields::Show(const SCellFormat& format, bool standsOut, EColourRule ofField) {
    m_font->setCurrentFont(QFont(QtText(format.fontFace)));
    m_size->setValue(ShownFontSize(format));
    m_bold->setChecked(IsDrawnBold(format, standsOut));
    m_italic->setChecked(format.italic);
    m_alignment->setCurrentIndex(static_cast<int>(format.alignment));
    m_decimals->setValue(format.decimals);
    const QString field = m_colourRule->itemText(static_cast<int>(ofField));
    if (ofField != EColourRule::OfField)
        m_colourRule->setItemText(0, QStringLiteral("Automatic (%1)").arg(field.toLower()));
    m_colourRule->setCurrentIndex(format.colourByDirection ? static_cast<int>(format.colourRule) : kByNothing);
    m_text->SetColour(format.textColour);
    m_back->SetColour(format.backColour);
    m_up->SetColour(format.upColour);
    m_down->SetColour(format.downColour);
    m_unchanged->SetColour(format.unchangedColour);
    ShowNumber(*m_border, format.borderStyle);
    ShowNumber(*m_kind, format.cellKind);
    m_change = {};
}

void CFormatFields::DisableAlignment(const QString& why) {
    m_alignment->setEnabled(false);
    m_alignment->setToolTip(why);
}

void CFormatFields::DisableDecimals(const QString& why) {
    m_decimals->setEnabled(false);
    m_decimals->setToolTip(why);
}

void CFormatFields::DisableKind(ECellKind kind, const QString& why) {
    const int index = static_cast<int>(kind);
    if (auto* items = qobject_cast<QStandardItemModel*>(m_kind->model())) items->item(index)->setEnabled(false);
    m_kind->setItemData(index, why, Qt::ToolTipRole);
}

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
