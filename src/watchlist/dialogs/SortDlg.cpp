// SPDX-License-Identifier: MIT
#include "watchlist/dialogs/SortDlg.h"

#include "base/qt/QtText.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/SortCommands.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace vx {

namespace {

// More than the longest period in its smallest unit: what is too long is refused with a message that names the limits.
constexpr int kLargestNumber = 99999;

} // namespace

CSort::CSort(CWatchlistDoc& doc, int focusColumn, QWidget* parent)
    : QDialog(parent), m_doc(doc), m_autoSort(new QCheckBox(QStringLiteral("Sort a&utomatically"))),
      m_column(new QComboBox), m_ascending(new QRadioButton(QStringLiteral("&Ascending"))),
      m_descending(new QRadioButton(QStringLiteral("&Descending"))), m_interval(new QSpinBox), m_unit(new QComboBox) {
    setObjectName(QStringLiteral("sortDialog"));
    setWindowTitle(QStringLiteral("Auto Sort"));
    m_autoSort->setObjectName(QStringLiteral("autoSort"));
    m_column->setObjectName(QStringLiteral("sortColumn"));
    m_ascending->setObjectName(QStringLiteral("ascending"));
    m_descending->setObjectName(QStringLiteral("descending"));
    m_interval->setObjectName(QStringLiteral("interval"));
    m_unit->setObjectName(QStringLiteral("intervalUnit"));
    m_interval->setRange(0, kLargestNumber);
    m_unit->addItems({QStringLiteral("Seconds"), QStringLiteral("Minutes"), QStringLiteral("Hours")});
    m_unit->setAccessibleName(QStringLiteral("Unit of the interval"));
    m_column->setMinimumContentsLength(18);

    auto* direction = new QHBoxLayout;
    direction->addWidget(m_ascending);
    direction->addWidget(m_descending);
    direction->addStretch();
    auto* every = new QHBoxLayout;
    every->addWidget(m_interval);
    every->addWidget(m_unit);
    every->addStretch();
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("&Column:"), m_column);
    form->addRow(QStringLiteral("Direction:"), direction);
    form->addRow(QStringLiteral("&Every:"), every);
    qobject_cast<QLabel*>(form->labelForField(every))->setBuddy(m_interval);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &CSort::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_autoSort, &QCheckBox::toggled, this, &CSort::EnableFields);
    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(m_autoSort);
    layout->addLayout(form);
    layout->addSpacing(8);
    layout->addWidget(buttons);
    ShowRecord(focusColumn);
}

void CSort::ShowRecord(int focusColumn) {
    const SSortRecord& sort = m_doc.Options().sort;
    (sort.ascending ? m_ascending : m_descending)->setChecked(true);
    for (const std::string& name : SortableColumns(m_doc.Columns())) m_column->addItem(QtText(name));
    m_column->setCurrentIndex(m_column->findText(QtText(FirstSortColumn(m_doc.Columns(), sort, focusColumn))));
    const SShownInterval shown = ShownInterval(sort.intervalMs);
    m_interval->setValue(shown.number);
    m_unit->setCurrentIndex(static_cast<int>(shown.unit));
    m_autoSort->setChecked(sort.autoSort);
    EnableFields();
}

void CSort::EnableFields() {
    for (QWidget* field : std::initializer_list<QWidget*>{m_column, m_ascending, m_descending, m_interval, m_unit})
        field->setEnabled(m_autoSort->isChecked());
}

void CSort::accept() {
    SSortEntry entry;
    entry.autoSort = m_autoSort->isChecked();
    entry.column = BytesFromQt(m_column->currentText());
    entry.ascending = m_ascending->isChecked();
    entry.interval = {m_interval->value(), static_cast<ETimeUnit>(m_unit->currentIndex())};
    if (ApplySortEntry(m_doc, entry)) QDialog::accept();
}

} // namespace vx
