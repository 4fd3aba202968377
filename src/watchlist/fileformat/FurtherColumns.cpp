// SPDX-License-Identifier: MIT
#include "watchlist/fileformat/FurtherKeyTable.h"

#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/fileformat/WatchlistKeys.h"

#include <algorithm>
#include <array>
#include <set>

namespace vx {

// "2 0 \"Bid\";" is a column of width 0 at place 2, where 1 is the first after the row numbers; "\"Ask\";" says that
// the line of columns gives a column Ask that is none. Columns are taken out first, then put in from the left. "0 45
// \"RowNumbers\";" is the width of the row numbers.

namespace {

using SColumn = SWatchlistContent::SColumn;

constexpr size_t kMostEntries = 2 * static_cast<size_t>(SWatchlistContent::kMostColumns);

int KeptWidth(const sColumnInfo& column) { return std::min(column.width, SWatchlistContent::kMostWidth); }

/// Of the columns that the text gives, those that are the document's, in its order.
std::vector<const SColumn*> ColumnsInPlace(const CColumnMap& columns, const std::vector<SColumn>& given) {
    std::vector<const SColumn*> out;
    int last = 0; // The document's place of the last one found.
    for (const SColumn& column : given) {
        const int place = columns.PositionOf(column.name);
        if (place <= last || KeptWidth(columns.At(place)) != column.width) continue;
        last = place;
        out.push_back(&column);
    }
    return out;
}

} // namespace

std::string WriteFurtherColumns(const SFurtherSource& source) {
    const CColumnMap& columns = source.doc.Columns();
    const std::vector<const SColumn*> inPlace = ColumnsInPlace(columns, source.fixed.columns);
    CFurtherWriter out;
    if (source.fixed.rowNumberWidth) out.Quote(kRowNumbersEntry).EndEntry();
    if (const int width = KeptWidth(columns.At(kRowNumberColumn)); width >= 1 && width != kRowNumberWidthPx)
        out.Add(kRowNumberColumn).Add(width).Quote(kRowNumbersEntry).EndEntry();
    auto next = inPlace.begin();
    for (const SColumn& column : source.fixed.columns) {
        if (next != inPlace.end() && *next == &column)
            ++next;
        else
            out.Quote(column.name).EndEntry();
    }
    next = inPlace.begin();
    for (int place = 1; place < columns.Count(); ++place) {
        if (next != inPlace.end() && (*next)->name == columns.At(place).name)
            ++next;
        else
            out.Add(place).Add(KeptWidth(columns.At(place))).Quote(columns.At(place).name).EndEntry();
    }
    return out.Take();
}

void ReadFurtherColumns(const SFurtherValue& value) {
    std::set<std::string> moved; // Names that do not stay where the line of columns has them.
    std::map<int, SColumn> placed;
    SWatchlistContent& content = value.content;
    value.ForEachEntry(kMostEntries, [&](CFurtherReader& entry) {
        if (entry.IsText()) {
            const std::optional<std::string> none = entry.Text();
            if (!none || !entry.IsDone()) return false;
            if (*none == kRowNumbersEntry) content.rowNumberWidth.reset();
            moved.insert(*none);
            return true;
        }
        const int place = entry.Int();
        const int width = std::clamp(entry.Int(), 0, SWatchlistContent::kMostWidth);
        const std::optional<std::string> name = entry.Text();
        const bool isPlace = place >= 1 && place <= SWatchlistContent::kMostColumns;
        if (!name || name->empty() || !entry.IsDone()) return false;
        if (place == kRowNumberColumn && name == kRowNumbersEntry && width >= 1)
            return content.rowNumberWidth = width, true;
        if (!isPlace) return false;
        moved.insert(*name);
        placed.insert_or_assign(place, SColumn{*name, width});
        return true;
    });
    std::vector<SColumn> columns;
    std::set<std::string> names;
    const auto add = [&](SColumn&& column) {
        if (columns.size() < static_cast<size_t>(SWatchlistContent::kMostColumns) && names.insert(column.name).second)
            columns.push_back(std::move(column));
    };
    auto next = placed.begin();
    for (SColumn& column : content.columns) {
        for (; next != placed.end() && next->first <= static_cast<int>(columns.size()) + 1; ++next)
            add(std::move(next->second));
        if (!moved.contains(column.name)) add(std::move(column));
    }
    for (; next != placed.end(); ++next) add(std::move(next->second));
    content.columns = std::move(columns);
    content.columnsGiven = true;
}

// "\"Volume\" arrow short;": the numbers of this column are drawn so. What is not said is as columns begin.

namespace {

struct SLookWord {
    std::string_view word;
    void (*apply)(SColumnLook& look);
};

constexpr std::array kLookWords = {
    SLookWord{"background", [](SColumnLook& look) { look.direction = EDirectionLook::Background; }},
    SLookWord{"arrow", [](SColumnLook& look) { look.direction = EDirectionLook::Arrow; }},
    SLookWord{"plain", [](SColumnLook& look) { look.direction = EDirectionLook::None; }},
    SLookWord{"steady", [](SColumnLook& look) { look.flash = false; }},
    SLookWord{"separators", [](SColumnLook& look) { look.separators = true; }},
    SLookWord{"short", [](SColumnLook& look) { look.shortForms = true; }},
};

bool Says(const SLookWord& word, const SColumnLook& look) {
    SColumnLook said = look;
    word.apply(said);
    return said == look;
}

} // namespace

std::string WriteColumnLooks(const SFurtherSource& source) {
    CFurtherWriter out;
    for (const sColumnInfo& column : source.doc.Columns().Columns()) {
        if (column.look == SColumnLook{}) continue;
        out.Quote(column.name);
        for (const SLookWord& word : kLookWords)
            if (Says(word, column.look)) out.Add(word.word);
        out.EndEntry();
    }
    return out.Take();
}

void ReadColumnLooks(const SFurtherValue& value) {
    value.ForEachEntry(static_cast<size_t>(SWatchlistContent::kMostColumns), [&](CFurtherReader& entry) {
        const std::optional<std::string> name = entry.Text();
        SColumnLook look;
        while (!entry.IsDone()) {
            const auto* known = std::ranges::find(kLookWords, entry.Word(), &SLookWord::word);
            if (known == kLookWords.end()) return false;
            known->apply(look);
        }
        if (!name) return false;
        value.content.columnLooks.push_back({*name, look});
        return true;
    });
}

} // namespace vx
