#pragma once

#include "watchlist/document/RowKeyed.h"

#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// Texts of rows that are never saved and go when the row is next changed: what a symbol row shows instead of its
/// symbol, because what the user typed could be none, and what was typed in a row that shows something else.
///
/// Shape   grid row number (1 and up) -> Windows-1252 text
/// Thread  GUI thread only
class CShownTexts {
public:
    /// The text of a row, or nothing (an empty text).
    std::string_view Get(int row) const {
        const auto found = m_texts.find(row);
        return found == m_texts.end() ? std::string_view{} : std::string_view(found->second);
    }
    void Set(int row, std::string_view text) { m_texts.insert_or_assign(row, std::string(text)); }
    void Remove(int row) {
        if (!m_texts.empty()) m_texts.erase(row);
    }
    void Clear() { m_texts.clear(); }

    /// As in CRowTextMap: the texts stay with their rows.
    void ShiftDown(int firstRow, int count) { ShiftRowsDown(m_texts, firstRow, count); }
    void ShiftUp(int firstRow, int count) { ShiftRowsUp(m_texts, firstRow, count); }
    void Reorder(const std::vector<int>& newRowOf) { ReorderRows(m_texts, newRowOf); }

private:
    RowTexts m_texts;
};

} // namespace vx
