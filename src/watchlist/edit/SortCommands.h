#pragma once

namespace vx {

class CWatchlistDoc;
struct SSortRecord;

/// What is selected in the grid, and the column of its focus cell. Rows and columns count from 1.
struct SSortSelection {
    int firstRow = 0;
    int lastRow = 0;
    int firstColumn = 0;
    int lastColumn = 0;
    int focusColumn = 0;
};

/// Sorts by the focus cell's column, once: the whole list when the selection covers the column, else the selected rows
/// after a question. The same column again turns the direction around. Refused, with a message, while auto sort is on
/// and for a selection of several columns.
///
/// Three deliberate traits of the question: when the direction is descending, it shows the text about auto sort;
/// Cancel sorts all the same; No does not ask for descending but keeps the direction.
///
/// Thread  GUI thread only
void ManualSort(CWatchlistDoc& doc, const SSortSelection& selection);

/// The user asked for a sort at a column's header.
void RequestHeaderSort(CWatchlistDoc& doc, int column, const SSortSelection& selection);

/// Whether the selection may be deleted: with auto sort on only after the user agreed to turn it off, which is done
/// here.
bool MayDeleteSelection(CWatchlistDoc& doc);

/// The interval goes back to its default with it.
void SwitchOffAutoSort(SSortRecord& sort);

/// The period of the auto-sort timer: the record's, but never shorter than 5 seconds.
int AutoSortPeriodMs(const SSortRecord& sort);

enum class EAutoSortTick {
    Sorted,    ///< Start a new full period.
    Postponed, ///< Nothing was done; start a new period.
    Off        ///< Auto sort is off now; no timer.
};

/// The auto-sort timer fired. busy: the order is held, or an editor, a drag or a row's menu is up, so that no row may
/// move under the hand.
EAutoSortTick AutoSortTick(CWatchlistDoc& doc, bool busy);

} // namespace vx
