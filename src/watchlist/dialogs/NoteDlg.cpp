// SPDX-License-Identifier: MIT
#include "watchlist/dialogs/NoteDlg.h"

#include "base/qt/QtText.h"
#include "watchlist/document/WatchlistDoc.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace vx {

namespace {

// Notes are in one line of the watchlist file; a longer text is somebody's mistake.
constexpr int kLongestNote = 10000;

} // namespace

CNoteDlg::CNoteDlg(CWatchlistDoc& doc, QWidget* parent) : QDialog(parent), m_doc(doc), m_text(new QPlainTextEdit) {
    setObjectName(QStringLiteral("noteDialog"));
    m_text->setObjectName(QStringLiteral("noteText"));
    m_text->setTabChangesFocus(true);
    m_text->setMinimumSize(380, 140);
    auto* label = new QLabel(QStringLiteral("&Note:"));
    label->setBuddy(m_text);
    auto* rule = new QLabel(QStringLiteral("The characters ; : and , are left out when the note is kept."));
    rule->setWordWrap(true);
    rule->setForegroundRole(QPalette::PlaceholderText);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* clear = new QPushButton(QStringLiteral("C&lear")); // In the box it would keep Tab from the other two.
    clear->setObjectName(QStringLiteral("clearNote"));
    clear->setAutoDefault(false);
    connect(clear, &QPushButton::clicked, this, [this] {
        m_text->clear();
        m_text->setFocus();
    });
    connect(buttons, &QDialogButtonBox::accepted, this, &CNoteDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_text, &QPlainTextEdit::textChanged, this, [this] {
        if (m_text->document()->characterCount() <= kLongestNote + 1) return;
        m_text->setPlainText(m_text->toPlainText().left(kLongestNote));
        m_text->moveCursor(QTextCursor::End);
    });
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_text, 1);
    layout->addWidget(rule);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(buttons, 1);
    layout->addLayout(bottom);
    bottom->insertWidget(0, clear); // At the left, and for Tab behind the others, which are there already.

    // In the text Enter begins a line.
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    ok->setToolTip(QStringLiteral("Keep the note (Ctrl+Enter)"));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(Qt::CTRL | key, this), &QShortcut::activated, this, &CNoteDlg::accept);
}

std::string CNoteDlg::RowName() const {
    const std::string_view symbol = m_doc.RowSymbol(m_row);
    return std::string(symbol.empty() ? m_doc.AnnotationText(m_row) : symbol);
}

bool CNoteDlg::Edit(int row) {
    m_row = row;
    const QString name = QtText(RowName());
    setWindowTitle(name.isEmpty() ? QStringLiteral("Note for Row %1").arg(row)
                                  : QStringLiteral("Note for %1").arg(name));
    m_text->setPlainText(QtText(m_doc.Notes().Get(row)).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    m_text->moveCursor(QTextCursor::End);
    m_text->setFocus();
    return exec() == QDialog::Accepted;
}

void CNoteDlg::accept() {
    const QString written = m_text->toPlainText().replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    const std::string note = CNoteStore::Cleaned(BytesFromQt(written));
    if (note != m_doc.Notes().Get(m_row))
        m_doc.Edit(note.empty() ? "delete note" : "note", [&](CWatchlistEdit& edit) {
            edit.Notes().Set(m_row, note);
            edit.ShowText(m_row, {});
        });
    QDialog::accept();
}

} // namespace vx
