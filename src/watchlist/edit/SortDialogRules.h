#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vx {

class CColumnMap;
class CWatchlistDoc;
struct SSortRecord;

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

/// What stands in the dialog when OK is pressed.
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
