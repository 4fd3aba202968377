// SPDX-License-Identifier: MIT
#pragma once

#include "grid/CellSource.h"
#include "grid/DirtyCells.h"
#include "grid/GlyphAtlas.h"
#include "grid/GridAccessible.h"
#include "grid/GridDrag.h"
#include "grid/GridEditor.h"
#include "grid/GridGeometry.h"
#include "grid/GridInput.h"
#include "grid/GridMarks.h"
#include "grid/GridPainter.h"
#include "grid/GridSelection.h"
#include "grid/GridTheme.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>

#include <optional>
#include <string>
#include <utility>

class QHelpEvent;
class QMimeData;

namespace vx {

enum class EThemeMode : uint8_t { System, Light, Dark };

/// What lies under a place of a grid; Outside is where no cell is.
enum class EGridPart : uint8_t { Cell, RowHeader, ColumnHeader, Corner, Outside };

/// What a grid control has painted since it was made; tests and benchmarks count with it.
struct SPaintCounters {
    int64_t passes = 0; ///< Paint events.
    int64_t cells = 0;  ///< Cells, header cells included.

    bool operator==(const SPaintCounters&) const = default;
};

/// A grid of text cells over a source: header row and row-number column that stay, locked columns, a focus cell and a
/// selected range, an editor in the cell, columns and rows that can be dragged. It holds no cell: what is painted is
/// asked of the source, and painting costs what is seen, never what the source holds. It changes no content: signals
/// report what the user did, and the owner does it. Keys that it has no use for (Delete, copy, paste) are left
/// to the window.
///
/// Shape   row 0 is the header row, column 0 the row-number column; cells are rows 1..RowCount() and columns
///         1..ColumnCount(), numbered in display order
/// Units   widths and places in logical pixels
/// Errors  rows, columns and sizes out of range are clamped or have no effect
/// Owns    nothing of the source, which must live until another (or null) is set
class CGridCtrl : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit CGridCtrl(QWidget* parent = nullptr);
    ~CGridCtrl() override;

    void SetSource(const CCellSource* source);
    const CCellSource* Source() const { return m_source; }

    void SetRowCount(int rows);
    int RowCount() const { return m_geometry.RowCount(); }
    /// rising: the rows that take no place; their numbers stay. A focus in one goes to the next shown row.
    void SetHiddenRows(std::vector<int> rising);
    bool IsRowHidden(int row) const { return m_geometry.IsRowHidden(row); }
    /// The rows have another order: newRowOf[r] is where row r went, rows it does not cover stay; hidden: as
    /// SetHiddenRows takes them, where they are now. Focus cell, selection and the cell being edited go with their
    /// rows; a selection whose rows are no longer together shrinks to the row of the focus. The grid does not scroll.
    void MoveRows(const std::vector<int>& newRowOf, std::vector<int> hidden);
    /// New columns get defaultWidth.
    void SetColumnCount(int columns, int defaultWidth = 80);
    int ColumnCount() const { return m_geometry.ColumnCount(); }
    /// 0 hides the column. Does not emit ColumnResized.
    void SetColumnWidth(int column, int width);
    /// The same for columns 1, 2, ... at once; unchanged widths cost nothing.
    void SetColumnWidths(const std::vector<int>& widths);
    int ColumnWidth(int column) const { return m_geometry.ColumnWidth(column); }
    /// The width at which the header and the cells looked at (those on the screen and the first 10,000) are not cut.
    int FitWidth(int column);
    void SetLockedColumns(int columns);
    int LockedColumns() const { return m_geometry.LockedColumns(); }
    /// See CGridGeometry::SetStickyColumn.
    void SetStickyColumn(int column);
    void SetRowNumbersVisible(bool visible);
    bool RowNumbersVisible() const { return m_rowNumbers; }
    /// The row-number column is at least this wide, and wider where its digits need it.
    void SetRowNumberWidth(int least);

    void SetOptions(const SGridOptions& options);
    const SGridOptions& Options() const { return m_options; }
    void SetThemeMode(EThemeMode mode);
    const SGridTheme& Theme() const { return *m_theme; }
    /// The id for SCell::font; rows grow to hold the tallest font.
    int AddFont(const SGridFont& font);
    const CGridFonts& Fonts() const { return m_fonts; }
    /// Forgets all fonts but the default one, and how tall they were; nothing may be painted with their ids any more.
    void ForgetFonts();

    SGridCell FocusCell() const { return m_selector.State().focus; }
    SGridRange SelectedRange() const { return m_selector.Range(); }
    /// Moves the focus and selects that cell alone. A cell that was out of sight comes to the middle of the grid, one
    /// that is seen whole stays where it is; of a hidden row it is the next shown one's.
    void SetFocusCell(int row, int column) { m_selector.FocusOn(row, column); }
    /// Selects a range; the focus is its first cell that is in a shown row.
    void SelectRange(const SGridRange& range);
    /// Scrolls no further than is needed to see a cell whole.
    void EnsureVisible(int row, int column);

    /// The whole text of a cell as the source gives it: a header in row 0, a row number in column 0, and in each column
    /// of a row with one text that text. Empty outside the grid.
    std::string ShownText(int row, int column) const;

    /// Opens the editor in a cell that MayEdit(), which becomes the focus cell. It holds EditText(), selected, or the
    /// initial text with the caret after it. An edit of another cell is taken over first; one of the same cell
    /// continues, unless there is an initial text.
    ///
    /// Returns false, and changes nothing, when the cell cannot be edited or is hidden
    bool BeginEdit(int row, int column, std::optional<std::string> initialText = {}) {
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
    bool IsBusy() const { return IsEditing() || m_menuUp || m_drag.IsOn() || m_marks.dropRow > 0; }

    /// Marks the column that the rows are sorted by with a triangle in its header, and no other; None takes it away.
    void SetSortMark(int column, ESortMark mark);
    /// A dashed border around a range, such as the one just copied.
    void SetMarkedRange(const std::optional<SGridRange>& range);

    /// Notes that a cell's (a row's) text or look has changed; nothing is repainted before FlushChanges(). Cheap for
    /// cells that cannot be seen: call it for every change.
    void MarkCellChanged(int row, int column) { m_dirty.MarkCell(row, column); }
    void MarkRowChanged(int row) { m_dirty.MarkRow(row); }
    /// Has the marked cells repainted in the next paint event; without any, nothing is repainted.
    void FlushChanges();
    /// Repaints everything, for a source whose content is another.
    void UpdateAll() { viewport()->update(); }

    const CGridGeometry& Geometry() const { return m_geometry; }
    const SPaintCounters& Counters() const { return m_counters; }
    /// The cell under a place of the viewport: header cells have row or column 0; -1 where there is no cell.
    SGridCell CellAt(const QPoint& place) const {
        return {m_geometry.RowAt(place.y()), m_geometry.ColumnAt(place.x())};
    }
    static EGridPart PartOf(const SGridCell& cell);
    /// Whether a row shows one text across all its columns.
    bool IsSpan(int row) const;
    /// Whether the selection holds all rows (columns) there are.
    bool WholeColumnsSelected() const { return m_selector.WholeColumns(); }
    bool WholeRowsSelected() const { return m_selector.WholeRows(); }

    /// Whether a cell can be edited in place; asked each time an edit begins.
    virtual bool MayEdit(int /*row*/, int /*column*/) const { return false; }
    /// The text that the editor starts with, unless the user types a new one.
    virtual std::string EditText(int row, int column) const { return ShownText(row, column); }
    /// What a row is called for assistive technology: the text of its first column that is shown.
    virtual std::string RowName(int row) const { return ShownText(row, NextColumn(0, 1)); }
    /// Whether something dragged here from elsewhere can be dropped.
    virtual bool AcceptsDrop(const QMimeData& /*data*/) const { return false; }

Q_SIGNALS:
    void FocusCellChanged(int row, int column);
    void SelectionChanged();
    /// The user gave a column another width.
    void ColumnResized(int column, int width);
    void HeaderDoubleClicked(int column);
    /// In a cell that cannot be edited; in the others a double click opens the editor.
    void CellDoubleClicked(int row, int column);
    /// The user has ended an edit other than by giving it up, changed or not; the editor is closed already and the cell
    /// still has the focus, which moves on afterwards unless a receiver has moved it. Windows-1252 texts, oldText is
    /// EditText() as it was when the edit began.
    void CellEdited(int row, int column, const QByteArray& oldText, const QByteArray& newText);
    /// By mouse: what is under it, selected. By keyboard: the focus cell. Row and column are 0 in headers and -1 where
    /// there is none.
    void ContextMenuRequested(vx::EGridPart part, int row, int column, const QPoint& globalPos);
    /// The user has dragged the columns (rows) first..last to stand before another one, count + 1 for the end. Never to
    /// where they are already.
    void ColumnsDragged(int first, int last, int before);
    void RowsDragged(int first, int last, int before);
    /// Data that AcceptsDrop() was dropped on a cell, or the one nearest to the place. The data lives only during the
    /// signal, and the program it comes from may wait until it returns.
    void DataDropped(const QMimeData* data, int row, int column);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
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

private:
    friend class CCellEdit;
    friend class CGridDrag;
    friend class CGridInput;
    friend class CGridSelector;

    void LayoutChanged();
    void VisibleCellsChanged();
    void MeasureFonts();
    void FitRowNumbers();
    void ChooseTheme();
    void DressScrollBars();
    SGridScene Scene();
    void SetMarks(const SGridMarks& marks);
    bool ShowTip(const QHelpEvent& event);
    QString TipAt(int row, int column);
    int NextColumn(int column, int step) const;
    void Resize(int column, int width);

    QWidget* m_corner; // between the scroll bars; the scroll area owns it
    const CCellSource* m_source = nullptr;
    CGridGeometry m_geometry;
    CGridFonts m_fonts;
    CGridPainter m_painter;
    CDirtyCells m_dirty;
    CCellFlash m_flash;
    CDirtyCells m_goingOut; // cells no longer lit
    std::vector<SGridCell> m_flashEnded;
    QBasicTimer m_flashTimer;
    const SGridTheme* m_theme = &kLightGridTheme;
    EThemeMode m_themeMode = EThemeMode::System;
    SGridOptions m_options;
    CGridSelector m_selector{*this};
    CFocusSpeech m_speech{*this};
    SGridMarks m_marks;
    SPaintCounters m_counters;
    bool m_rowsMoved = false; // since the last paint event
    bool m_rowNumbers = true;
    int m_rowNumberWidth = 0; // at least
    bool m_menuUp = false;
    mutable SCell m_cell; // for measuring and asking

    CGridDrag m_drag{*this};
    CGridInput m_input{*this};
    CCellEdit m_edit{*this};
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
