#include "grid/CellFlash.h"

#include <algorithm>

namespace vx {

void CCellFlash::SetVisible(const CGridGeometry& geometry) {
    m_visible.Set(geometry);
    m_columns = static_cast<unsigned>(geometry.ColumnCount()) + 1;
    m_started.assign(size_t{m_visible.Count()} * m_columns, kNever);
    m_lit.assign(m_started.size(), 0);
    m_cells.clear();
}

void CCellFlash::End(int64_t now, std::vector<SCellPlace>& ended) {
    const auto isOver = [&](const SCellPlace& place) {
        const size_t i = Index(place.row, place.column);
        if (now - m_started[i] < kShowMs) return false;
        m_lit[i] = 0;
        ended.push_back(place);
        return true;
    };
    m_cells.erase(std::remove_if(m_cells.begin(), m_cells.end(), isOver), m_cells.end());
}

} // namespace vx
