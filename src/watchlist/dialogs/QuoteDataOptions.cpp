// SPDX-License-Identifier: MIT
#include "watchlist/dialogs/QuoteDataOptions.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace vx {

CQuoteDataOptions::CQuoteDataOptions(const SExportOptions& options, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("quoteDataOptions"));
    setWindowTitle(QStringLiteral("Quote Data Options"));
    auto* layout = new QVBoxLayout(this);
    m_export = AddGroup(*layout, QStringLiteral("Export"), "&Data", "DDE &Formulas", options.linkFormulas);
    m_format = AddGroup(*layout, QStringLiteral("Quote Format Options"), "&Comma Delimited", "&Tab Delimited",
                        !options.commas);
    m_headers = AddBox(*layout, QStringLiteral("Use Column &Headers"), "columnHeaders",
                       QStringLiteral("Begin with a line of the columns' names"), options.columnHeaders);
    m_utf8 = AddBox(
        *layout, QStringLiteral("&UTF-8, with the tick trend as %1").arg(QStringLiteral("\u25B2 \u25BC \u2022")),
        "utf8", QStringLiteral("Otherwise the file is in Windows-1252, and the tick trend in the bytes AD, AF and B7"),
        options.utf8);
    m_file = AddGroup(*layout, QStringLiteral("File Options"), "&Append", "&Overwrite", !options.append);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addStretch();
    layout->addWidget(buttons);
    setMinimumWidth(300);
}

QButtonGroup* CQuoteDataOptions::AddGroup(QVBoxLayout& layout, const QString& title, const char* first,
                                          const char* second, bool isSecond) {
    auto* box = new QGroupBox(title);
    auto* inner = new QVBoxLayout(box);
    auto* group = new QButtonGroup(this);
    int id = 0;
    for (const char* text : {first, second}) {
        auto* button = new QRadioButton(QString::fromUtf8(text));
        button->setObjectName(QString::fromUtf8(text).remove(QLatin1Char('&')));
        group->addButton(button, id++);
        inner->addWidget(button);
    }
    group->button(isSecond ? 1 : 0)->setChecked(true);
    layout.addWidget(box);
    return group;
}

QCheckBox* CQuoteDataOptions::AddBox(QVBoxLayout& layout, const QString& text, const char* name, const QString& tip,
                                     bool isOn) {
    auto* box = new QCheckBox(text);
    box->setObjectName(QString::fromLatin1(name));
    box->setToolTip(tip);
    box->setChecked(isOn);
    layout.addWidget(box);
    return box;
}

SExportOptions CQuoteDataOptions::Options() const {
    SExportOptions options;
    options.linkFormulas = m_export->checkedId() == 1;
    options.commas = m_format->checkedId() == 0;
    options.columnHeaders = m_headers->isChecked();
    options.append = m_file->checkedId() == 0;
    options.utf8 = m_utf8->isChecked();
    return options;
}

} // namespace vx
