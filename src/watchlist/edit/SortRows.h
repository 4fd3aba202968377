#pragma once

namespace vx {

class CWatchlistDoc;
class CWatchlistEdit;

/// Sorts the symbol rows of a range by what their cells in one column show; annotation and empty rows stay where they
/// are. Rows between two headings are sorted among themselves, unless the document's option says to sort across
/// headings; the message of a rejected symbol is no heading. Each cell's text is made once.
///
/// Shape   see RowOrder.h for the order; columns of numbers and the news count sort by number, all others by text
/// Errors  rows and columns that the document does not have are left out
/// Thread  GUI thread only
void SortRows(const CWatchlistDoc& doc, CWatchlistEdit& edit, int firstRow, int lastRow, int column, bool ascending);

} // namespace vx
