// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace vx {

class CWatchlistDoc;

struct SFindOptions {
    bool matchCase = false;
    bool wholeCell = false; ///< The whole text of a cell, annotation or note must be the one that is looked for.
};

struct SFoundCell {
    int row = 0; ///< 0: the text stands nowhere.
    int column = 0;
    bool wrapped = false; ///< It was found beyond the other end of the list.
    bool inNote = false;
};

/// Looks for a text in what the grid shows, row by row, and in the notes, whose lines need not all be shown. A note is
/// found in the Notes column, or in the first shown one when that is hidden; an annotation in the first one.
///
/// The search begins after (before) a cell and continues at the other end until it is at that cell again, which is the
/// last one looked at. A cell outside the list stands for its end.
///
/// Units   rows and columns from 1
/// Errors  an empty text is not found
/// Thread  GUI thread only
SFoundCell FindNext(const CWatchlistDoc& doc, std::string_view text, const SFindOptions& options, int row, int column);
SFoundCell FindPrevious(const CWatchlistDoc& doc, std::string_view text, const SFindOptions& options, int row,
                        int column);

/// The first row of a symbol: of the one that was typed, else of one that differs in upper and lower case only, else of
/// one that begins with it. Rejected symbols are found in the rows that say so. Blanks around the text do not count.
///
/// Returns 0 when there is none
int GoToSymbol(const CWatchlistDoc& doc, std::string_view text);

} // namespace vx
