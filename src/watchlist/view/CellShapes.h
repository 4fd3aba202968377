// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/CellKind.h"
#include "data/record/FieldBlock.h"
#include "grid/CellSource.h"
#include "watchlist/view/ColumnScales.h"

#include <cstdint>

namespace vx {

class CGridGeometry;
class CSymbolRec;
class CWatchlistDoc;
struct SCellFormat;
struct SFieldEntry;

// The colours of a format in a cell's text; one that nobody chose is the theme's, which can be read in light and dark.

void TakeColour(int32_t colour, int32_t unchosen, ETextRole role, SCell& cell);
void TakeDirectionColour(const SCellFormat& format, EDirection direction, SCell& cell);

/// What is drawn in the cells of a watchlist beside their texts: the lines around them, and a bar, a range or heat for
/// their numbers.
///
/// Owns    the scales of the columns; nothing of the document and the grid, which outlive it
/// Thread  GUI thread only; nothing allocates
class CCellShapes {
public:
    /// geometry: of the grid that shows the cells.
    CCellShapes(const CWatchlistDoc& doc, const CGridGeometry& geometry);

    /// The document's columns are others.
    void ColumnsChanged();
    CColumnScales& Scales() { return m_scales; }

    /// The sides at which a cell of a format draws a line, of ECellBorder. A line between two cells is drawn by the
    /// left or the upper one, unless only the other has it as thick.
    uint8_t Borders(int row, int column, const SCellFormat& format) const;
    static uint8_t HeadingBorders(const SCellFormat& format);

    /// What is drawn of a number; nothing where a column does not have what the format asks for, or a number is
    /// missing.
    SCellShape Shape(int column, const SFieldEntry& entry, const SCellFormat& format, const CSymbolRec& record);

private:
    EBorder BorderAt(int row, int column) const;
    EBorder Beside(int row, int column, int step) const;
    EBorder Below(int row, int column, int step) const;
    SCellShape NumberShape(int column, const SFieldEntry& entry, const SCellFormat& format, double number);

    const CWatchlistDoc& m_doc;
    const CGridGeometry& m_geometry;
    int m_headingColumn = 1;
    CColumnScales m_scales;
};

} // namespace vx
