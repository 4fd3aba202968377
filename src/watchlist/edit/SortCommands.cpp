#include "watchlist/edit/SortCommands.h"

#include "base/MessageBox.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/SortRows.h"

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

EAutoSortTick AutoSortTick(CWatchlistDoc& doc, bool busy) {
    const SSortRecord& sort = doc.Options().sort;
    if (!sort.autoSort || sort.column < 1 || sort.column > LastShownColumn(doc.Columns())) {
        SwitchOffAutoSort(doc.Update()->Options().sort);
        return EAutoSortTick::Off;
    }
    if (busy || doc.Undo().IsRecording()) return EAutoSortTick::Postponed;
    SortRows(doc, *doc.Update(), 1, doc.RowCount(), sort.column, sort.ascending);
    return EAutoSortTick::Sorted;
}

} // namespace vx
