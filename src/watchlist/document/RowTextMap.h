#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// The annotations of a watchlist: one line of free text per grid row.
///
/// Shape   grid row number (1 and up) -> Windows-1252 text that begins with the annotation mark "#", which is never
///         shown; empty texts are not kept
/// Thread  GUI thread only
class CRowTextMap {
public:
    /// The text of a row with its mark, or nothing (an empty text) when the row is no annotation.
    std::string_view Get(int row) const;
    bool Has(int row) const { return m_texts.count(row) != 0; }
    /// Sets the text of a row; an empty text removes it, a row below 1 is ignored.
    void Set(int row, std::string_view text);
    void Remove(int row) { m_texts.erase(row); }
    void Clear() { m_texts.clear(); }
    /// The greatest row number that has a text, 0 when there is none.
    int LastRow() const { return m_texts.empty() ? 0 : m_texts.rbegin()->first; }
    size_t Count() const { return m_texts.size(); }

    /// Moves the texts of all rows from firstRow on by `count` rows: down for rows that were inserted before it, up for
    /// rows before it that were deleted, whose texts go.
    void ShiftDown(int firstRow, int count);
    void ShiftUp(int firstRow, int count);
    /// Rearranges texts after rows were reordered: newRowOf[r] is where row r went; rows it does not cover stay.
    void Reorder(const std::vector<int>& newRowOf);

    /// "%i:%s;" for every row, in rising row order.
    std::string Serialise() const;

    auto begin() const { return m_texts.begin(); }
    auto end() const { return m_texts.end(); }

private:
    std::map<int, std::string> m_texts;
};

} // namespace vx
