#include "watchlist/edit/RowGroup.h"

#include "watchlist/document/WatchlistDoc.h"

#include <algorithm>

namespace vx {

bool IsHeading(const CWatchlistDoc& doc, int row) {
    return doc.Annotations().Has(row) && doc.RejectedSymbol(row).empty();
}

SRowGroup GroupOf(const CWatchlistDoc& doc, int row) {
    const int last = std::max(doc.LastUsedRow(), doc.Notes().LastRow());
    if (row < 1 || row > last) return {};
    SRowGroup out{row, row, row};
    while (out.first > 1 && !IsHeading(doc, out.first)) --out.first;
    while (out.last < last && !IsHeading(doc, out.last + 1)) ++out.last;
    out.lastFilled = out.last;
    while (out.lastFilled > out.first && doc.RowKind(out.lastFilled) == ERowKind::Empty &&
           !doc.Notes().Has(out.lastFilled))
        --out.lastFilled;
    return out;
}

int SwapGroups(CWatchlistDoc& doc, const SRowGroup& upper, const SRowGroup& lower) {
    const int moved = lower.lastFilled - lower.first + 1;
    const int between = upper.last - upper.lastFilled;
    doc.Edit("move group", [&](CWatchlistEdit&) {
        doc.MoveRows(lower.first, moved, upper.first);
        if (between > 0) doc.MoveRows(upper.lastFilled + 1 + moved, between, upper.first + moved);
    });
    return moved + between;
}

} // namespace vx
