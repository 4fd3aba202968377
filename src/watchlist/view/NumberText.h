// SPDX-License-Identifier: MIT
#pragma once

#include "data/text/CellText.h"
#include "watchlist/document/ColumnMap.h"

#include <cstddef>
#include <span>

namespace vx {

/// Rewrites the text of a number as its column has it drawn: from a thousand on in short form, "1.2 K" to "1.2 T", and
/// with "," between the thousands. A sign, and what follows the number, stay.
///
/// Shape   the bytes of the text -> the bytes of the text drawn; a text that does not begin with a number, or that
///         would be too long, stays as it is
/// Owns    nothing, and allocates nothing
size_t DrawNumber(const SColumnLook& look, std::span<char, kMostCellText> text, size_t length);

} // namespace vx
