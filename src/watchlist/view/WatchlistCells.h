// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/FieldEntry.h"
#include "grid/CellSource.h"
#include "grid/GridGeometry.h"
#include "watchlist/document/ColumnMap.h"
#include "watchlist/exchange/RowCellText.h"
#include "watchlist/view/CellShapes.h"
#include "watchlist/view/FormatFonts.h"
#include "watchlist/view/PaintedCells.h"

#include <QRegion>

#include <string>
#include <string_view>
#include <vector>

namespace vx {

class CWatchlistDoc;
struct SFieldEntry;

// What the tips of the grid say, where a cell shows less than there is to know.
//
// Shape   Windows-1252, lines ended by "\n"; empty for nothing to say

/// entry: null for a column that the catalogue does not hold.
std::string ColumnTip(std::string_view name, const SFieldEntry* entry);
/// The note of a row, whole.
std::string NoteTip(const CWatchlistDoc& doc, int row);
/// The annotation of a row and its note, whole; empty without a note. Where it says that what was typed is no symbol,
/// how that can be corrected.
std::string HeadingTip(const CWatchlistDoc& doc, int row);
/// What the marks on the cell of a row's symbol stand for: the beginning of its note, its armed alerts and those that
/// fired or are off. Empty for a cell without marks.
std::string MarksTip(const CWatchlistDoc& doc, int row);
/// "2 armed, 1 fired or off"
std::string AlertsTip(const CWatchlistDoc& doc, int row);
std::string NewsTip(const CWatchlistDoc& doc, int row);
/// The latest headline of the row's symbol, whole.
std::string HeadlineTip(const CWatchlistDoc& doc, int row);

class CSymbolRec;
struct SCellFormat;

/// What the cells of a watchlist hold: the fields of each row's symbol, or the row's annotation, each in the
/// format of its cell.
///
/// Nothing is stored but a fingerprint of each cell last painted, by which DiffersFromPainted tells whether an update
/// of a row's record changed what one of its cells shows.
///
/// Owns    nothing of the document and the grid, which outlive it
/// Thread  GUI thread only
class CWatchlistCells final : public CCellSource {
public:
    /// geometry: of the grid that shows the cells.
    CWatchlistCells(const CWatchlistDoc& doc, const CGridGeometry& geometry);

    /// Reads the document's columns again; call it when they, or the options, changed.
    void ColumnsChanged();
    /// Values stay readable, but in the colour of what is no longer fed.
    void SetStale(bool stale) { m_stale = stale; }

    bool DiffersFromPainted(int row, int column) const;
    /// What is painted from now on; null when that is over. A cell that is asked for otherwise (by a tip, a printer, a
    /// screen reader), or of which only a part is painted, counts as it was painted last.
    void SetPainted(const QRegion* region) { m_region = region; }
    const SSpecialColumns& Special() const { return m_special; }
    /// What the bars and the heat of columns are drawn in proportion to.
    CColumnScales& Scales() { return m_shapes.Scales(); }
    /// The fonts that cells asked for; the grid enters those that it does not know yet.
    CFormatFonts& Fonts() { return m_fonts; }

    void FillCell(int row, int column, SCell& cell) const override;
    void FillHeader(int column, SCell& cell) const override;
    bool FillSpan(int row, SCell& cell) const override;
    bool FillRowHint(int row, SCell& cell) const override;
    /// Whether a row has a hint, or had one when it was painted: then more than its changed cells is to be painted.
    bool MayChangeHint(int row) const;
    std::string HeaderTip(int column) const override;
    std::string CellTip(int row, int column) const override;

private:
    enum class EKind : uint8_t { Plain, Symbol, Directed, Notes, News, Ticks };

    /// What is the same for all cells of one column.
    struct SColumn {
        CColumnReader reader;
        const SFieldEntry* entry; ///< Null: the column stays empty.
        int number;               ///< Catalogue index.
        EKind kind;
        SColumnLook look;
    };

    EKind KindOf(const sColumnInfo& info, const CColumnReader& reader) const;
    const SColumn* Column(int column) const;
    void Fill(int row, int column, SCell& cell) const;
    uint8_t Marks(int row, std::string_view symbol) const;
    bool IsPaintedWhole(int row, int column) const;
    std::string OwnTip(int row, int column) const;
    /// What a short form stands for; empty where the number is drawn whole.
    std::string WholeNumber(const SColumn& column, int row) const;
    EAlign Align(const SColumn& column, const SCellFormat& format) const;
    void Dress(const SCellFormat& format, bool strong, SCell& cell) const;
    void Colour(const SColumn& column, const SCellFormat& format, std::string_view symbol, const CSymbolRec* record,
                SCell& cell) const;

    const CWatchlistDoc& m_doc;
    const CGridGeometry& m_geometry;
    const SSpecialColumns m_special;
    bool m_stale = false;
    const QRegion* m_region = nullptr;
    std::vector<SColumn> m_columns; ///< By grid column.
    int m_headingColumn = 1;
    mutable CFormatFonts m_fonts;
    mutable CCellShapes m_shapes;
    mutable CPaintedCells m_painted;
};

} // namespace vx
