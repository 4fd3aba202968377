// SPDX-License-Identifier: MIT
#include "watchlist/dialogs/GoToSymbolDlg.h"

#include "base/qt/QtText.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/exchange/FindText.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace vx {

CGoToSymbolDlg::CGoToSymbolDlg(CWatchlistDoc& doc, QWidget* parent)
    : QDialog(parent), m_doc(doc), m_symbol(new QLineEdit), m_message(new QLabel) {
    setObjectName(QStringLiteral("goToSymbolDialog"));
    setWindowTitle(QStringLiteral("Go to Symbol"));
    m_symbol->setObjectName(QStringLiteral("goToSymbol"));
    m_symbol->setMaxLength(255);
    m_symbol->setMinimumWidth(220);
    m_message->setObjectName(QStringLiteral("goToMessage"));
    m_message->setTextFormat(Qt::PlainText);
    m_message->setMinimumHeight(fontMetrics().height());
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("&Symbol:"), m_symbol);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &CGoToSymbolDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_symbol, &QLineEdit::textEdited, m_message, &QLabel::clear);
    auto* layout = new QVBoxLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addLayout(form);
    layout->addWidget(m_message);
    layout->addWidget(buttons);
}

void CGoToSymbolDlg::accept() {
    m_row = GoToSymbol(m_doc, BytesFromQt(m_symbol->text()));
    if (m_row > 0) return QDialog::accept();
    m_message->setText(m_symbol->text().trimmed().isEmpty() ? QStringLiteral("Please enter a symbol.")
                                                            : QStringLiteral("The symbol is not in the watchlist."));
    m_symbol->selectAll();
    m_symbol->setFocus();
}

} // namespace vx
