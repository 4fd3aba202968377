#include "grid/GridEditor.h"

#include "grid/CellSource.h"
#include "grid/GridPainter.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QPainter>

namespace vx {

namespace {
constexpr int kFrame = 2;
constexpr int kOwnMargin = 2; // QLineEdit leaves it on each side of its text
constexpr int kCaretRoom = 4;
} // namespace

CGridEditor::CGridEditor(QWidget* viewport) : QLineEdit(viewport) {
    setObjectName(QStringLiteral("gridEditor"));
    setFrame(false);
    setMaxLength(SCell::kMaxLength);
    // The text starts where the cell's own does.
    constexpr int kMargin = CGridPainter::kTextPadding - kOwnMargin;
    setTextMargins(kMargin, 0, kMargin, 0);
    hide();
}

void CGridEditor::SetLook(const QFont& font, Qt::Alignment alignment, const SGridTheme& theme) {
    setFont(font);
    setAlignment(alignment | Qt::AlignVCenter);
    QPalette colors = palette();
    colors.setColor(QPalette::Base, QColor::fromRgb(theme.base));
    colors.setColor(QPalette::Text, QColor::fromRgb(theme.text));
    colors.setColor(QPalette::Highlight, QColor::fromRgb(theme.focus));
    colors.setColor(QPalette::HighlightedText, QColor::fromRgb(theme.base));
    setPalette(colors);
    m_frame = theme.focus;
}

void CGridEditor::Start(const QString& text, bool typed) {
    m_typed = typed;
    setText(text);
    if (!typed) selectAll();
}

int CGridEditor::NeededWidth() const {
    return fontMetrics().horizontalAdvance(text()) + 2 * CGridPainter::kTextPadding + kCaretRoom;
}

bool CGridEditor::EndByKey(const QKeyEvent& event, EEditEnd& end) const {
    const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
    if ((event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) != 0) return false;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        end = shift ? EEditEnd::Up : EEditEnd::Down;
        return true;
    case Qt::Key_Tab:
        end = shift ? EEditEnd::Left : EEditEnd::Right;
        return true;
    case Qt::Key_Backtab:
        end = EEditEnd::Left;
        return true;
    case Qt::Key_Escape:
        end = EEditEnd::Cancel;
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        end = event.key() == Qt::Key_Up ? EEditEnd::Up : EEditEnd::Down;
        return m_typed && !shift;
    default:
        return false;
    }
}

bool CGridEditor::event(QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress) return QLineEdit::event(event);
    auto* key = static_cast<QKeyEvent*>(event);
    EEditEnd end{};
    if (!EndByKey(*key, end)) return QLineEdit::event(event);
    // These keys are the editor's: no shortcut of the window and no focus chain gets them.
    key->accept();
    if (event->type() == QEvent::KeyPress) Q_EMIT Ended(end);
    return true;
}

void CGridEditor::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F2) m_typed = false;
    QLineEdit::keyPressEvent(event);
}

void CGridEditor::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    // Another window or a menu in front is no end: the user comes back to the text.
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        Q_EMIT Ended(EEditEnd::Stay);
}

void CGridEditor::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    const QColor color = QColor::fromRgb(m_frame);
    painter.fillRect(0, 0, width(), kFrame, color);
    painter.fillRect(0, height() - kFrame, width(), kFrame, color);
    painter.fillRect(0, 0, kFrame, height(), color);
    painter.fillRect(width() - kFrame, 0, kFrame, height(), color);
}

} // namespace vx
