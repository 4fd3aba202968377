// SPDX-License-Identifier: MIT
#include "grid/DirtyCells.h"

#include <algorithm>

namespace vx {

void CCellFlash::SetVisible(const CGridGeometry& geometry) {
    m_visible.Set(geometry);
    m_columns = static_cast<unsigned>(geometry.ColumnCount()) + 1;
    m_started.assign(size_t{m_visible.Count()} * m_columns, kNever);
    m_lit.assign(m_started.size(), 0);
    m_cells.clear();
}

void CCellFlash::End(int64_t now, std::vector<SGridCell>& ended) {
    const auto isOver = [&](const SGridCell& cell) {
        const size_t i = Index(cell.row, cell.column);
        if (now - m_started[i] < kShowMs) return false;
        m_lit[i] = 0;
        ended.push_back(cell);
        return true;
    };
    m_cells.erase(std::remove_if(m_cells.begin(), m_cells.end(), isOver), m_cells.end());
}

namespace {
// Above this many pieces one rectangle around all of them is cheaper to clip and paint.
constexpr size_t kMaxPieces = 512;
} // namespace

void CDirtyCells::SetVisible(const CGridGeometry& geometry) {
    m_visible.Set(geometry);
    const auto columns = static_cast<size_t>(geometry.ColumnCount()) + 1;
    m_words = (columns + 63) / 64;
    m_columnVisible.assign(columns, 0);
    for (int c = 0; c <= geometry.ColumnCount(); ++c)
        m_columnVisible[static_cast<size_t>(c)] =
            geometry.ColumnWidth(c) > 0 &&
            (geometry.IsFixed(c) || (c >= geometry.FirstScrolledColumn() && c <= geometry.LastScrolledColumn()));
    m_bits.assign(m_visible.Count() * m_words, 0);
    m_wholeRow.assign(m_visible.Count(), 0);
    m_any = false;
}

QRegion CDirtyCells::Take(const CGridGeometry& geometry, CCellFlash* flash, int64_t now) {
    if (!m_any) return {};
    m_rects.clear();
    for (unsigned r = 0; r < m_visible.Count(); ++r) TakeRow(geometry, r, flash, now);
    m_any = false;
    QRegion region;
    if (m_rects.size() > kMaxPieces) {
        QRect all;
        for (const QRect& rect : m_rects) all |= rect;
        return all;
    }
    // Row by row and left to right, the order that a region keeps its rectangles in.
    region.setRects(m_rects.data(), static_cast<int>(m_rects.size()));
    return region;
}

void CDirtyCells::TakeRow(const CGridGeometry& geometry, unsigned r, CCellFlash* flash, int64_t now) {
    uint64_t* words = m_bits.data() + r * m_words;
    const int row = m_visible.Row(r);
    if (m_wholeRow[r] != 0) {
        m_wholeRow[r] = 0;
        std::fill_n(words, m_words, uint64_t{0});
        const QRect place(0, geometry.HeaderHeight(), geometry.Viewport().width(), geometry.ScrolledHeight());
        AddRect(place.intersected({0, geometry.RowTop(row), place.width(), geometry.RowHeight()}));
        return;
    }
    for (size_t w = 0; w < m_words; ++w)
        while (words[w] != 0) {
            const int column = static_cast<int>(w * 64) + __builtin_ctzll(words[w]);
            words[w] &= words[w] - 1;
            if (flash != nullptr && column > 0) flash->Start(row, column, now);
            AddRect(geometry.VisibleCellRect(row, column));
        }
}

void CDirtyCells::AddRect(const QRect& rect) {
    if (rect.isEmpty()) return;
    if (!m_rects.empty()) {
        QRect& last = m_rects.back();
        if (last.top() == rect.top() && last.height() == rect.height() && last.right() + 1 == rect.left()) {
            last.setRight(rect.right());
            return;
        }
    }
    m_rects.push_back(rect);
}

} // namespace vx
