#pragma once

#include "grid/NorvGridCtrl.h"
#include "watchlist/WatchlistCells.h"

namespace vx {

class CWatchlistDoc;

/// The grid that shows a watchlist document.
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
    /// Marks those cells of a row whose text or look is another than the one painted. Rows out of sight cost nothing.
    void MarkChangedCells(int row);
    /// Shows the values as no longer fed, or as live again.
    void SetStale(bool stale);

private:
    void KeepWidth(int column, int width);

    CWatchlistDoc& m_doc;
    CWatchlistCells m_cells;
    bool m_stale = false;
};

} // namespace vx
