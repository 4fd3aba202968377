#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vx {

// What the stores of texts by grid row share: their rows move when rows of the grid do.

using RowTexts = std::map<int, std::string>;

/// Gives every text the row that newRow(old row) names; those whose new row is below 1 go.
template <typename NewRow> void MoveRows(RowTexts& texts, NewRow&& newRow) {
    if (std::none_of(texts.begin(), texts.end(), [&](const auto& text) { return newRow(text.first) != text.first; }))
        return;
    RowTexts moved;
    while (!texts.empty()) {
        auto node = texts.extract(texts.begin());
        node.key() = newRow(node.key());
        if (node.key() >= 1) moved.insert(moved.end(), std::move(node));
    }
    texts = std::move(moved);
}

/// Rows were inserted before firstRow.
inline void ShiftRowsDown(RowTexts& texts, int firstRow, int count) {
    MoveRows(texts, [=](int row) { return row < firstRow ? row : row + count; });
}

/// The `count` rows before firstRow were deleted.
inline void ShiftRowsUp(RowTexts& texts, int firstRow, int count) {
    MoveRows(texts, [=](int row) {
        if (row >= firstRow) return row - count;
        return row >= firstRow - count ? 0 : row;
    });
}

/// Rows were reordered: newRowOf[r] is where row r went; rows it does not cover stay.
inline void ReorderRows(RowTexts& texts, const std::vector<int>& newRowOf) {
    MoveRows(texts, [&](int row) {
        return static_cast<size_t>(row) < newRowOf.size() ? newRowOf[static_cast<size_t>(row)] : row;
    });
}

} // namespace vx
