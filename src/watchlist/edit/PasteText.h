// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/edit/CopyText.h"
#include "watchlist/edit/FillRows.h"
#include "watchlist/exchange/ShownCells.h"

#include <string>
#include <string_view>

namespace vx {

/// Larger texts are not taken from the clipboard.
inline constexpr size_t kMostPastedBytes = size_t{4} << 20;

enum class EPasteOutcome {
    Pasted,
    Nothing, ///< The text holds nothing that could be pasted.
    TooLarge,
    Cancelled ///< Everything is as before.
};

struct SPasteResult {
    EPasteOutcome outcome = EPasteOutcome::Nothing;
    int firstRow = 0, lastRow = 0; ///< Where it was pasted, to be selected.
    int leftOut = 0;               ///< Rows that would have left the grid.
    std::string message;           ///< For a message box, empty when there is nothing to ask attention for.
    std::string summary;           ///< For the status bar, when a part was there already or was not understood.
};

/// Fills rows from one on with the lines of a text, over what stood there. The text of a line goes into the symbol
/// column, wherever the focus is, and becomes what it would become when typed into an empty row: a symbol or an
/// annotation. Empty lines leave their row alone.
///
/// Of a line with several fields (TAB) one is taken: that which stands under the symbol column when the line is as
/// wide as the grid, or when it is laid out from the focus on; else the first one. A report (see IsReport) is pasted
/// as its words.
///
/// Shape   row, column: the focus; text: Windows-1252, lines ended in any way; marks: Yes for CopyText's own text with
///         marks, of which nothing has to be guessed
/// Thread  GUI thread only
SPasteResult PasteText(CWatchlistDoc& doc, int row, int column, std::string_view text,
                       EAnnotationMarks marks = EAnnotationMarks::No, const CWorkProgress& progress = {});

/// Clears the shown cells of a range, each as when an empty text is typed into it.
///
/// Returns how many rows changed
int ClearRange(CWatchlistDoc& doc, const SCellRange& range);

} // namespace vx
