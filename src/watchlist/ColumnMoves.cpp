#include "watchlist/ColumnMoves.h"

#include "watchlist/SortCommands.h"
#include "watchlist/UndoStep.h"
#include "watchlist/WatchlistDoc.h"

#include <algorithm>

namespace vx {

namespace {

bool IsColumn(const CWatchlistDoc& doc, int position) { return position >= 1 && position < doc.Columns().Count(); }

void Changed(CWatchlistDoc& doc) {
    doc.SetModified(true);
    doc.RebuildGrid();
}

} // namespace

bool InsertColumn(CWatchlistDoc& doc, int position, std::string_view name) {
    if (FieldIndex(name) <= kRowNumberColumn) return false;
    const CUndoStep step(doc, "insert column " + std::string(name));
    position = std::clamp(position, 1, doc.Columns().Count());
    if (!doc.Columns().Insert(position, name)) return false;
    doc.Formats().InsertColumn(position);
    doc.Formats().SetNewColumn(position, name);
    SWatchlistOptions& options = doc.Options();
    if (options.sort.column >= position) ++options.sort.column;
    if (options.lockedColumns >= position) ++options.lockedColumns;
    Changed(doc);
    return true;
}

void RemoveColumn(CWatchlistDoc& doc, int position) {
    if (!IsColumn(doc, position)) return;
    const CUndoStep step(doc, "remove column " + doc.Columns().At(position).name);
    doc.Columns().Remove(position);
    doc.Formats().RemoveColumn(position);
    SWatchlistOptions& options = doc.Options();
    if (options.sort.column == position) {
        if (options.sort.autoSort) SwitchOffAutoSort(options.sort);
        options.sort.column = SSortRecord::kNoColumn;
    } else if (options.sort.column > position) {
        --options.sort.column;
    }
    if (options.lockedColumns >= position) --options.lockedColumns;
    Changed(doc);
}

void MoveColumn(CWatchlistDoc& doc, int from, int to) {
    if (!IsColumn(doc, from) || !IsColumn(doc, to) || from == to) return;
    const CUndoStep step(doc, "move column " + doc.Columns().At(from).name);
    doc.Columns().Move(from, to);
    doc.Formats().MoveColumn(from, to);
    int& sorted = doc.Options().sort.column;
    if (sorted == from)
        sorted = to;
    else if (sorted > from && sorted <= to)
        --sorted;
    else if (sorted < from && sorted >= to)
        ++sorted;
    Changed(doc);
}

void SetColumnWidth(CWatchlistDoc& doc, int position, int width) {
    if (position < 0 || position >= doc.Columns().Count() || doc.Columns().At(position).width == width) return;
    const std::string name =
        position == 0 ? std::string("the row numbers") : "column " + doc.Columns().At(position).name;
    const bool wasHidden = doc.Columns().At(position).width < 1;
    const CUndoStep step(doc, (width < 1 ? "hide " : wasHidden ? "show " : "resize ") + name);
    doc.Columns().SetWidth(position, width);
    Changed(doc);
}

} // namespace vx
