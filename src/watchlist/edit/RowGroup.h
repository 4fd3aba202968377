#pragma once

namespace vx {

class CWatchlistDoc;

/// A heading and the rows below it up to the next one; the rows before the first heading are a group too.
struct SRowGroup {
    int first = 0; ///< 0 for no group.
    int last = 0;
    int lastFilled = 0; ///< The empty rows after it part the group from the next one.
};

/// Whether a row holds a heading; the text of a symbol that the feed rejected is none.
bool IsHeading(const CWatchlistDoc& doc, int row);

/// The group that a row belongs to, as far as rows are used; rows below the last used one belong to none.
SRowGroup GroupOf(const CWatchlistDoc& doc, int row);

/// Puts a group before the one above it, as one step to be undone. The empty rows that part them stay between them.
///
/// Returns how far the rows of the upper group went down; those of the lower one went up by upper.first - lower.first
int SwapGroups(CWatchlistDoc& doc, const SRowGroup& upper, const SRowGroup& lower);

} // namespace vx
