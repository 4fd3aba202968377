// SPDX-License-Identifier: MIT
#pragma once

#include "data/text/ColumnScale.h"

#include <utility>
#include <vector>

namespace vx {

class CWatchlistDoc;
struct SFieldEntry;

/// The scales of those columns of a watchlist whose numbers are drawn.
///
/// A scale takes each number that is drawn. What lies out of sight is read in slices, so that a list of any length
/// costs the same: kFirstRows rows when a column is first drawn, then kRowsAtOnce rows each time, from the top again
/// after the end. Columns that were not drawn during a whole pass are not read.
///
/// Owns    nothing of the document, which outlives it
/// Thread  GUI thread only; Use and ReadOn do not allocate
class CColumnScales {
public:
    static constexpr int kFirstRows = 16384;
    static constexpr int kRowsAtOnce = 1024;

    explicit CColumnScales(const CWatchlistDoc& doc) : m_doc(doc) {}

    /// The document's columns are others.
    void Reset();
    /// The scale of a column in which a number is drawn.
    const CColumnScale& Use(int column, const SFieldEntry& entry, double number);

    /// Reads the next slice. Unless wanted, only when some rows were never read.
    void ReadOn(bool wanted);
    /// Whether a scale is another one since the last TakeChanged: what was drawn by it is not right any more.
    bool HasChanged() const { return m_changed; }
    bool TakeChanged() { return std::exchange(m_changed, false); }

private:
    struct SColumn {
        const SFieldEntry* entry = nullptr; ///< Null until the column is drawn.
        CColumnScale scale;
        bool isActive = false;  ///< It is read.
        bool wasDrawn = false;  ///< Since the pass began.
        bool wholePass = false; ///< Was read from the beginning of the pass on.
        bool isKnown = false;   ///< All of it was read once.
    };

    void Begin(int column, const SFieldEntry& entry);
    void Read(int firstRow, int lastRow, int onlyColumn);
    void EndPass();

    const CWatchlistDoc& m_doc;
    std::vector<SColumn> m_columns; ///< By grid column.
    int m_nextRow = 1;
    bool m_changed = false;
};

} // namespace vx
