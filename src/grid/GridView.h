// SPDX-License-Identifier: MIT
#pragma once

#include "grid/CellSource.h"
#include "grid/DirtyCells.h"
#include "grid/GlyphAtlas.h"
#include "grid/GridGeometry.h"
#include "grid/GridMarks.h"
#include "grid/GridPainter.h"
#include "grid/GridSelection.h"
#include "grid/GridTheme.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>

#include <optional>
#include <string>
#include <vector>

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

/// What a grid shows of a source, apart from the user's hands: layout, painting, the cells that changed, marks, themes,
/// tips. What hands do is in CGridCtrl; the parts that do it, and assistive technology, know a grid by this.
///
/// Shape, units, errors and ownership as in CGridCtrl
class CGridView : public QAbstractScrollArea {
    Q_OBJECT

public:
    static constexpr int kMinZoom = 50;
    static constexpr int kMaxZoom = 300;
    /// At 100 percent, as all widths of columns that come and go here.
    static constexpr int kMaxColumnWidth = CGridGeometry::kMaxColumnWidth * 100 / kMaxZoom;
    /// Above and below the tallest font's line together, in pixels at 100 percent, unless SetScale says otherwise.
    static constexpr int kRowPadding = 6;

    virtual void SetSource(const CCellSource* source);
    const CCellSource* Source() const { return m_source; }

    void SetRowCount(int rows);
    int RowCount() const { return m_geometry.RowCount(); }
    /// rising: the rows that take no place; their numbers stay. A focus in one goes to the next shown row.
    void SetHiddenRows(std::vector<int> rising);
    bool IsRowHidden(int row) const { return m_geometry.IsRowHidden(row); }
    /// New columns get defaultWidth.
    void SetColumnCount(int columns, int defaultWidth = 80);
    int ColumnCount() const { return m_geometry.ColumnCount(); }
    /// 0 hides the column. Does not emit ColumnResized.
    void SetColumnWidth(int column, int width);
    /// The same for columns 1, 2, ... at once; unchanged widths cost nothing.
    void SetColumnWidths(const std::vector<int>& widths);
    int ColumnWidth(int column) const {
        return column < 1 || column > ColumnCount() ? 0 : m_widths[static_cast<size_t>(column)];
    }
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

    /// How large everything is drawn, in percent, and how much room a row leaves around its text. The first row and
    /// column in sight stay there.
    void SetScale(int zoom, int rowPadding);
    int Zoom() const { return m_fonts.Zoom(); }

    void SetOptions(const SGridOptions& options);
    const SGridOptions& Options() const { return m_options; }
    void SetThemeMode(EThemeMode mode);
    const SGridTheme& Theme() const { return *m_theme; }
    /// The id for SCell::font; rows grow to hold the tallest font.
    int AddFont(const SGridFont& font);
    const CGridFonts& Fonts() const { return m_fonts; }
    /// Forgets all fonts but the default one, and how tall they were; nothing may be painted with their ids any more.
    void ForgetFonts();

    virtual const SGridSelection& Selection() const = 0;
    SGridCell FocusCell() const { return Selection().focus; }
    SGridRange SelectedRange() const { return Selection().Range(); }
    /// Whether the selection holds all rows (columns) there are.
    bool WholeColumnsSelected() const;
    bool WholeRowsSelected() const;
    /// Moves the focus and selects that cell alone. A cell that was out of sight comes to the middle of the grid, one
    /// that is seen whole stays where it is; of a hidden row it is the next shown one's.
    virtual void SetFocusCell(int row, int column) = 0;
    /// Selects a range; the focus is its first cell that is in a shown row.
    virtual void SelectRange(const SGridRange& range) = 0;
    /// Scrolls no further than is needed to see a cell whole.
    void EnsureVisible(int row, int column);

    /// The whole text of a cell as the source gives it: a header in row 0, a row number in column 0, and in each column
    /// of a row with one text that text. Empty outside the grid.
    std::string ShownText(int row, int column) const;

    /// The next column that is shown, step 1 or -1; the same one where there is none.
    int NextColumn(int column, int step) const;

    /// Opens the editor in a cell that MayEdit(), which becomes the focus cell. It holds EditText(), selected, or the
    /// initial text with the caret after it. An edit of another cell is taken over first; one of the same cell
    /// continues, unless there is an initial text.
    ///
    /// Returns false, and changes nothing, when the cell cannot be edited or is hidden
    virtual bool BeginEdit(int row, int column, std::optional<std::string> initialText = {}) = 0;

    /// Marks the column that the rows are sorted by with a triangle in its header, and no other; None takes it away.
    void SetSortMark(int column, ESortMark mark);
    /// A dashed border around a range, such as the one just copied.
    void SetMarkedRange(const std::optional<SGridRange>& range);

    const SGridMarks& Marks() const { return m_marks; }
    void SetMarks(const SGridMarks& marks);

    /// Notes that a cell's (a row's) text or look has changed; nothing is repainted before FlushChanges(). Cheap for
    /// cells that cannot be seen: call it for every change.
    void MarkCellChanged(int row, int column) { m_dirty.MarkCell(row, column); }
    void MarkRowChanged(int row) { m_dirty.MarkRow(row); }
    /// Has the marked cells repainted in the next paint event; without any, nothing is repainted.
    virtual void FlushChanges();
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
    /// The rows of a range, as wide as the viewport.
    QRect RangeRect(const SGridRange& range) const;
    /// The user gives a column another width, or drags it to one that is `drawn` pixels at the zoom.
    void Resize(int column, int width);
    void ResizeDrawn(int column, int drawn);
    using QAbstractScrollArea::updateMicroFocus;

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
    /// The user gave a column another width, in pixels at 100 percent.
    void ColumnResized(int column, int width);
    /// The wheel turned by so many notches with Ctrl held, upwards for more than 0.
    void ZoomTurned(int notches);
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
    /// The user has dragged the columns (rows) first..last before another one, count + 1 for the end. Never to
    /// where they are already.
    void ColumnsDragged(int first, int last, int before);
    void RowsDragged(int first, int last, int before);
    /// Data that AcceptsDrop() was dropped on a cell, or the one nearest to the place. The data lives only during the
    /// signal, and the program it comes from may wait until it returns.
    void DataDropped(const QMimeData* data, int row, int column);

protected:
    explicit CGridView(QWidget* parent);
    ~CGridView() override;

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

    /// Measures and chooses for the first time, once the grid is whole.
    void Begin();
    /// Puts the rows that are hidden now in their place after a move of rows.
    void TakeMovedRows(std::vector<int> hidden);
    void LayoutChanged();

    // What a change of the view asks of the hands.

    /// The layout is another: what was hidden or cut off must no longer be selected.
    virtual void KeepSelectionInside() = 0;
    /// Cells are at other places, or are no longer there.
    virtual void CellsMoved() = 0;
    /// The theme or the zoom is another.
    virtual void LookChanged() = 0;
    /// The number of rows or columns is another.
    virtual void ShapeChanged() = 0;

private:
    bool TakeWidth(int column, int width);
    void VisibleCellsChanged();
    void MeasureFonts();
    void FitRowHeights();
    void FitRowNumbers();
    void ChooseTheme();
    void DressScrollBars();
    SGridScene Scene();
    bool ShowTip(const QHelpEvent& event);
    QString TipAt(int row, int column);

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
    SGridMarks m_marks;
    SPaintCounters m_counters;
    bool m_rowsMoved = false; // since the last paint event
    bool m_rowNumbers = true;
    int m_rowNumberWidth = 0;  // at least, at 100 percent
    std::vector<int> m_widths; // by column, at 100 percent
    int m_rowPadding = kRowPadding;
    mutable SCell m_cell; // for measuring and asking
};

} // namespace vx
