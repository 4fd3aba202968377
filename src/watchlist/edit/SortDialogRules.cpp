#include "watchlist/edit/SortDialogRules.h"

#include "base/MessageBox.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/SortCommands.h"

namespace vx {

namespace {

constexpr int kShortestSeconds = 5;
constexpr int kLongestSeconds = 36000;
constexpr int kSecondsPerHour = 3600;
constexpr int kShownSecondsPerMinute = 360;

void Tell(const char* text) { ShowMessageBox({text, {}, EBoxButtons::Ok, EBoxIcon::None}); }

} // namespace

SShownInterval ShownInterval(int intervalMs) {
    const int seconds = intervalMs / 1000;
    if (seconds < kShortestSeconds) return {kShortestSeconds, ETimeUnit::Seconds};
    if (seconds > kLongestSeconds) return {kLongestSeconds / kSecondsPerHour, ETimeUnit::Hours};
    if (seconds % kSecondsPerHour == 0) return {seconds / kSecondsPerHour, ETimeUnit::Hours};
    if (seconds % kShownSecondsPerMinute == 0) return {seconds / kShownSecondsPerMinute, ETimeUnit::Minutes};
    return {seconds, ETimeUnit::Seconds};
}

int64_t SecondsOf(const SShownInterval& entered) {
    constexpr int64_t kSeconds[] = {1, 60, kSecondsPerHour};
    return entered.number * kSeconds[static_cast<size_t>(entered.unit)];
}

std::vector<std::string> SortableColumns(const CColumnMap& columns) {
    std::vector<std::string> names;
    for (int column = 1; column < columns.Count(); ++column)
        if (columns.At(column).width >= 1) names.push_back(columns.At(column).name);
    return names;
}

std::string FirstSortColumn(const CColumnMap& columns, const SSortRecord& sort, int focusColumn) {
    const int column = sort.column == SSortRecord::kNoColumn ? focusColumn : sort.column;
    return column >= 1 && column < columns.Count() ? columns.At(column).name : std::string();
}

bool ApplySortEntry(CWatchlistDoc& doc, const SSortEntry& entry) {
    SSortRecord sort = doc.Options().sort;
    if (entry.autoSort) {
        const int64_t seconds = SecondsOf(entry.interval);
        if (entry.column.empty()) {
            Tell("Please select a column to sort the Watchlist.");
            return false;
        }
        if (seconds < kShortestSeconds || seconds > kLongestSeconds) {
            Tell("Please select time between:  5 - 36000 Seconds; 1 - 600 Minute(s); or 1 - 10 Hour(s)");
            return false;
        }
        sort.autoSort = true;
        sort.ascending = entry.ascending;
        sort.column = doc.Columns().PositionOf(entry.column);
        sort.intervalMs = static_cast<int>(seconds) * 1000;
    } else {
        SwitchOffAutoSort(sort);
    }
    if (sort != doc.Options().sort)
        doc.Edit("change the sort settings", [&](CWatchlistEdit& edit) { edit.Options().sort = sort; });
    return true;
}

} // namespace vx
