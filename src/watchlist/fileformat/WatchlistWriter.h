// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/WatchlistFrame.h"

#include <string>

namespace vx {

class CWatchlistDoc;

/// The whole text of a watchlist's file.
///
/// Shape   every line ends in CR LF; always the same lines in the same order, then the further keys that are needed,
///         which carry what the others cannot. A value ends before a CR LF of its own. Windows-1252
/// Units   placement: where the window stands when it is neither maximised nor minimised
/// Errors  none
/// Thread  GUI thread only
/// Source  docs/file-format.md
std::string WriteWatchlistText(const CWatchlistDoc& doc, const SPlacement& placement);

} // namespace vx
