// SPDX-License-Identifier: MIT
#pragma once

#include "grid/GridGeometry.h"
#include "grid/GridSelection.h"
#include "grid/GridTheme.h"

#include <QRegion>
#include <cstdint>
#include <optional>

class QPainter;

namespace vx {

enum class ESortMark : uint8_t { None, Ascending, Descending };

/// What a grid shows beside and on top of its cells: the column it is sorted by, where a drag would put something, and
/// the range that was copied.
///
/// Shape   0: no such row or column; an insertion is before its row or column, count + 1 is after the last one
struct SGridMarks {
    int sortColumn = 0;
    ESortMark sort = ESortMark::None;
    int insertColumn = 0;
    int insertRow = 0;
    int dropRow = 0;
    std::optional<SGridRange> copied;

    ESortMark SortOf(int column) const { return column == sortColumn ? sort : ESortMark::None; }
    bool AnyOnTop() const { return insertColumn > 0 || insertRow > 0 || dropRow > 0 || copied.has_value(); }
    bool operator==(const SGridMarks&) const = default;
};

/// The places of a viewport where the marks on top of the cells stand.
QRegion PlacesOfMarks(const SGridMarks& marks, const CGridGeometry& geometry);

/// Paints the marks on top of the cells; the painter's coordinates are the viewport's logical pixels.
void PaintMarks(QPainter& painter, const SGridMarks& marks, const CGridGeometry& geometry, const SGridTheme& theme);

} // namespace vx
