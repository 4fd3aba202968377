// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/WatchlistOptions.h"

#include <string>

namespace vx {

class CWatchlistDoc;

/// What the grid shows, as a table of text: rows from 1 to the last used one, columns with a width, in their order.
///
/// With link formulas each field of a symbol row becomes "=VxLink|'symbol'!'column'", but empty ones and those of the
/// columns Alerts, Notes, News and Latest Headline. With commas every TAB becomes one; fields are neither quoted nor
/// escaped, so that a text with a comma spreads over two: this is deliberate.
///
/// Shape   lines ended by LF; headers: whether the line with the column names comes first. An annotation is the first
///         field of its line, the others are empty. Line ends and TABs in texts count as blanks
/// Thread  GUI thread only
std::string ExportText(const CWatchlistDoc& doc, const SExportOptions& options, bool headers);

enum class EExportOutcome {
    Written,
    NotOpened, ///< Nothing was written.
    Failed,    ///< The file did not take the whole text; it holds what it held before.
    Torn       ///< The same, and what it held before is lost.
};

struct SExportResult {
    EExportOutcome outcome = EExportOutcome::Written;
    int error = 0; ///< An errno value.
};

/// Writes the table to a file, after what it holds or in its place. A file is replaced in one step when the table
/// is whole on disk; one that is no regular file, or in whose folder no other may be made, is written over. The column
/// names are written only where a table begins a file: not when it is appended to one that holds something.
///
/// Shape   path: as the system takes it
SExportResult ExportToFile(const CWatchlistDoc& doc, const SExportOptions& options, const std::string& path);

} // namespace vx
