// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/RowTable.h"
#include "watchlist/document/UndoHost.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vx {

/// Where undoing changed something, to show it to the user.
struct STouched {
    std::vector<uint32_t> rowIds;
    int gap = 0; ///< Where rows were taken out.
    int firstColumn = 0, lastColumn = 0;

    void AddColumn(int column);
};

/// What one step changed in the rows: rows as they were before, rows that went, numbers of rows that came, and the
/// order in which rows were. Undoing exchanges these with what the document has, redoing exchanges them back.
///
/// Rows are named by the numbers that stay with them, so that a step is undone in the right rows although auto sort
/// moved them, or the feed rejected a symbol, in the meantime. These are no edits; undoing an edit does not undo them.
///
/// Thread  GUI thread only
class CUndoRows {
public:
    // While the step is open.

    void BeforeRow(CRowTable& table, int row);
    void BeforeRowsMove(const CRowTable& table);
    void RowsInserted(const CRowTable& table, int firstRow, int count);
    void RowsRemoved(const std::vector<SPlacedRow>& rows);
    /// The step is whole: keeps what differs from the document.
    void Close(const CRowTable& table);

    // Afterwards.

    bool IsEmpty() const { return m_changed.empty() && m_came.empty() && m_went.empty() && m_order.empty(); }
    /// False when nothing that is saved differs.
    bool IsEdit() const;
    void Exchange(CUndoHost& host, STouched& touched);
    size_t Bytes() const;

private:
    struct SChanged {
        SRow other; ///< With the number of the row that it belongs to.
        uint8_t parts = 0;
        bool isSaved = true; ///< The saved text of the row differs too.
    };

    void CloseMoves(const std::vector<int>& rowOf);
    void ExchangeOrder(CUndoHost& host);
    void ExchangeRows(CUndoHost& host, STouched& touched);
    void ExchangeContent(CUndoHost& host, STouched& touched);

    std::vector<SChanged> m_changed;
    std::vector<SPlacedRow> m_went; ///< Rising places, where they are to be put.
    std::vector<uint32_t> m_came;   ///< Numbers of rows that the step brought.
    std::vector<uint32_t> m_order;  ///< These rows, wherever they are now, were in this order.
    // Only while the step is open.
    std::vector<bool> m_seen; ///< By number: rows that are in m_changed.
    bool m_moved = false;     ///< m_order has all rows as they were at first.
    uint32_t m_lastId = 0;    ///< At that time.
};

} // namespace vx
