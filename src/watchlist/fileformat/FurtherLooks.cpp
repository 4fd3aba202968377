// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/FurtherKeyTable.h"

#include "watchlist/document/CellFormatStore.h"
#include "watchlist/document/WatchlistDoc.h"

#include <algorithm>
#include <array>

namespace vx {

// "3 2 sign bold;": the numbers of the cell in row 3, column 2 have the colour of their sign. Formats of columns (row
// 0) come first: a cell without a format of its own has its column's.

namespace {

using SLook = SWatchlistContent::SLook;

constexpr std::array<std::string_view, 3> kRules = {"field", "direction", "sign"}; ///< By EColourRule.
constexpr std::string_view kBold = "bold";
constexpr std::string_view kRegular = "regular";

bool IsSame(const SCellFormat& a, const SCellFormat& b) {
    return a.colourRule == b.colourRule && a.regular == b.regular;
}

} // namespace

void ApplyLook(const SLook& look, CCellFormatStore& formats) {
    SCellFormat format = formats.Effective(look.row, look.column);
    format.colourRule = look.colourRule;
    format.regular = look.regular;
    formats.Set(look.row, look.column, std::move(format));
}

std::string WriteFurtherLooks(const SFurtherSource& source) {
    static const SCellFormat kRead; // A record that the text has begins with it; others are their defaults.
    CFurtherWriter out;
    source.doc.Formats().ForEachRecord([&](int row, int column, const SCellFormat& format, const SCellFormat* base) {
        if (IsSame(format, kRead) && (!base || IsSame(format, *base))) return; // Most of them.
        if (IsSame(format, CCellFormatStore::IsWritten(column, format, base) ? kRead : *base)) return;
        out.Add(row).Add(column).Add(kRules[static_cast<size_t>(format.colourRule)]);
        out.Add(format.regular ? kRegular : kBold).EndEntry();
    });
    return out.Take();
}

void ReadFurtherLooks(const SFurtherValue& value) {
    value.ForEachEntry(CCellFormatStore::kMostRecords, [&](CFurtherReader& entry) {
        SLook look;
        look.row = entry.Int();
        look.column = entry.Int();
        const auto rule = std::find(kRules.begin(), kRules.end(), entry.Word());
        const std::string_view weight = entry.Word();
        const bool inside = look.row >= 0 && look.row <= CCellFormatStore::kMostRow && look.column >= 0 &&
                            look.column <= CCellFormatStore::kMostColumn;
        if (!inside || rule == kRules.end() || (weight != kBold && weight != kRegular) || !entry.IsDone()) return false;
        look.colourRule = static_cast<EColourRule>(rule - kRules.begin());
        look.regular = weight == kRegular;
        value.content.looks.push_back(look);
        return true;
    });
}

} // namespace vx
