#pragma once

#include "grid/CellFlash.h"
#include "grid/GridGeometry.h"
#include "grid/VisibleRows.h"

#include <QRegion>
#include <cstdint>
#include <vector>

namespace vx {

/// Which of the cells on the screen have changed since they were last painted. A change elsewhere costs two
/// comparisons and leaves no trace.
///
/// Thread  GUI thread only
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
