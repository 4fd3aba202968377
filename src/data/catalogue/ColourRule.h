// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vx {

/// By what the colour of a number is chosen.
enum class EColourRule : uint8_t {
    OfField,   ///< As the column's field does it.
    Direction, ///< Whether it rose or fell with its last change.
    Sign       ///< Whether it is above or below zero.
};

} // namespace vx
