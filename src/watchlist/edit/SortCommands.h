// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/edit/SortRows.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

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
    UnderWay,  ///< The list is long: tick again when other events have had their turn.
    Postponed, ///< Nothing was done; start a new period.
    Off        ///< Auto sort is off now; no timer.
};

/// What the auto-sort timer does: sorts, a long list in slices so that no key waits for the whole of it. A list that
/// changes between two slices is sorted from its beginning.
///
/// Thread  GUI thread only
class CAutoSort {
public:
    /// Rows whose cells are read in one slice.
    static constexpr size_t kSliceRows = 16384;

    explicit CAutoSort(CWatchlistDoc& doc) : m_doc(doc) {}

    /// busy: the order is held, or an editor, a drag or a row's menu is up, so that no row may move under the hand.
    EAutoSortTick Tick(bool busy);

private:
    CWatchlistDoc& m_doc;
    std::optional<CRowSort> m_sort; ///< Under way.
};

class CColumnMap;

// What the sort dialog shows and accepts, without its window.

/// In the order of the dialog's unit list.
enum class ETimeUnit { Seconds = 0, Minutes = 1, Hours = 2 };

/// An interval as the dialog shows it.
struct SShownInterval {
    int number = 5;
    ETimeUnit unit = ETimeUnit::Seconds;

    bool operator==(const SShownInterval&) const = default;
};

/// The largest unit that divides an interval; below 5 seconds reads 5 seconds, above 10 hours 10 hours. Minutes are
/// counted by 360 seconds, deliberately: 720 seconds read 2 minutes.
SShownInterval ShownInterval(int intervalMs);

/// The seconds of what the user entered; a minute has 60.
int64_t SecondsOf(const SShownInterval& entered);

/// The names that the column list offers: of columns at least 1 pixel wide, left to right.
std::vector<std::string> SortableColumns(const CColumnMap& columns);
/// The name that the list begins with: of the record's sort column, or, while it has none, of the column in focus.
std::string FirstSortColumn(const CColumnMap& columns, const SSortRecord& sort, int focusColumn);

/// What the dialog holds when OK is pressed.
struct SSortEntry {
    bool autoSort = false;
    std::string column; ///< Name; empty when none is chosen.
    bool ascending = true;
    SShownInterval interval;
};

/// Takes over the entry into the document's sort record; a document whose record changed is modified.
///
/// Errors  false for auto sort without a column, or with an interval outside 5 seconds to 10 hours: a message has said
///         so, nothing changed, and the dialog stays open
bool ApplySortEntry(CWatchlistDoc& doc, const SSortEntry& entry);

} // namespace vx
