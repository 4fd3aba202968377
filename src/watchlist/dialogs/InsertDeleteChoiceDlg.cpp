#include "watchlist/dialogs/InsertDeleteChoiceDlg.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace vx {

namespace {

QString Counted(int count, const QString& one, const QString& many) { return count == 1 ? one : many.arg(count); }

} // namespace

CInsertDeleteChoiceDlg::CInsertDeleteChoiceDlg(EWhat what, int rows, int columns, QWidget* parent)
    : QDialog(parent), m_rows(new QRadioButton(this)), m_columns(new QRadioButton(this)) {
    const bool inserts = what == EWhat::Insert;
    setObjectName(QStringLiteral("insertDeleteChoice"));
    setWindowTitle(inserts ? QStringLiteral("Insert") : QStringLiteral("Delete"));
    m_rows->setObjectName(QStringLiteral("choiceRows"));
    m_columns->setObjectName(QStringLiteral("choiceColumns"));
    if (inserts) {
        m_rows->setText(Counted(rows, QStringLiteral("A &row above the selection"),
                                QStringLiteral("%1 &rows above the selection")));
        m_columns->setText(QStringLiteral("&Columns left of the focus..."));
    } else {
        m_rows->setText(Counted(rows, QStringLiteral("The selected &row"), QStringLiteral("The %1 selected &rows")));
        m_columns->setText(
            Counted(columns, QStringLiteral("The selected &column"), QStringLiteral("The %1 selected &columns")));
    }
    m_rows->setChecked(true);

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(inserts ? QStringLiteral("&Insert") : QStringLiteral("&Delete"), QDialogButtonBox::AcceptRole)
        ->setDefault(true);
    buttons->addButton(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_rows);
    layout->addWidget(m_columns);
    layout->addSpacing(layout->spacing());
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    m_rows->setFocus();
}

bool CInsertDeleteChoiceDlg::IsRows() const { return m_rows->isChecked(); }

} // namespace vx
