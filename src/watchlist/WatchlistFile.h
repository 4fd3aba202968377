#pragma once

#include <string_view>

namespace vx {

class CWatchlistDoc;

/// Applies the text of a watchlist file to a document that was just reset: rows, columns and options.
///
/// Shape   lines "key=value", each ended by CR LF; text after the last CR LF is not applied
/// Errors  none: unknown keys and lines without "=" are left out, malformed numbers read as 0
/// Thread  GUI thread only
void ReadWatchlistText(CWatchlistDoc& doc, std::string_view text);

/// Applies one line without its CR LF.
void ReadWatchlistLine(CWatchlistDoc& doc, std::string_view line);

} // namespace vx
