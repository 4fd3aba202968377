#include "app/AddSymbols.h"

#include "base/MessageBox.h"
#include "base/Text.h"
#include "watchlist/UndoStep.h"
#include "watchlist/WatchlistDoc.h"

#include <fmt/format.h>

#include <algorithm>

namespace vx {

namespace {

int EmptyRowsFrom(const CWatchlistDoc& doc, int row, int wanted) {
    int empty = 0;
    while (empty < wanted && row + empty <= CRowTable::kMaxRow && doc.RowKind(row + empty) == ERowKind::Empty) ++empty;
    return empty;
}

} // namespace

SAddedRows AddSymbols(CWatchlistDoc& doc, int focusRow, const std::vector<std::string>& symbols) {
    std::vector<std::string> entered;
    for (const std::string& symbol : symbols)
        if (!TrimBlanks(symbol).empty()) entered.push_back(symbol);
    if (entered.empty()) return {};

    const auto count = static_cast<int>(entered.size());
    const int focus = std::max(focusRow, 1);
    const int first = doc.RowKind(focus) == ERowKind::Empty ? focus : focus + 1;
    const int missing = count - EmptyRowsFrom(doc, first, count);
    if (std::max(first + count - 1, doc.LastUsedRow() + missing) > CRowTable::kMaxRow) {
        ShowMessageBox(
            {fmt::format("The watchlist has no room for {} more {}.", count, count == 1 ? "symbol" : "symbols"), "",
             EBoxButtons::Ok, EBoxIcon::Exclamation});
        return {};
    }
    const CUndoStep step(doc, count == 1 ? "add symbol" : fmt::format("add {} symbols", count));
    if (missing > 0 && !doc.InsertRows(first + count - missing, missing)) return {};
    for (int i = 0; i < count; ++i) doc.EnterSymbol(first + i, entered[static_cast<size_t>(i)]);
    doc.SetModified(true);
    doc.RebuildGrid();
    return {first, count};
}

} // namespace vx
