#include "grid/GridCtrl.h"

#include "base/qt/QtText.h"
#include "grid/GridAccessible.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QPointer>
#include <algorithm>

// Editing a cell in place.

namespace vx {

namespace {

constexpr double kPointsPerInch = 72;

Qt::Alignment QtAlignment(EAlign align) {
    return align == EAlign::Left ? Qt::AlignLeft : align == EAlign::Right ? Qt::AlignRight : Qt::AlignHCenter;
}

} // namespace

bool CGridCtrl::BeginEdit(int row, int column, std::optional<std::string> initialText) {
    const SGridCell cell{row, column};
    if (m_editing && m_editedCell != cell) EndEdit(true);
    const bool there = row >= 1 && row <= RowCount() && column >= 1 && column <= ColumnCount();
    if (!there || m_source == nullptr || ColumnWidth(column) == 0 || IsRowHidden(row) || !MayEdit(row, column))
        return false;
    if (m_editing && !initialText) {
        m_editor->SetTyped(false); // already open, perhaps with a new text in it
        return true;
    }
    EndDrag();
    if (m_selection.focus != cell)
        MoveTo(cell, false);
    else
        EnsureVisible(row, column);
    if (!m_editing) {
        m_editedText = EditText(row, column);
        m_editTypedOver = initialText.has_value();
    }
    m_editedCell = cell;
    m_editing = true;
    DressEditor();
    m_editor->Start(QtText(initialText ? *initialText : m_editedText), initialText.has_value());
    PlaceEditor();
    m_editor->show();
    if (!m_composing) m_editor->setFocus();
    return true;
}

void CGridCtrl::EndEdit(bool commit) { FinishEdit(commit ? EEditEnd::Stay : EEditEnd::Cancel); }

void CGridCtrl::FinishEdit(EEditEnd end) {
    if (!m_editing) return;
    if (m_composing) QGuiApplication::inputMethod()->commit(); // comes back to inputMethodEvent()
    m_composing = false;
    // First of all: taking the keyboard back ends the edit again, and a receiver may open windows.
    m_editing = false;
    if (window()->focusWidget() == m_editor) setFocus();
    const QByteArray text = QByteArray::fromStdString(BytesFromQt(m_editor->text()));
    m_editor->hide();
    const SGridCell cell = m_editedCell;
    if (end == EEditEnd::Cancel) return;
    const QPointer<CGridCtrl> alive(this);
    Q_EMIT CellEdited(cell.row, cell.column, QByteArray::fromStdString(m_editedText), text);
    if (alive.isNull() || m_editing || m_selection.focus != cell) return;
    if (end == EEditEnd::Down || end == EEditEnd::Up)
        MoveTo({m_geometry.RowAway(cell.row, end == EEditEnd::Down ? 1 : -1), cell.column}, false);
    else if (end == EEditEnd::Right || end == EEditEnd::Left)
        StepInRow(end == EEditEnd::Right ? 1 : -1);
}

void CGridCtrl::DressEditor() {
    m_cell.Reset();
    if (!m_source->FillSpan(m_editedCell.row, m_cell)) {
        m_cell.Reset();
        m_source->FillCell(m_editedCell.row, m_editedCell.column, m_cell);
    }
    const SGridFont& of = m_fonts.Font(m_cell.font);
    QFont font(of.family);
    font.setPixelSize(std::max(1, qRound(of.size * logicalDpiY() / kPointsPerInch)));
    font.setBold(of.bold);
    font.setItalic(of.italic);
    m_editor->setAccessibleName(SpokenPlace(*this, m_editedCell.row, m_editedCell.column));
    m_editor->SetLook(font, QtAlignment(m_cell.align), *m_theme);
}

void CGridCtrl::PlaceEditor() {
    if (!m_editing) return;
    const int row = m_editedCell.row;
    const int column = m_editedCell.column;
    if (row > RowCount() || IsRowHidden(row) || column > ColumnCount() || ColumnWidth(column) == 0)
        return EndEdit(false);
    const bool span = IsSpan(row);
    const bool scrolls = !span && !m_geometry.IsFixed(column);
    const int edge = scrolls ? m_geometry.FixedWidth() : m_geometry.ColumnWidth(0);
    const QRect room(edge, m_geometry.HeaderHeight(), viewport()->width() - edge, m_geometry.ScrolledHeight());
    QRect place = m_geometry.CellRect(row, column);
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

} // namespace vx
