// SPDX-License-Identifier: MIT
#pragma once

#include "grid/GridSelection.h"
#include "grid/GridTheme.h"

#include <QLineEdit>

#include <optional>
#include <string>

class QInputMethodEvent;

namespace vx {

class CGridDrag;
class CGridSelector;
class CGridView;

/// How an edit ends: given up, or taken over with the focus staying or moving on.
enum class EEditEnd : uint8_t { Cancel, Stay, Down, Up, Right, Left };

/// The line in which a grid's cell is edited in place. It says how the user ends it; CCellEdit places, shows and hides
/// it.
///
/// Shape   at most 255 characters; object name "gridEditor"
class CGridEditor : public QLineEdit {
    Q_OBJECT

public:
    explicit CGridEditor(QWidget* viewport);

    /// padding: between the editor's edge and its text, in logical pixels.
    void SetLook(const QFont& font, int padding, Qt::Alignment alignment, const SGridTheme& theme);
    /// Takes the text to start with. While the user types a new text instead of changing the old one, the arrows up
    /// and down end the edit like Enter.
    void Start(const QString& text, bool typed);
    void SetTyped(bool typed) { m_typed = typed; }
    /// The width that shows the text and the caret, in logical pixels.
    int NeededWidth() const;

Q_SIGNALS:
    void Ended(vx::EEditEnd end);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool EndByKey(const QKeyEvent& event, EEditEnd& end) const;

    bool m_typed = false;
    QRgb m_frame = 0;
};

/// The edit of one cell in place: opens the editor over the cell, keeps it there while the grid scrolls, and ends it.
///
/// Owns    its editor, a child of the viewport that is hidden while nothing is edited; not the grid, which has one of
///         these and outlives it
class CCellEdit {
public:
    CCellEdit(CGridView& grid, CGridSelector& selector, CGridDrag& drag);
    ~CCellEdit();
    CCellEdit(const CCellEdit&) = delete;
    CCellEdit& operator=(const CCellEdit&) = delete;

    /// As CGridCtrl::BeginEdit.
    bool Begin(int row, int column, std::optional<std::string> initialText = {});
    void Finish(EEditEnd end);
    /// Puts the editor over its cell again; the layout may be another.
    void Place();
    /// Gives the editor the look of its cell.
    void Dress();
    /// The row of the edited cell has moved.
    void MoveToRow(int row) { m_at.row = row; }
    /// Takes an event of an input method, which may begin an edit.
    void InputMethod(QInputMethodEvent& event);

    bool IsOpen() const { return m_open; }
    /// Whether an input method still has the keyboard through the grid.
    bool IsComposing() const { return m_composing; }
    bool BeganTyped() const { return m_typedOver; }
    /// Meaningless while no editor is open.
    SGridCell Cell() const { return m_at; }

private:
    CGridView& m_grid;
    CGridSelector& m_selector;
    CGridDrag& m_drag;
    CGridEditor* m_editor;
    bool m_open = false;
    bool m_composing = false;
    SGridCell m_at;
    std::string m_text; // as it was when the edit began
    bool m_typedOver = false;
};

} // namespace vx
