// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/RowTable.h"

#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// The annotations of a watchlist: one line of free text per grid row, which begins with the annotation mark "#".
///
/// Owns    nothing: a view of the rows; rows that shift or change places do so with all that is in them
/// Errors  a row below 1 is ignored
/// Thread  GUI thread only
class CRowTextMap : public CRowTexts<&SRowExtras::annotation> {
public:
    using CRowTexts::CRowTexts;

    /// Sets the text of a row; an empty text removes it.
    void Set(int row, std::string_view text) { m_table.SetText(row, &SRowExtras::annotation, text); }
    void Clear() {
        while (LastRow() > 0) Remove(LastRow());
    }

    /// Moves all rows from firstRow on by `count` rows: down for rows that were inserted before it, up for rows before
    /// it that are deleted with their texts.
    void ShiftDown(int firstRow, int count) { m_table.InsertRows(firstRow, count); }
    void ShiftUp(int firstRow, int count);
    /// Rearranges rows: newRowOf[r] is where row r goes; rows it does not cover stay.
    void Reorder(const std::vector<int>& newRowOf) { m_table.Reorder(newRowOf); }

    /// "%i:%s;" for every row, in rising row order.
    std::string Serialise() const;
};

/// The notes of a watchlist: a short text for a row, of one line or several. A note never holds ";", ":" or ",", which
/// its text in the file needs.
///
/// Owns    nothing: a view of the rows
/// Errors  a row below 1 is ignored
/// Thread  GUI thread only
class CNoteStore : public CRowTexts<&SRowExtras::note> {
public:
    using CRowTexts::CRowTexts;

    /// Sets a row's note without the characters that it may not hold; when nothing remains, the row's note goes.
    void Set(int row, std::string_view text) { m_table.SetText(row, &SRowExtras::note, Cleaned(text)); }

    /// A note's text without the characters that it may not hold.
    static std::string Cleaned(std::string_view text);
};

} // namespace vx
