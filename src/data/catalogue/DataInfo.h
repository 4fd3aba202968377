// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

namespace vx {

/// The default number of decimal places of the columns that have one, by short name. A few keys are spellings that no
/// column uses any more; they stay, and give nothing to the columns that replaced them.
///
/// Thread  any
class CDataInfo {
public:
    /// Default places of a column, nothing when the map has no such key.
    static std::optional<int> DecimalPlaces(std::string_view name);
};

} // namespace vx
