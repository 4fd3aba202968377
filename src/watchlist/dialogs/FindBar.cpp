// SPDX-License-Identifier: MIT
#include "watchlist/dialogs/FindBar.h"

#include "base/qt/QtText.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace vx {

namespace {

constexpr int kLongestText = 255;  // no cell shows more
constexpr double kCloseSize = 1.4; // of the text that closes the bar, times the font's

QToolButton* AddButton(QHBoxLayout& layout, const char* name, const QString& text, const QString& tip) {
    auto* button = new QToolButton;
    button->setObjectName(QString::fromLatin1(name));
    button->setText(text);
    button->setToolTip(tip);
    button->setFocusPolicy(Qt::StrongFocus);
    layout.addWidget(button);
    return button;
}

} // namespace

CFindBar::CFindBar(CWatchlistDoc& doc, CWatchlistGrid& grid, QWidget* parent)
    : QWidget(parent), m_doc(doc), m_grid(grid), m_text(new QLineEdit),
      m_matchCase(new QCheckBox(QStringLiteral("Match &case"))),
      m_wholeCell(new QCheckBox(QStringLiteral("Wh&ole cell"))), m_message(new QLabel) {
    setObjectName(QStringLiteral("findBar"));
    m_text->setObjectName(QStringLiteral("findText"));
    m_matchCase->setObjectName(QStringLiteral("findMatchCase"));
    m_wholeCell->setObjectName(QStringLiteral("findWholeCell"));
    m_message->setObjectName(QStringLiteral("findMessage"));
    m_message->setTextFormat(Qt::PlainText);
    m_text->setMaxLength(kLongestText);
    m_text->setClearButtonEnabled(true);
    m_text->setMaximumWidth(320);
    auto* label = new QLabel(QStringLiteral("F&ind:"));
    label->setBuddy(m_text);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->addWidget(label);
    layout->addWidget(m_text, 1);
    QToolButton* previous = AddButton(*layout, "findPrevious", QStringLiteral("Previous"),
                                      QStringLiteral("The place before (Shift+Enter)"));
    QToolButton* next =
        AddButton(*layout, "findNext", QStringLiteral("Next"), QStringLiteral("The next place (Enter)"));
    layout->addWidget(m_matchCase);
    layout->addWidget(m_wholeCell);
    layout->addWidget(m_message);
    layout->addStretch(1);
    // A text, since the style's picture of it is hardly seen in the dark.
    QToolButton* close = AddButton(*layout, "findClose", QStringLiteral("\u00D7"), QStringLiteral("Close (Esc)"));
    close->setAccessibleName(QStringLiteral("Close"));
    QFont large = close->font();
    large.setPointSizeF(large.pointSizeF() * kCloseSize);
    close->setFont(large);
    close->setAutoRaise(true);

    connect(m_text, &QLineEdit::textEdited, this, &CFindBar::FindWhileTyping);
    connect(m_matchCase, &QCheckBox::toggled, this, &CFindBar::FindWhileTyping);
    connect(m_wholeCell, &QCheckBox::toggled, this, &CFindBar::FindWhileTyping);
    connect(previous, &QToolButton::clicked, this, &CFindBar::Previous);
    connect(next, &QToolButton::clicked, this, &CFindBar::Next);
    connect(close, &QToolButton::clicked, this, &CFindBar::CloseBar);
    hide();
}

void CFindBar::Open() {
    show();
    m_message->clear();
    m_text->selectAll();
    m_text->setFocus(Qt::ShortcutFocusReason);
}

void CFindBar::ForgetAnswer() { m_message->clear(); }

SFindOptions CFindBar::Options() const { return {m_matchCase->isChecked(), m_wholeCell->isChecked()}; }

std::string CFindBar::Text() const { return BytesFromQt(m_text->text()); }

// The cell of the focus counts too: further letters must not make the search jump ahead.
void CFindBar::FindWhileTyping() {
    if (m_text->text().isEmpty()) {
        m_message->clear();
        return;
    }
    const SGridCell focus = m_grid.FocusCell();
    Show(FindNext(m_doc, Text(), Options(), focus.row, focus.column - 1));
}

void CFindBar::Next() {
    if (m_text->text().isEmpty()) return Open();
    const SGridCell focus = m_grid.FocusCell();
    Show(FindNext(m_doc, Text(), Options(), focus.row, focus.column));
}

void CFindBar::Previous() {
    if (m_text->text().isEmpty()) return Open();
    const SGridCell focus = m_grid.FocusCell();
    Show(FindPrevious(m_doc, Text(), Options(), focus.row, focus.column));
}

void CFindBar::Show(const SFoundCell& found) {
    if (found.row == 0) {
        show(); // F3 with a text that is gone: the answer must be seen.
        m_message->setText(QStringLiteral("Not found"));
        return;
    }
    m_message->setText(found.wrapped  ? QStringLiteral("Went on at the other end")
                       : found.inNote ? QStringLiteral("In the note of row %1").arg(found.row)
                                      : QString());
    m_doc.RevealRows(found.row, found.row);
    m_grid.SetFocusCell(found.row, found.column);
}

void CFindBar::CloseBar() {
    hide();
    m_grid.setFocus();
}

void CFindBar::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Escape:
        return CloseBar();
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return event->modifiers().testFlag(Qt::ShiftModifier) ? Previous() : Next();
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace vx
