// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/CellFormat.h"
#include "data/catalogue/CellKind.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vx {

class CWatchlistDoc;
class CSettings;

/// Rows and columns of the grid, both from 1; all rows of the grid stand for the whole columns.
struct SFormatRange {
    int firstRow = 1, lastRow = 1;
    int firstColumn = 1, lastColumn = 1;
};

/// What the user changed of a format; the rest stays as it is in each cell.
struct SFormatChange {
    std::optional<int32_t> textColour, backColour, upColour, downColour, unchangedColour;
    std::optional<std::string> fontFace;
    std::optional<int32_t> fontSizePt;
    std::optional<bool> bold, italic;
    std::optional<ECellAlign> alignment;
    std::optional<int32_t> decimals;
    std::optional<bool> colourByDirection;
    std::optional<EColourRule> colourRule;
    std::optional<EBorder> border;
    std::optional<ECellKind> cellKind;

    void ApplyTo(SCellFormat& format) const;
    bool IsEmpty() const;
};

/// Whether a range of cells holds nothing but headings.
bool AreHeadings(const CWatchlistDoc& doc, const SFormatRange& range);
/// The column of the cell that says how a place of a row looks: in a heading HeadingColumn, else the place's own.
int FormatColumn(const CWatchlistDoc& doc, int row, int column);
/// Whether the text of a cell is bold by itself: a symbol, or the heading of a row.
bool StandsOut(const CWatchlistDoc& doc, int row, int column);

/// The rule by which the colours of a column's numbers are chosen unless a format says otherwise; OfField where there
/// is no column.
EColourRule ColourRuleOf(const CWatchlistDoc& doc, int column);

/// Whether any column of a range can show its numbers as something.
bool CanShow(const CWatchlistDoc& doc, const SFormatRange& range, ECellKind kind);

/// Changes the look of cells. Whole columns get it as the columns' format, which new rows take over too, and so do
/// their cells that have a format of their own. A heading is one cell: it is meant where it is selected alone, or by a
/// range over the column that it looks like. One step to undo.
///
/// Errors  false when a watchlist cannot hold so many formats, or the font's name cannot be kept: nothing is changed
bool FormatCells(CWatchlistDoc& doc, const SFormatRange& range, const SFormatChange& change);

/// Gives cells the look of their column again, and whole columns that of the grid with the decimals of the field. One
/// step to undo.
void ClearFormats(CWatchlistDoc& doc, const SFormatRange& range);

/// The look of the whole watchlist.
struct SGridLook {
    SFormatChange format;
    bool useGridPrecision = false;
    bool useDefaultAlignment = true;
    int trailingRows = 1;
};

/// Takes the look over. Default alignment that is switched off leaves the numbers on the right until somebody moves
/// them. One step to undo.
///
/// Errors  as FormatCells; trailing rows are brought into their limits
bool FormatGrid(CWatchlistDoc& doc, const SGridLook& look);

} // namespace vx
