// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/exchange/ShownCells.h"

#include <string>

namespace vx {

/// Whether annotations get the mark that tells them from symbols when they are pasted again.
enum class EAnnotationMarks { No, Yes };

/// What a range of the grid shows, as text for the clipboard.
///
/// Shape   a line for each row, ended by CR LF; fields by TAB, hidden rows and columns left out. The line of an
///         annotation is its text alone, whatever the columns of the range. UTF-8, a tick trend as triangles and dots;
///         control characters count as blanks
/// Errors  rows below the last used one, and columns that there are not, are left out
/// Thread  GUI thread only
std::string CopyText(const CWatchlistDoc& doc, const SCellRange& range, EAnnotationMarks marks = EAnnotationMarks::No);

} // namespace vx
