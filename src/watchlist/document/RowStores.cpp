#include "watchlist/document/RowStores.h"

#include "watchlist/document/CellFormatStore.h"
#include "watchlist/document/InvalidSymbols.h"
#include "watchlist/document/NoteStore.h"
#include "watchlist/document/RowTable.h"
#include "watchlist/document/RowTextMap.h"
#include "watchlist/document/ShownTexts.h"
#include "watchlist/document/SymbolMap.h"

#include <algorithm>
#include <numeric>

namespace vx {

namespace {

std::vector<int> Unmoved(int lastRow) {
    std::vector<int> newRowOf(static_cast<size_t>(lastRow) + 1);
    std::iota(newRowOf.begin(), newRowOf.end(), 0);
    return newRowOf;
}

} // namespace

int SRowStores::LastRow() const { return std::max({rows.LastSymbolRow(), annotations.LastRow(), notes.LastRow()}); }

void SRowStores::InsertRows(int firstRow, int count) {
    const auto shifted = [=](int row) { return row < firstRow ? row : row + count; };
    rows.InsertRows(firstRow, count);
    symbols.Renumber(shifted);
    invalid.Renumber(shifted);
    annotations.ShiftDown(firstRow, count);
    notes.ShiftDown(firstRow, count);
    shown.ShiftDown(firstRow, count);
    typed.ShiftDown(firstRow, count);
    formats.InsertRows(firstRow, count);
}

std::vector<std::string> SRowStores::RemoveRows(int firstRow, int count) {
    const auto shifted = [=](int row) { return row < firstRow ? row : row - firstRow < count ? 0 : row - count; };
    rows.RemoveRows(firstRow, count);
    invalid.Renumber(shifted);
    const int firstKept = firstRow + count;
    annotations.ShiftUp(firstKept, count);
    notes.ShiftUp(firstKept, count);
    shown.ShiftUp(firstKept, count);
    typed.ShiftUp(firstKept, count);
    formats.RemoveRows(firstRow, count);
    return symbols.Renumber(shifted);
}

void SRowStores::Reorder(const std::vector<int>& newRowOf) {
    const auto moved = [&](int row) {
        return static_cast<size_t>(row) < newRowOf.size() ? newRowOf[static_cast<size_t>(row)] : row;
    };
    rows.Reorder(newRowOf);
    symbols.Renumber(moved);
    invalid.Renumber(moved);
    annotations.Reorder(newRowOf);
    notes.Reorder(newRowOf);
    shown.Reorder(newRowOf);
    typed.Reorder(newRowOf);
    formats.RenumberRows(moved);
}

std::vector<int> MoveOfBlock(int firstRow, int count, int before) {
    const int end = firstRow + count;
    if (count < 1 || firstRow < 1 || before < 1 || (before >= firstRow && before <= end)) return {};
    std::vector<int> newRowOf = Unmoved(std::max(end, before) - 1);
    const auto shift = [&](int from, int to, int by) {
        for (int row = from; row < to; ++row) newRowOf[static_cast<size_t>(row)] += by;
    };
    if (before < firstRow) {
        shift(before, firstRow, count);
        shift(firstRow, end, before - firstRow);
    } else {
        shift(firstRow, end, before - end);
        shift(end, before, -count);
    }
    return newRowOf;
}

std::vector<int> OrderOfRows(const std::vector<int>& rows, const std::vector<int>& order) {
    if (rows.empty()) return {};
    std::vector<int> newRowOf = Unmoved(rows.back());
    for (size_t i = 0; i < rows.size(); ++i) newRowOf[static_cast<size_t>(order[i])] = rows[i];
    return newRowOf;
}

} // namespace vx
