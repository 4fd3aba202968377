// SPDX-License-Identifier: MIT
#pragma once

#include "grid/GridCtrl.h"
#include "grid/GridSelection.h"
#include "watchlist/view/WatchlistCells.h"

#include <optional>
#include <utility>

namespace vx {

class CGridCtrl;

/// What a selection says of itself.
enum class ERegion {
    Cell,    ///< One cell.
    Rows,    ///< Whole rows, and not the whole grid.
    Columns, ///< Whole columns, and not the whole grid.
    Block    ///< Neither: rows or columns may be meant.
};

/// What is selected in a grid, and what that is.
struct SGridRegion {
    SGridRange range;
    SGridCell focus;
    ERegion kind = ERegion::Cell;

    int Rows() const { return range.lastRow - range.firstRow + 1; }
    int Columns() const { return range.lastColumn - range.firstColumn + 1; }
};

SGridRegion SelectedRegion(const CGridCtrl& grid);

class CWatchlistDoc;

/// The grid that shows a watchlist document.
///
/// Every cell can be edited; what may be where is the document's to say when the edit ends. A double click on a cell
/// that stands for more than its text (alerts, note, news) is reported by CellDoubleClicked instead.
///
/// Owns    nothing of the document, which outlives it
/// Thread  GUI thread only
class CWatchlistGrid : public CNorvGridCtrl {
    Q_OBJECT
public:
    CWatchlistGrid(CWatchlistDoc& doc, QWidget* parent);
    ~CWatchlistGrid() override;

    /// Takes rows, columns and options from the document again and repaints everything.
    void Rebuild();
    /// Takes zoom and density from the document again.
    void TakeScale();
    /// The document's rows have another order; see CGridCtrl::MoveRows.
    void TakeRowOrder(const std::vector<int>& newRowOf);
    /// Marks those cells of a row whose text or look is another than the one painted. Rows out of sight cost nothing.
    void MarkChangedCells(int row);
    /// The same for a row that the user changed: lines that it shares with the rows beside it belong to them, too.
    void MarkEditedRow(int row);
    /// Reads a slice of what the bars and the heat of columns are drawn in proportion to; see CColumnScales::ReadOn.
    void ReadScales(bool wanted);
    /// Enters the fonts of all cells into the font table, also of cells that were never painted: before printing.
    void EnterAllFonts();
    /// Whether the column of the symbols stays at the left edge when it would scroll out.
    void KeepSymbolInSight(bool keep);
    /// Shows the values as no longer fed, or as live again.
    void SetStale(bool stale);

    const SSpecialColumns& Special() const { return m_cells.Special(); }
    /// Catalogue index of what a grid column shows; kNoField outside the columns.
    int FieldAt(int column) const;

    bool MayEdit(int row, int column) const override;
    std::string EditText(int row, int column) const override;
    bool AcceptsDrop(const QMimeData& offered) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void NoteWidth(int column, int width);
    void KeepWidth();
    void PlaceSticky();
    void EnterFonts();
    void DropUnusedFonts();
    void UpdateIfRescaled();
    void MarkDifferentCells(int row);
    bool StandsForMore(int row, int column) const;
    void PaintHint(QPaintEvent& event);

    CWatchlistDoc& m_doc;
    CWatchlistCells m_cells;
    bool m_stale = false;
    bool m_symbolInSight = false;
    std::optional<std::pair<int, int>> m_draggedWidth; ///< Column and width while its border is in the user's hand.
};

} // namespace vx
