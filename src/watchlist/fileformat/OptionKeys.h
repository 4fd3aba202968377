// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/WatchlistContent.h"

#include <string>
#include <string_view>

namespace vx {

class CWatchlistDoc;

// The lines of a watchlist's options: one row of the table in OptionKeys.cpp for each, with its key, its member and how
// it is written. Adding an option takes a member of SWatchlistOptions with its default and such a row.

/// Appends the lines in their order. placement: of the window, which a document does not know.
void AppendOptionLines(std::string& out, const CWatchlistDoc& doc, const SPlacement& placement);

/// Applies the value of one key.
///
/// Errors  false for a key that is no option's; numbers are brought into their range
bool ReadOptionKey(std::string_view key, std::string_view value, SWatchlistContent& content);

} // namespace vx
