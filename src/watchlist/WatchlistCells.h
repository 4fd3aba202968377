#pragma once

#include "data/FieldEntry.h"
#include "grid/CellSource.h"
#include "watchlist/PaintedCells.h"
#include "watchlist/RowCellText.h"

#include <vector>

namespace vx {

class CSymbolRec;
class CWatchlistDoc;

/// What stands in the cells of a watchlist: the fields of each row's symbol, or the row's annotation.
///
/// Nothing is stored but a fingerprint of each cell last asked for, by which DiffersFromPainted tells whether an update
/// of a row's record changed what one of its cells shows.
///
/// Owns    nothing of the document, which outlives it
/// Thread  GUI thread only
class CWatchlistCells final : public CCellSource {
public:
    /// symbolFont: font id of the cells in the symbol column and of annotations.
    CWatchlistCells(const CWatchlistDoc& doc, uint8_t symbolFont);

    /// Reads the document's columns again; call it when they, or the options, changed.
    void ColumnsChanged();
    /// Values stay readable, but in the colour of what is no longer fed.
    void SetStale(bool stale) { m_stale = stale; }

    bool DiffersFromPainted(int row, int column) const;

    void FillCell(int row, int column, SCell& cell) const override;
    void FillHeader(int column, SCell& cell) const override;
    bool FillSpan(int row, SCell& cell) const override;
    std::string HeaderTip(int column) const override;

private:
    /// What is the same for all cells of one column.
    struct SColumn {
        CColumnReader reader;
        const SFieldEntry* entry; ///< Null: the column stays empty.
        EAlign align;
        bool symbol;   ///< Bold, as the row's name.
        bool directed; ///< Shown in the colour of its value's direction.
        bool news;     ///< The count of stories, which stands out once it has grown.
        bool tickTrend;
    };

    const SColumn* Column(int column) const;
    void Fill(int row, int column, SCell& cell) const;
    ETextRole Role(const SColumn& column, std::string_view symbol, const CSymbolRec* record) const;

    const CWatchlistDoc& m_doc;
    uint8_t m_symbolFont;
    bool m_stale = false;
    std::vector<SColumn> m_columns; ///< By grid column.
    mutable CPaintedCells m_painted;
};

} // namespace vx
