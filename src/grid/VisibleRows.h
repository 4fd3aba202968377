#pragma once

#include "grid/GridGeometry.h"

#include <algorithm>
#include <vector>

namespace vx {

/// The rows on the screen, numbered from 0 as they stand there, for what keeps something of each of them.
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

} // namespace vx
