// SPDX-License-Identifier: MIT
#include "grid/CellSource.h"

#include <charconv>

namespace vx {

void CCellSource::FillRowNumber(int row, SCell& cell) const {
    const auto end = std::to_chars(cell.text, cell.text + SCell::kMaxLength, row);
    cell.length = static_cast<uint16_t>(end.ptr - cell.text);
    cell.align = EAlign::Right;
}

} // namespace vx
