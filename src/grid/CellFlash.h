#pragma once

#include "grid/GridGeometry.h"
#include "grid/VisibleRows.h"

#include <cstdint>
#include <vector>

namespace vx {

/// Which of the cells on the screen are lit because they have just changed. A cell that changes again while it is lit,
/// or soon after, is not lit anew: nothing on the screen flickers faster than three times a second.
///
/// Shape   all cells lit in one pass go out together; scrolling forgets them all
/// Units   times in milliseconds of a clock that never goes back
/// Thread  GUI thread only
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

    struct SCellPlace {
        int row;
        int column;
    };
    /// Puts out the cells that have been lit for kShowMs and adds them to the list.
    void End(int64_t now, std::vector<SCellPlace>& ended);

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
    std::vector<SCellPlace> m_cells;
};

} // namespace vx
