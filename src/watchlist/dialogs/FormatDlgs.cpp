// SPDX-License-Identifier: MIT
#include "watchlist/dialogs/FormatDlgs.h"

#include "base/MessageBox.h"
#include "watchlist/dialogs/FormatFields.h"
#include "watchlist/document/WatchlistDoc.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

#include <utility>

namespace vx {

namespace {

void AddButtons(QDialog& dialog, QVBoxLayout& layout) {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout.addWidget(buttons);
    layout.setSizeConstraint(QLayout::SetFixedSize);
}

void TellTooMany() {
    ShowMessageBox({"The watchlist cannot hold so many formatted cells; nothing was changed. Select whole columns "
                    "instead: they need one format each.",
                    {},
                    EBoxButtons::Ok,
                    EBoxIcon::Exclamation});
}

QString WhatIsFormatted(const CWatchlistDoc& doc, const SFormatRange& range) {
    const int rows = range.lastRow - range.firstRow + 1;
    if (AreHeadings(doc, range))
        return rows == 1 ? QStringLiteral("A heading is selected.")
                         : QStringLiteral("%L1 headings are selected; only what you change here is changed in them.")
                               .arg(rows);
    const int columns = range.lastColumn - range.firstColumn + 1;
    if (rows == 1 && columns == 1) return QStringLiteral("One cell is selected.");
    return QStringLiteral("%1 and %2 are selected; only what you change here is changed in them.")
        .arg(rows == 1 ? QStringLiteral("1 row") : QStringLiteral("%L1 rows").arg(rows),
             columns == 1 ? QStringLiteral("1 column") : QStringLiteral("%L1 columns").arg(columns));
}

} // namespace

CCellSettingsDlg::CCellSettingsDlg(CWatchlistDoc& doc, const SFormatRange& range, int row, int column, QWidget* parent)
    : QDialog(parent), m_doc(doc), m_range(range), m_fields(new CFormatFields) {
    setObjectName(QStringLiteral("cellSettingsDialog"));
    setWindowTitle(QStringLiteral("Cell Settings"));
    column = FormatColumn(doc, row, column);
    m_fields->Show(doc.Formats().Effective(row, column), StandsOut(doc, row, column), ColourRuleOf(doc, column));
    if (doc.Options().useDefaultAlignment)
        m_fields->DisableAlignment(
            QStringLiteral("Numbers are on the right and texts on the left while the default alignment is "
                           "on in the grid settings."));
    if (doc.Options().useGridPrecision)
        m_fields->DisableDecimals(QStringLiteral("The decimals of the grid settings are used for all cells."));
    const bool headings = AreHeadings(doc, range);
    for (const auto& [kind, why] : {std::pair{ECellKind::Bar, "Only columns of numbers have bars."},
                                    {ECellKind::Range, "Only prices of the day have a range: Last, Bid, Ask, Open, "
                                                       "High, Low, Close and the like."},
                                    {ECellKind::Heat, "Only columns of numbers have heat."}})
        if (headings || !CanShow(doc, range, kind)) m_fields->DisableKind(kind, QString::fromLatin1(why));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(WhatIsFormatted(doc, range)));
    layout->addWidget(m_fields);
    AddButtons(*this, *layout);
}

void CCellSettingsDlg::accept() {
    if (FormatCells(m_doc, m_range, m_fields->Change()))
        QDialog::accept();
    else
        TellTooMany();
}

CGridSettingsDlg::CGridSettingsDlg(CWatchlistDoc& doc, QWidget* parent)
    : QDialog(parent), m_doc(doc), m_fields(new CFormatFields),
      m_gridPrecision(new QCheckBox(QStringLiteral("Use these decimals in &every cell"))),
      m_defaultAlignment(new QCheckBox(QStringLiteral("Default ali&gnment: numbers right, texts left"))),
      m_trailingRows(new QSpinBox) {
    setObjectName(QStringLiteral("gridSettingsDialog"));
    setWindowTitle(QStringLiteral("Grid Settings"));
    m_gridPrecision->setObjectName(QStringLiteral("useGridPrecision"));
    m_defaultAlignment->setObjectName(QStringLiteral("useDefaultAlignment"));
    m_trailingRows->setObjectName(QStringLiteral("trailingRows"));
    const SWatchlistOptions& options = doc.Options();
    m_fields->Show(doc.Formats().GridFormat(), false, EColourRule::OfField);
    m_gridPrecision->setChecked(options.useGridPrecision);
    m_defaultAlignment->setChecked(options.useDefaultAlignment);
    m_trailingRows->setRange(0, SWatchlistOptions::kMaxTrailingRows);
    m_trailingRows->setValue(options.trailingRows);

    auto* form = new QFormLayout;
    form->addRow(m_gridPrecision);
    form->addRow(m_defaultAlignment);
    form->addRow(QStringLiteral("Empty &rows kept below the last used one:"), m_trailingRows);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_fields);
    layout->addLayout(form);
    AddButtons(*this, *layout);
}

void CGridSettingsDlg::accept() {
    SGridLook look;
    look.format = m_fields->Change();
    look.useGridPrecision = m_gridPrecision->isChecked();
    look.useDefaultAlignment = m_defaultAlignment->isChecked();
    look.trailingRows = m_trailingRows->value();
    if (FormatGrid(m_doc, look))
        QDialog::accept();
    else
        TellTooMany();
}

} // namespace vx
