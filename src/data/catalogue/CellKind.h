// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

namespace vx {

/// The lines around a cell, by their number in a cell format.
enum class EBorder : int32_t {
    None = 0,
    Thin = 1, ///< At all four sides.
    Thick = 2,
    Bottom = 3, ///< Under the cell.
    Box = 4     ///< Where the neighbour has no box: around a block of cells that have one.
};

/// As what the number of a cell is shown, by the number in a cell format.
enum class ECellKind : int32_t {
    Plain = 0,
    Bar = 1,   ///< A bar as long as the number is beside the greatest of its column.
    Range = 2, ///< Where Open and Last are between Low and High of the day.
    Heat = 3   ///< A background that is the stronger, the greater the number is.
};

/// What users read, by number.
inline constexpr std::array kBorderNames = {"None", "Thin", "Thick", "Bottom", "Box"};
inline constexpr std::array kCellKindNames = {"Number", "Bar", "Range of the day", "Heat"};

/// What is drawn for a number of a format; one that is not known is kept, and draws nothing.
constexpr EBorder BorderOf(int32_t number) {
    return number >= 0 && number < static_cast<int32_t>(kBorderNames.size()) ? static_cast<EBorder>(number)
                                                                             : EBorder::None;
}
constexpr ECellKind CellKindOf(int32_t number) {
    return number >= 0 && number < static_cast<int32_t>(kCellKindNames.size()) ? static_cast<ECellKind>(number)
                                                                               : ECellKind::Plain;
}

} // namespace vx
