// SPDX-License-Identifier: MIT
#include "app/commands/AddSymbols.h"

#include "base/MessageBox.h"
#include "base/Text.h"
#include "watchlist/document/WatchlistDoc.h"

#include <fmt/format.h>

#include <algorithm>

namespace vx {

namespace {

// A note belongs to what its row was kept for.
bool IsFree(const CWatchlistDoc& doc, int row) {
    return row <= CRowTable::kMaxRow && doc.RowKind(row) == ERowKind::Empty && !doc.Notes().Has(row);
}

int FreeRowsFrom(const CWatchlistDoc& doc, int row, int wanted) {
    int count = 0;
    while (count < wanted && IsFree(doc, row + count)) ++count;
    return count;
}

} // namespace

SAddedRows AddSymbols(CWatchlistDoc& doc, int focusRow, const std::vector<std::string>& symbols) {
    std::vector<std::string> entered;
    for (const std::string& symbol : symbols)
        if (!TrimBlanks(symbol).empty()) entered.push_back(symbol);
    if (entered.empty()) return {};

    const auto count = static_cast<int>(entered.size());
    const int focus = std::max(focusRow, 1);
    const int first = IsFree(doc, focus) ? focus : focus + 1;
    const int missing = count - FreeRowsFrom(doc, first, count);
    const int last = std::max(doc.LastUsedRow(), doc.Notes().LastRow());
    if (std::max(first + count - 1, last + missing) > CRowTable::kMaxRow) {
        ShowMessageBox(
            {fmt::format("The watchlist has no room for {} more {}.", count, count == 1 ? "symbol" : "symbols"), "",
             EBoxButtons::Ok, EBoxIcon::Exclamation});
        return {};
    }
    doc.Edit(count == 1 ? "add symbol" : fmt::format("add {} symbols", count), [&](CWatchlistEdit& edit) {
        const CEditBatch batch(edit);
        if (missing > 0) doc.InsertRows(first + count - missing, missing);
        for (int i = 0; i < count; ++i) edit.EnterSymbol(first + i, entered[static_cast<size_t>(i)]);
    });
    return {first, count};
}

} // namespace vx
