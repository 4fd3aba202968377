// SPDX-License-Identifier: MIT
#pragma once

#include "data/catalogue/Catalogue.h"

#include <span>

namespace vx {

/// The level-1 columns in catalogue order.
std::span<const SFieldEntry, kLevel1ColumnCount> Level1Columns();

} // namespace vx
