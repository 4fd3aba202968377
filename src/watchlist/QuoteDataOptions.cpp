#include "watchlist/QuoteDataOptions.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace vx {

CQuoteDataOptions::CQuoteDataOptions(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("quoteDataOptions"));
    setWindowTitle(tr("Quote Data Options"));
    auto* layout = new QVBoxLayout(this);
    m_export = AddGroup(*layout, tr("Export"), "&Data", "DDE &Formulas");
    m_format = AddGroup(*layout, tr("Quote Format Options"), "&Comma Delimited", "&Tab Delimited");
    m_headers = new QCheckBox(tr("Use Column &Headers"));
    m_headers->setObjectName(QStringLiteral("columnHeaders"));
    m_headers->setToolTip(tr("Begin with a line of the columns' names"));
    layout->addWidget(m_headers);
    m_file = AddGroup(*layout, tr("File Options"), "&Append", "&Overwrite");

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addStretch();
    layout->addWidget(buttons);
    setMinimumWidth(300);
}

QButtonGroup* CQuoteDataOptions::AddGroup(QVBoxLayout& layout, const QString& title, const char* first,
                                          const char* second) {
    auto* box = new QGroupBox(title);
    auto* inner = new QVBoxLayout(box);
    auto* group = new QButtonGroup(this);
    int id = 0;
    for (const char* text : {first, second}) {
        auto* button = new QRadioButton(tr(text));
        button->setObjectName(tr(text).remove(QLatin1Char('&')));
        group->addButton(button, id++);
        inner->addWidget(button);
    }
    group->button(0)->setChecked(true);
    layout.addWidget(box);
    return group;
}

bool CQuoteDataOptions::Formulas() const { return m_export->checkedId() == 1; }
bool CQuoteDataOptions::TabDelimited() const { return m_format->checkedId() == 1; }
bool CQuoteDataOptions::ColumnHeaders() const { return m_headers->isChecked(); }
bool CQuoteDataOptions::Overwrite() const { return m_file->checkedId() == 1; }

} // namespace vx
