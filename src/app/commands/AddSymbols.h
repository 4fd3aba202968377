// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vx {

class CWatchlistDoc;

/// The rows that symbols were put into; count 0 when none was.
struct SAddedRows {
    int first = 0;
    int count = 0;
};

/// Puts chosen symbols into a watchlist as one edit: from the focus row on when it is free, else from the row below.
/// They stand together and in their order: free rows there are filled, and where these do not suffice rows are
/// inserted, so that no row's content is overwritten. A row with a note is not free.
///
/// Errors  nothing is done, and a message box says so, when the watchlist has no room for all
/// Thread  GUI thread only, not inside a socket notification
SAddedRows AddSymbols(CWatchlistDoc& doc, int focusRow, const std::vector<std::string>& symbols);

} // namespace vx
