#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/fileformat/FurtherKeyTable.h"

namespace vx {

namespace {

constexpr int kOn = 1;

} // namespace

std::string WriteSortAcrossHeadings(const SFurtherSource& source) {
    CFurtherWriter out;
    if (source.doc.Options().sortAcrossHeadings) out.Add(kOn).EndEntry();
    return out.Take();
}

void ReadSortAcrossHeadings(const SFurtherValue& value) {
    value.ForEachEntry(1, [&](CFurtherReader& entry) {
        if (entry.Int() != kOn || !entry.IsDone()) return false;
        value.content.options.sortAcrossHeadings = true;
        return true;
    });
}

} // namespace vx
