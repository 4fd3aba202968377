// SPDX-License-Identifier: MIT
#pragma once

#include "grid/CellSource.h"

#include <algorithm>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vx {

/// Remembers what was last painted in each of the cells on the screen, as one number per cell.
///
/// Shape   rows share places modulo kRows, more than a screen shows, by where they stand among the shown ones; a cell
///         that was never painted, or whose place another row took, matches nothing
/// Thread  GUI thread only; nothing allocates after SetColumnCount
class CPaintedCells {
public:
    static constexpr size_t kRows = 512;

    /// columns: grid columns, the row-number column included. Forgets everything.
    void SetColumnCount(size_t columns) {
        m_columns = columns;
        m_cells.assign(kRows * columns, {});
    }

    /// rowPlace: where the row stands among the shown ones.
    void Note(int row, int rowPlace, int column, const SCell& cell) {
        if (SPlace* place = Place(rowPlace, column)) *place = {row, Fingerprint(cell)};
    }
    bool Matches(int row, int rowPlace, int column, const SCell& cell) const {
        const SPlace* place = const_cast<CPaintedCells*>(this)->Place(rowPlace, column);
        return place && place->row == row && place->fingerprint == Fingerprint(cell);
    }

    /// Whether a row was painted with a hint over its cells.
    void NoteHint(int rowPlace, bool painted) { m_notices[PlaceOf(rowPlace)] = painted; }
    bool HasHint(int rowPlace) const { return m_notices[PlaceOf(rowPlace)]; }

    /// A number that differs for cells that look different, but for one case in four billion.
    static uint32_t Fingerprint(const SCell& cell);

private:
    struct SPlace {
        int row = 0;
        uint32_t fingerprint = 0;
    };

    static size_t PlaceOf(int row) { return static_cast<size_t>(std::max(row, 0)) % kRows; }
    SPlace* Place(int rowPlace, int column) {
        if (rowPlace < 1 || column < 0 || static_cast<size_t>(column) >= m_columns) return nullptr;
        return &m_cells[static_cast<size_t>(rowPlace) % kRows * m_columns + static_cast<size_t>(column)];
    }

    size_t m_columns = 0;
    std::vector<SPlace> m_cells;
    std::bitset<kRows> m_notices;
};

} // namespace vx
