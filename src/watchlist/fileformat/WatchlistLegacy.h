// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/WatchlistContent.h"

#include <string>
#include <string_view>

namespace vx {

// The older layout of watchlist files, which begins with "[". It is read and never written.

/// Reads a whole text of the older layout. knownBytes: what was read in the current one before; it is read once more,
/// and nothing about it is reported.
///
/// Shape   lines "key=value" that end at LF, a CR before it ignored; what follows the last LF is not read
/// Errors  none, as in CWatchlistReader
/// Source  docs/file-format.md, "The older layout"
void ReadLegacyText(std::string_view text, size_t knownBytes, SWatchlistContent& content, CReadReport& report);

/// A comma-separated list of the older layout's column names as ";"-separated names of today.
std::string ModernColumnNames(std::string_view legacyNames);

/// An alert of the older layout as one record of the current one; empty when it is none.
///
/// Shape   "IBM^Enabled^when the Last Price is greater than or equal to 250" -> "IBM:Last,>=,250,TRUE;"
std::string ModernAlert(std::string_view legacyAlert);

} // namespace vx
