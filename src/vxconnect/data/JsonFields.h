// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vx::sim {

/// One member of a JSON object, in UTF-8: the text itself, not what a number type makes of it.
struct SJsonField {
    std::string name;
    /// A text without its quotes, a number as it is written, "1" or "0" for a truth value, empty for null.
    std::string value;
    bool nested = false; ///< The value is an object or a list and is left out.
};

/// Reads one JSON object, its members in their order; a name that occurs twice is there twice.
///
/// Shape   line: UTF-8, else Windows-1252
/// Returns what is wrong with the line, empty for nothing
std::string ReadJsonLine(std::string_view line, std::vector<SJsonField>& out);

} // namespace vx::sim
