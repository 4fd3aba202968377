#pragma once

#include "grid/CellFlash.h"
#include "grid/CellSource.h"
#include "grid/DirtyCells.h"
#include "grid/GlyphAtlas.h"
#include "grid/GridGeometry.h"
#include "grid/GridPainter.h"
#include "grid/GridSelection.h"
#include "grid/GridTheme.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>

class QHelpEvent;

namespace vx {

enum class EThemeMode : uint8_t { System, Light, Dark };

/// What a grid control has painted since it was made; tests and benchmarks count with it.
struct SPaintCounters {
    int64_t passes = 0; ///< Paint events.
    int64_t cells = 0;  ///< Cells, header cells included.
};

/// A grid of text cells over a source: header row and row-number column that stay, locked columns, a focus cell and a
/// selected range. It holds no cell: what is painted is asked of the source, and painting costs what is seen, never
/// what the source holds.
///
/// Shape   row 0 is the header row, column 0 the row-number column; cells are rows 1..RowCount() and columns
///         1..ColumnCount(), numbered in display order
/// Units   widths and places in logical pixels
/// Errors  rows, columns and sizes out of range are clamped or have no effect
/// Owns    nothing of the source, which must live until another (or null) is set
/// Thread  GUI thread only
class CGridCtrl : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit CGridCtrl(QWidget* parent = nullptr);
    ~CGridCtrl() override;

    void SetSource(const CCellSource* source);
    const CCellSource* Source() const { return m_source; }

    void SetRowCount(int rows);
    int RowCount() const { return m_geometry.RowCount(); }
    /// New columns get defaultWidth.
    void SetColumnCount(int columns, int defaultWidth = 80);
    int ColumnCount() const { return m_geometry.ColumnCount(); }
    /// 0 hides the column. Does not emit ColumnResized.
    void SetColumnWidth(int column, int width);
    int ColumnWidth(int column) const { return m_geometry.ColumnWidth(column); }
    /// The width at which the header and the cells looked at (those on the screen and the first 10,000) are not cut.
    int FitWidth(int column);
    void SetLockedColumns(int columns);
    int LockedColumns() const { return m_geometry.LockedColumns(); }
    void SetRowNumbersVisible(bool visible);
    bool RowNumbersVisible() const { return m_rowNumbers; }

    void SetOptions(const SGridOptions& options);
    const SGridOptions& Options() const { return m_options; }
    void SetThemeMode(EThemeMode mode);
    const SGridTheme& Theme() const { return *m_theme; }
    /// The id for SCell::font; rows grow to hold the tallest font.
    int AddFont(const SGridFont& font);
    void SetDefaultFont(const SGridFont& font);

    SGridCell FocusCell() const { return m_selection.focus; }
    SGridRange SelectedRange() const { return m_selection.Range(); }
    /// Moves the focus, selects that cell alone and scrolls to it.
    void SetFocusCell(int row, int column);
    /// Selects a range; the focus is its first cell.
    void SelectRange(const SGridRange& range);
    void EnsureVisible(int row, int column);

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

Q_SIGNALS:
    void FocusCellChanged(int row, int column);
    void SelectionChanged();
    /// The user gave a column another width.
    void ColumnResized(int column, int width);
    void HeaderDoubleClicked(int column);
    void CellDoubleClicked(int row, int column);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    enum class EDrag : uint8_t { None, SelectCells, SelectRows, SelectColumns, ResizeColumn };

    void LayoutChanged();
    void VisibleCellsChanged();
    void MeasureFonts();
    void FitRowNumbers();
    void ChooseTheme();
    void DressScrollBars();
    void KeepSelectionInside();
    void UpdateSelection(const SGridSelection& next);
    SGridSelection Clamped(SGridSelection selection) const;
    QRect RangeRect(const SGridRange& range) const;
    SGridScene Scene();
    bool ShowTip(const QHelpEvent& event);
    QString TipAt(int row, int column);

    // Keyboard
    bool MoveByKey(const QKeyEvent& event);
    bool SelectByKey(const QKeyEvent& event);
    int NextColumn(int column, int step) const;
    int RowsPerPage() const;
    void MoveTo(SGridCell cell, bool extend);

    // Mouse
    int BorderAt(const QPoint& place) const;
    void StartDrag(EDrag drag, const SGridCell& at, bool extend);
    void DragTo(const QPoint& place);
    void EndDrag();
    void CancelResize();
    void UpdateCursor(const QPoint& place);
    void ResizeByUser(int column, int width);

    QWidget* m_corner; // between the scroll bars; the scroll area owns it
    const CCellSource* m_source = nullptr;
    CGridGeometry m_geometry;
    CGridFonts m_fonts;
    CGridPainter m_painter;
    CDirtyCells m_dirty;
    CCellFlash m_flash;
    CDirtyCells m_goingOut; // cells no longer lit
    std::vector<CCellFlash::SCellPlace> m_flashEnded;
    QBasicTimer m_flashTimer;
    const SGridTheme* m_theme = &kLightGridTheme;
    EThemeMode m_themeMode = EThemeMode::System;
    SGridOptions m_options;
    SGridSelection m_selection;
    SPaintCounters m_counters;
    bool m_rowNumbers = true;
    SCell m_cell; // for measuring

    EDrag m_drag = EDrag::None;
    QBasicTimer m_dragTimer;
    QPoint m_dragPlace;
    int m_resizeColumn = 0;
    int m_resizeFrom = 0; // x of the press
    int m_resizeWidth = 0;
    QPoint m_wheelRest; // eighths of a degree not yet scrolled
};

} // namespace vx
