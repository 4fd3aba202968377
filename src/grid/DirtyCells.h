// SPDX-License-Identifier: MIT
#pragma once

#include "grid/GridGeometry.h"
#include "grid/GridSelection.h"

#include <QRegion>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace vx {

/// The rows on the screen, numbered from 0 from top to bottom, for classes that keep something for each of them.
///
/// Shape   without hidden rows between the visible ones a number is a difference, else it is looked for among as many
///         rows as the screen shows
class CVisibleRows {
public:
    void Set(const CGridGeometry& geometry) {
        m_first = geometry.FirstVisibleRow();
        const int last = geometry.LastVisibleRow();
        const int count = last < m_first ? 0 : geometry.ShownRowsIn(m_first, last);
        m_count = static_cast<unsigned>(count);
        m_rows.clear();
        if (count == 0 || count == last - m_first + 1) return;
        for (int row = m_first; row <= last; row = geometry.NextShownRow(row + 1)) m_rows.push_back(row);
    }

    unsigned Count() const { return m_count; }
    /// The number of a row; Count() or more for one that cannot be seen.
    unsigned NumberOf(int row) const {
        if (m_rows.empty()) return static_cast<unsigned>(row) - static_cast<unsigned>(m_first);
        const auto found = std::lower_bound(m_rows.begin(), m_rows.end(), row);
        return found == m_rows.end() || *found != row ? m_count : static_cast<unsigned>(found - m_rows.begin());
    }
    int Row(unsigned number) const { return m_rows.empty() ? m_first + static_cast<int>(number) : m_rows[number]; }

private:
    int m_first = 1;
    unsigned m_count = 0;
    std::vector<int> m_rows; ///< Only while hidden rows lie between the visible ones.
};

/// Which of the cells on the screen are lit because they have just changed. A cell that changes again while it is lit,
/// or soon after, is not lit again: nothing on the screen flickers faster than three times a second.
///
/// Shape   all cells lit in one pass go out together; scrolling forgets them all
/// Units   times in milliseconds of a clock that never goes back
class CCellFlash {
public:
    static constexpr int64_t kRestartMs = 334;
    static constexpr int64_t kShowMs = 220;

    void SetVisible(const CGridGeometry& geometry);

    /// Lights a cell, unless it was lit less than kRestartMs ago or cannot be seen.
    void Start(int row, int column, int64_t now) {
        const size_t i = Index(row, column);
        if (i == kNone || now - m_started[i] < kRestartMs) return;
        m_started[i] = now;
        if (m_lit[i] != 0) return;
        m_lit[i] = 1;
        m_cells.push_back({row, column});
    }
    bool IsLit(int row, int column) const {
        if (m_cells.empty()) return false;
        const size_t i = Index(row, column);
        return i != kNone && m_lit[i] != 0;
    }
    bool Any() const { return !m_cells.empty(); }

    /// Puts out the cells that have been lit for kShowMs and adds them to the list.
    void End(int64_t now, std::vector<SGridCell>& ended);

private:
    static constexpr size_t kNone = SIZE_MAX;
    static constexpr int64_t kNever = -1'000'000;
    size_t Index(int row, int column) const {
        const unsigned r = m_visible.NumberOf(row);
        const auto c = static_cast<unsigned>(column);
        return r < m_visible.Count() && c < m_columns ? size_t{r} * m_columns + c : kNone;
    }

    CVisibleRows m_visible;
    unsigned m_columns = 0;
    std::vector<int64_t> m_started;
    std::vector<uint8_t> m_lit;
    std::vector<SGridCell> m_cells;
};

/// Which of the cells on the screen have changed since they were last painted. A change elsewhere costs two
/// comparisons and leaves no trace.
class CDirtyCells {
public:
    /// Takes the cells that can now be seen; everything marked is forgotten, for the caller repaints all.
    void SetVisible(const CGridGeometry& geometry);

    void MarkCell(int row, int column) {
        const unsigned r = m_visible.NumberOf(row);
        const auto c = static_cast<unsigned>(column);
        if (r >= m_visible.Count() || c >= m_columnVisible.size() || m_columnVisible[c] == 0) return;
        m_bits[r * m_words + c / 64] |= uint64_t{1} << c % 64;
        m_any = true;
    }
    void MarkRow(int row) {
        const unsigned r = m_visible.NumberOf(row);
        if (r >= m_visible.Count()) return;
        m_wholeRow[r] = 1;
        m_any = true;
    }
    bool Any() const { return m_any; }

    /// The places of the marked cells, few and large enough to be painted cheaply; nothing is marked afterwards.
    /// flash, unless null, lights the cells that were marked one by one; rows marked as a whole have only new content.
    QRegion Take(const CGridGeometry& geometry, CCellFlash* flash, int64_t now);

private:
    void TakeRow(const CGridGeometry& geometry, unsigned r, CCellFlash* flash, int64_t now);
    void AddRect(const QRect& rect);

    CVisibleRows m_visible;
    size_t m_words = 1; // per row
    bool m_any = false;
    std::vector<uint8_t> m_columnVisible;
    std::vector<uint64_t> m_bits;
    std::vector<uint8_t> m_wholeRow;
    std::vector<QRect> m_rects;
};

} // namespace vx
