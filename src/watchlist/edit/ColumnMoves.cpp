// SPDX-License-Identifier: MIT
#include "watchlist/edit/ColumnMoves.h"

#include "data/catalogue/CellFormat.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/edit/SortCommands.h"
#include "watchlist/exchange/RowCellText.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace vx {

namespace {

bool IsColumn(const CWatchlistDoc& doc, int position) { return position >= 1 && position < doc.Columns().Count(); }

/// Headings look as the cells of one column say. When it is another column afterwards, their looks go along.
class CHeadingLooks {
public:
    CHeadingLooks(const CWatchlistDoc& doc, CWatchlistEdit& edit) : m_doc(doc), m_edit(edit), m_name(Name()) {
        const int column = HeadingColumn(m_doc.Columns());
        m_doc.Formats().ForEach([&](int row, int place) {
            if (place == column && m_doc.RowKind(row) == ERowKind::Annotation)
                m_looks.emplace_back(row, *m_doc.Formats().Find(row, place));
        });
    }
    ~CHeadingLooks() {
        if (Name() == m_name) return;
        const int left = m_doc.Columns().PositionOf(m_name);
        for (const auto& [row, look] : m_looks) {
            if (left >= 1) m_edit.Formats().Reset(row, left);
            m_edit.Formats().Set(row, HeadingColumn(m_doc.Columns()), look);
        }
    }
    CHeadingLooks(const CHeadingLooks&) = delete;
    CHeadingLooks& operator=(const CHeadingLooks&) = delete;

private:
    std::string Name() const {
        const int column = HeadingColumn(m_doc.Columns());
        return column < m_doc.Columns().Count() ? m_doc.Columns().At(column).name : std::string();
    }

    const CWatchlistDoc& m_doc;
    CWatchlistEdit& m_edit;
    std::string m_name;
    std::vector<std::pair<int, SCellFormat>> m_looks;
};

} // namespace

bool InsertColumn(CWatchlistDoc& doc, int position, std::string_view name) {
    if (FieldIndex(name) <= kRowNumberColumn) return false;
    if (doc.Columns().PositionOf(name) >= 0 || doc.Columns().Count() >= CColumnMap::kMostColumns) return false;
    position = std::clamp(position, 1, doc.Columns().Count());
    doc.Edit("insert column " + std::string(name), [&](CWatchlistEdit& edit) {
        const CHeadingLooks looks(doc, edit);
        edit.Columns().Insert(position, name);
        edit.Formats().InsertColumn(position);
        edit.Formats().SetNewColumn(position, name);
        SWatchlistOptions& options = edit.Options();
        if (options.sort.column >= position) ++options.sort.column;
        if (options.lockedColumns >= position) ++options.lockedColumns;
    });
    return true;
}

void RemoveColumn(CWatchlistDoc& doc, int position) {
    if (!IsColumn(doc, position)) return;
    doc.Edit("remove column " + doc.Columns().At(position).name, [&](CWatchlistEdit& edit) {
        const CHeadingLooks looks(doc, edit);
        edit.Columns().Remove(position);
        edit.Formats().RemoveColumn(position);
        SWatchlistOptions& options = edit.Options();
        if (options.sort.column == position) {
            if (options.sort.autoSort) SwitchOffAutoSort(options.sort);
            options.sort.column = SSortRecord::kNoColumn;
        } else if (options.sort.column > position) {
            --options.sort.column;
        }
        if (options.lockedColumns >= position) --options.lockedColumns;
    });
}

void MoveColumn(CWatchlistDoc& doc, int from, int to) {
    if (!IsColumn(doc, from) || !IsColumn(doc, to) || from == to) return;
    doc.Edit("move column " + doc.Columns().At(from).name, [&](CWatchlistEdit& edit) {
        const CHeadingLooks looks(doc, edit);
        edit.Columns().Move(from, to);
        edit.Formats().MoveColumn(from, to);
        int& sorted = edit.Options().sort.column;
        if (sorted == from)
            sorted = to;
        else if (sorted > from && sorted <= to)
            --sorted;
        else if (sorted < from && sorted >= to)
            ++sorted;
    });
}

void SetColumnWidth(CWatchlistDoc& doc, int position, int width) {
    if (position < 0 || position >= doc.Columns().Count() || doc.Columns().At(position).width == width) return;
    const std::string name =
        position == 0 ? std::string("the row numbers") : "column " + doc.Columns().At(position).name;
    const bool wasHidden = doc.Columns().At(position).width < 1;
    doc.Edit((width < 1   ? "hide "
              : wasHidden ? "show "
                          : "resize ") +
                 name,
             [&](CWatchlistEdit& edit) { edit.Columns().SetWidth(position, width); });
}

} // namespace vx
