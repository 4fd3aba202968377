// SPDX-License-Identifier: MIT
#pragma once

#include "grid/GridAccessible.h"
#include "grid/GridDrag.h"
#include "grid/GridEditor.h"
#include "grid/GridInput.h"
#include "grid/GridSelector.h"
#include "grid/GridView.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vx {

/// A grid of text cells over a source: header row and row-number column that stay, locked columns, a focus cell and a
/// selected range, an editor in the cell, columns and rows that can be dragged. It holds no cell: what is painted is
/// asked of the source, and painting costs what is seen, never what the source holds. It changes no content: signals
/// report what the user did, and the owner does it. Keys that it has no use for (Delete, copy, paste) are left
/// to the window.
///
/// Shape   row 0 is the header row, column 0 the row-number column; cells are rows 1..RowCount() and columns
///         1..ColumnCount(), numbered in display order
/// Units   places in logical pixels, widths of columns in logical pixels at a zoom of 100 percent; the geometry has
/// them
///         as they are drawn
/// Errors  rows, columns and sizes out of range are clamped or have no effect
/// Owns    nothing of the source, which must live until another (or null) is set
class CGridCtrl : public CGridView {
    Q_OBJECT

public:
    explicit CGridCtrl(QWidget* parent = nullptr);
    ~CGridCtrl() override;

    void SetSource(const CCellSource* source) override;
    /// The rows have another order: newRowOf[r] is where row r went, rows it does not cover stay; hidden: as
    /// SetHiddenRows takes them, where they are now. Focus cell, selection and the cell being edited go with their
    /// rows; a selection whose rows are no longer together shrinks to the row of the focus. The grid does not scroll.
    void MoveRows(const std::vector<int>& newRowOf, std::vector<int> hidden);

    const SGridSelection& Selection() const override { return m_selector.State(); }
    void SetFocusCell(int row, int column) override { m_selector.FocusOn(row, column); }
    void SelectRange(const SGridRange& range) override;

    bool BeginEdit(int row, int column, std::optional<std::string> initialText = {}) override {
        return m_edit.Begin(row, column, std::move(initialText));
    }
    /// Closes the editor, if there is one; with commit CellEdited() reports its text.
    void EndEdit(bool commit) { m_edit.Finish(commit ? EEditEnd::Stay : EEditEnd::Cancel); }
    bool IsEditing() const { return m_edit.IsOpen(); }
    /// Whether the edit, or the last one, began with a text that the user typed over the cell's.
    bool EditBeganTyped() const { return m_edit.BeganTyped(); }
    /// The cell in the editor; meaningless without one.
    SGridCell EditedCell() const { return m_edit.Cell(); }

    /// The owner says when a menu of the grid is open and when it is closed.
    void SetMenuUp(bool up) { m_menuUp = up; }
    /// While the user has an editor or a menu open, or drags something, nothing should move under the mouse.
    bool IsBusy() const { return IsEditing() || m_menuUp || m_drag.IsOn() || Marks().dropRow > 0; }

    void FlushChanges() override;

protected:
    bool viewportEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override { m_input.KeyPress(*event); }
    void inputMethodEvent(QInputMethodEvent* event) override { m_edit.InputMethod(*event); }
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void wheelEvent(QWheelEvent* event) override { m_input.Wheel(*event); }
    void mousePressEvent(QMouseEvent* event) override { m_input.MousePress(*event); }
    void mouseMoveEvent(QMouseEvent* event) override { m_input.MouseMove(*event); }
    void mouseReleaseEvent(QMouseEvent* event) override { m_input.MouseRelease(*event); }
    void mouseDoubleClickEvent(QMouseEvent* event) override { m_input.DoubleClick(*event); }
    void contextMenuEvent(QContextMenuEvent* event) override { m_input.Menu(*event); }
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

    void KeepSelectionInside() override { m_selector.KeepInside(); }
    void CellsMoved() override { m_edit.Place(); }
    void LookChanged() override;
    void ShapeChanged() override { AnnounceShape(*this); }

private:
    bool m_menuUp = false;
    CFocusSpeech m_speech{*this};
    CGridSelector m_selector{*this, m_speech};
    CGridDrag m_drag{*this, m_selector};
    CCellEdit m_edit{*this, m_selector, m_drag};
    CGridInput m_input{*this, m_selector, m_drag, m_edit};
};

/// A grid with this program's conventions: its name for assistive technology and the looks kept in the settings.
class CNorvGridCtrl : public CGridCtrl {
    Q_OBJECT

public:
    explicit CNorvGridCtrl(QWidget* parent = nullptr);

    /// The three grid settings as the user keeps them, and reduced motion.
    void ApplyViewSettings(bool gridLines, bool shading, bool ellipsis, bool reducedMotion);
    /// "light" and "dark"; any other text follows the desktop.
    void ApplyTheme(std::string_view name);
};

} // namespace vx
