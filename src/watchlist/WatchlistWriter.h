#pragma once

#include "watchlist/WatchlistFrame.h"

#include <string>

namespace vx {

class CWatchlistDoc;

/// The whole text of a watchlist's file.
///
/// Shape   every line ends in CR LF; always all lines, in the same order. What the layout cannot carry (see
///         WatchlistSupplement.h) is left out, or cut where it could not be read any more. Windows-1252
/// Units   placement: where the window stands when it is neither maximised nor minimised
/// Errors  none
/// Thread  GUI thread only
/// Source  docs/file-format.md
std::string WriteWatchlistText(const CWatchlistDoc& doc, const SPlacement& placement);

} // namespace vx
