// SPDX-License-Identifier: MIT
#include "grid/GridEditor.h"

#include "base/qt/QtText.h"
#include "grid/CellSource.h"
#include "grid/GridAccessible.h"
#include "grid/GridDrag.h"
#include "grid/GridPainter.h"
#include "grid/GridSelector.h"
#include "grid/GridView.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>

#include <algorithm>

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
    hide();
}

void CGridEditor::SetLook(const QFont& font, int padding, Qt::Alignment alignment, const SGridTheme& theme) {
    setFont(font);
    setTextMargins(padding - kOwnMargin, 0, padding - kOwnMargin, 0);
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
    return fontMetrics().horizontalAdvance(text()) + 2 * (textMargins().left() + kOwnMargin) + kCaretRoom;
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

namespace {

constexpr double kPointsPerInch = 72;

Qt::Alignment QtAlignment(EAlign align) {
    return align == EAlign::Left ? Qt::AlignLeft : align == EAlign::Right ? Qt::AlignRight : Qt::AlignHCenter;
}

} // namespace

CCellEdit::CCellEdit(CGridView& grid, CGridSelector& selector, CGridDrag& drag)
    : m_grid(grid), m_selector(selector), m_drag(drag), m_editor(new CGridEditor(grid.viewport())) {
    QObject::connect(m_editor, &CGridEditor::Ended, m_editor, [this](EEditEnd end) { Finish(end); });
    QObject::connect(m_editor, &CGridEditor::textChanged, m_editor, [this] { Place(); });
}

CCellEdit::~CCellEdit() {
    // Its end must not be taken for the end of an edit.
    m_open = false;
    delete m_editor;
}

bool CCellEdit::Begin(int row, int column, std::optional<std::string> initialText) {
    const SGridCell cell{row, column};
    if (m_open && m_at != cell) Finish(EEditEnd::Stay);
    const bool there = row >= 1 && row <= m_grid.RowCount() && column >= 1 && column <= m_grid.ColumnCount();
    if (!there || m_grid.Source() == nullptr || m_grid.ColumnWidth(column) == 0 || m_grid.IsRowHidden(row) ||
        !m_grid.MayEdit(row, column))
        return false;
    if (m_open && !initialText) {
        m_editor->SetTyped(false); // already open, perhaps with a new text in it
        return true;
    }
    m_drag.End();
    if (m_grid.FocusCell() != cell)
        m_selector.MoveTo(cell, false);
    else
        m_grid.EnsureVisible(row, column);
    if (!m_open) {
        m_text = m_grid.EditText(row, column);
        m_typedOver = initialText.has_value();
    }
    m_at = cell;
    m_open = true;
    Dress();
    m_editor->Start(QtText(initialText ? *initialText : m_text), initialText.has_value());
    Place();
    m_editor->show();
    if (!m_composing) m_editor->setFocus();
    return true;
}

void CCellEdit::Finish(EEditEnd end) {
    if (!m_open) return;
    if (m_composing) QGuiApplication::inputMethod()->commit(); // comes back to InputMethod()
    m_composing = false;
    // First of all: taking the keyboard back ends the edit again, and a receiver may open windows.
    m_open = false;
    if (m_grid.window()->focusWidget() == m_editor) m_grid.setFocus();
    const QByteArray text = QByteArray::fromStdString(BytesFromQt(m_editor->text()));
    m_editor->hide();
    const SGridCell cell = m_at;
    if (end == EEditEnd::Cancel) return;
    const QPointer<CGridView> alive(&m_grid);
    Q_EMIT m_grid.CellEdited(cell.row, cell.column, QByteArray::fromStdString(m_text), text);
    if (alive.isNull() || m_open || m_grid.FocusCell() != cell) return;
    if (end == EEditEnd::Down || end == EEditEnd::Up)
        m_selector.MoveTo({m_grid.Geometry().RowAway(cell.row, end == EEditEnd::Down ? 1 : -1), cell.column}, false);
    else if (end == EEditEnd::Right || end == EEditEnd::Left)
        m_selector.StepInRow(end == EEditEnd::Right ? 1 : -1);
}

void CCellEdit::Dress() {
    SCell cell;
    if (!m_grid.Source()->FillSpan(m_at.row, cell)) {
        cell.Reset();
        m_grid.Source()->FillCell(m_at.row, m_at.column, cell);
    }
    const SGridFont& of = m_grid.Fonts().Font(cell.font);
    QFont font(of.family);
    font.setPixelSize(std::max(1, qRound(of.size * m_grid.logicalDpiY() / kPointsPerInch * m_grid.Zoom() / 100)));
    font.setBold(of.bold);
    font.setItalic(of.italic);
    m_editor->setAccessibleName(SpokenPlace(m_grid, m_at.row, m_at.column));
    // The text starts where the cell's own does.
    const int padding = m_grid.Fonts().Zoomed(CGridPainter::kTextPadding);
    m_editor->SetLook(font, padding, QtAlignment(cell.align), m_grid.Theme());
}

void CCellEdit::Place() {
    if (!m_open) return;
    const int row = m_at.row;
    const int column = m_at.column;
    if (row > m_grid.RowCount() || m_grid.IsRowHidden(row) || column > m_grid.ColumnCount() ||
        m_grid.ColumnWidth(column) == 0)
        return Finish(EEditEnd::Cancel);
    const bool span = m_grid.IsSpan(row);
    const bool scrolls = !span && !m_grid.Geometry().IsFixed(column);
    const int edge = scrolls ? m_grid.Geometry().FixedWidth() : m_grid.Geometry().ColumnWidth(0);
    const QRect room(edge, m_grid.Geometry().HeaderHeight(), m_grid.viewport()->width() - edge,
                     m_grid.Geometry().ScrolledHeight());
    QRect place = m_grid.Geometry().CellRect(row, column);
    if (span) place = QRect(room.left(), place.top(), room.width(), place.height());
    const int wanted = m_editor->NeededWidth();
    if (wanted > place.width() && place.intersects(room)) {
        // To the right as far as the grid is seen, and what is then still missing to the left.
        const int right = std::max(place.right(), std::min(place.left() + wanted - 1, room.right()));
        place.setLeft(std::min(place.left(), std::max(room.left(), right - wanted + 1)));
        place.setRight(right);
    }
    const QRect seen = place.intersected(room);
    if (seen.isEmpty()) place.moveBottom(-place.height()); // out of sight, yet it keeps the keyboard
    m_editor->setGeometry(place);
    if (seen.isEmpty() || seen == place)
        m_editor->clearMask();
    else
        m_editor->setMask(seen.translated(-place.topLeft()));
}

// A composition that has begun stays with the grid until it is done, for a change of the focus would break it off;
// meanwhile the editor shows it.
void CCellEdit::InputMethod(QInputMethodEvent& event) {
    const bool composing = !event.preeditString().isEmpty();
    const bool done = !event.commitString().isEmpty();
    const SGridCell at = m_grid.FocusCell();
    if (!m_open) {
        if (!composing && !done) return event.ignore();
        m_composing = true; // keeps the keyboard here
        if (!Begin(at.row, at.column, std::string())) {
            m_composing = false;
            return event.ignore();
        }
    }
    QCoreApplication::sendEvent(m_editor, &event);
    if (!m_composing || composing) return;
    m_composing = false;
    if (done)
        m_editor->setFocus();
    else
        Finish(EEditEnd::Cancel);
}

} // namespace vx
