// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

class CWatchlistDoc;

/// Told after each slice of a long piece of work, which takes a few milliseconds; may let the window live meanwhile,
/// as long as nobody but the feed changes the document. An empty one is not called.
///
/// Returns false to cancel: everything is as before then
using CWorkProgress = std::function<bool(size_t done, size_t total)>;

enum class EFillOutcome {
    Filled,
    Cancelled, ///< Everything is as before.
    Closed     ///< The document was reset meanwhile; nothing of the work is left in it.
};

/// Enters texts into the symbol column of rows from one on, whatever stood there: each becomes what it would become in
/// an empty row. A row that shows the symbol already, and that of an empty text, is left alone. To be called within an
/// undo step; the document is modified when a row changed.
///
/// Errors  texts that would leave the grid are left out
/// Thread  GUI thread only
EFillOutcome FillRows(CWatchlistDoc& doc, int firstRow, const std::vector<std::string>& texts,
                      const CWorkProgress& progress);

} // namespace vx
