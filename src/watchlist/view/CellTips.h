#pragma once

#include <string>
#include <string_view>

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

} // namespace vx
