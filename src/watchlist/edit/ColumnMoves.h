// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace vx {

class CWatchlistDoc;

// Columns that come, go and move, each with its cells' formats; the sort column stays the same column, and the locked
// ones stay locked. Each marks the document modified. Columns count from 1.

/// Puts a column before a position, with its default width and format.
///
/// Errors  false for a name that is shown already or is that of no column
bool InsertColumn(CWatchlistDoc& doc, int position, std::string_view name);
/// Takes a column out. With the auto-sort column auto sort goes off.
void RemoveColumn(CWatchlistDoc& doc, int position);
/// Moves a column so that it is at `to` afterwards.
void MoveColumn(CWatchlistDoc& doc, int from, int to);
/// Gives a column, or that of the row numbers (0), a width; below 1 hides it.
///
/// Units   width: pixels
void SetColumnWidth(CWatchlistDoc& doc, int position, int width);

} // namespace vx
