// SPDX-License-Identifier: MIT
#include "watchlist/edit/SortCommands.h"

#include "base/MessageBox.h"
#include "watchlist/document/WatchlistDoc.h"

#include <algorithm>
#include <string>

namespace vx {

namespace {

constexpr int kShortestPeriodMs = 5000;

std::string ColumnName(const CWatchlistDoc& doc, int column) {
    return column >= 1 && column < doc.Columns().Count() ? doc.Columns().At(column).name : std::string();
}

std::string AutoSortIsSet(const std::string& column) {
    return "An auto sort has been set for column \"" + column + ",\" it may not be manually sorted.";
}

void Exclaim(const std::string& text) { ShowMessageBox({text, {}, EBoxButtons::Ok, EBoxIcon::Exclamation}); }

bool CoversAllRows(const CWatchlistDoc& doc, const SSortSelection& selection) {
    return selection.firstRow <= 1 && selection.lastRow >= doc.RowCount();
}

int LastShownColumn(const CColumnMap& columns) {
    int column = columns.Count() - 1;
    while (column >= 1 && columns.At(column).width == 0) --column;
    return column;
}

} // namespace

void ManualSort(CWatchlistDoc& doc, const SSortSelection& selection) {
    const SSortRecord& sort = doc.Options().sort;
    if (sort.autoSort) return Exclaim(AutoSortIsSet(ColumnName(doc, sort.column)));
    if (selection.firstColumn != selection.lastColumn) {
        ShowMessageBox({"Selection sorts must use a single column for the source data.", {}});
        return;
    }
    if (selection.focusColumn < 1 || selection.focusColumn >= doc.Columns().Count()) return;
    const bool all = CoversAllRows(doc, selection);
    bool ascending = selection.focusColumn != sort.column || !sort.ascending;
    if (!all) {
        const std::string question = ascending
                                         ? "Press Yes for ascending, No for descending, or Cancel to exit the sort."
                                         : AutoSortIsSet(ColumnName(doc, sort.column));
        if (ShowMessageBox({question, {}, EBoxButtons::YesNoCancel, EBoxIcon::Question}) == EBoxAnswer::Yes)
            ascending = true;
    }
    doc.Edit("sort by " + ColumnName(doc, selection.focusColumn), [&](CWatchlistEdit& edit) {
        edit.Options().sort.column = selection.focusColumn;
        edit.Options().sort.ascending = ascending;
        SortRows(doc, edit, all ? 1 : selection.firstRow, all ? doc.RowCount() : selection.lastRow,
                 selection.focusColumn, ascending);
    });
}

void RequestHeaderSort(CWatchlistDoc& doc, int column, const SSortSelection& selection) {
    const SSortRecord& sort = doc.Options().sort;
    if (!sort.autoSort) return ManualSort(doc, selection);
    Exclaim("The \"" + ColumnName(doc, column) +
            "\" column may not be sorted because an Auto Sort has been set for the \"" + ColumnName(doc, sort.column) +
            "\" column.");
}

bool MayDeleteSelection(CWatchlistDoc& doc) {
    if (!doc.Options().sort.autoSort) return true;
    const SMessageBox question{"The selection may not be deleted if the Auto Sort is turned on.\n\n"
                               "Would you like to turn off Auto Sort?",
                               "Turn Off Auto Sort", EBoxButtons::YesNo, EBoxIcon::Stop};
    if (ShowMessageBox(question) != EBoxAnswer::Yes) return false;
    doc.Edit("turn off auto sort", [](CWatchlistEdit& edit) { SwitchOffAutoSort(edit.Options().sort); });
    return true;
}

void SwitchOffAutoSort(SSortRecord& sort) {
    sort.autoSort = false;
    sort.intervalMs = SSortRecord::kDefaultIntervalMs;
}

int AutoSortPeriodMs(const SSortRecord& sort) { return std::max(sort.intervalMs, kShortestPeriodMs); }

EAutoSortTick CAutoSort::Tick(bool busy) {
    const SSortRecord& sort = m_doc.Options().sort;
    const bool off = !sort.autoSort || sort.column < 1 || sort.column > LastShownColumn(m_doc.Columns());
    const bool wait = busy || m_doc.Undo().IsRecording();
    if (off || wait || (m_sort && !m_sort->IsCurrent())) m_sort.reset();
    if (off) {
        SwitchOffAutoSort(m_doc.Update()->Options().sort);
        return EAutoSortTick::Off;
    }
    if (wait) return EAutoSortTick::Postponed;
    if (!m_sort) m_sort.emplace(m_doc, 1, m_doc.RowCount(), sort.column, sort.ascending);
    if (!m_sort->Read(kSliceRows)) return EAutoSortTick::UnderWay;
    m_sort->Apply(*m_doc.Update());
    m_sort.reset();
    return EAutoSortTick::Sorted;
}

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
