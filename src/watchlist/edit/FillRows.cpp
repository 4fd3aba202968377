// SPDX-License-Identifier: MIT
#include "watchlist/edit/FillRows.h"

#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/CellEntry.h"

#include <algorithm>

namespace vx {

namespace {

constexpr size_t kSlice = 512; ///< Rows.

} // namespace

EFillOutcome FillRows(CWatchlistDoc& doc, int firstRow, const std::vector<std::string>& texts,
                      const CWorkProgress& progress) {
    const uint64_t generation = doc.Undo().Generation();
    const size_t count = std::min(texts.size(), static_cast<size_t>(std::max(CRowTable::kMaxRow - firstRow + 1, 0)));
    return doc.Edit("fill rows", [&](CWatchlistEdit& edit) {
        const CEditBatch batch(edit);
        for (size_t i = 0; i < count; ++i) {
            if (progress && i % kSlice == 0 && i > 0 && !progress(i, count)) {
                edit.Cancel();
                return EFillOutcome::Cancelled;
            }
            if (doc.Undo().Generation() != generation) return EFillOutcome::Closed;
            OverwriteRow(doc, edit, firstRow + static_cast<int>(i), texts[i]);
        }
        return EFillOutcome::Filled;
    });
}

} // namespace vx
