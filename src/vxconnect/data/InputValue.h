#pragma once

#include "vxconnect/common/InputFields.h"

#include <optional>
#include <string>
#include <string_view>

namespace vx::sim {

/// A value as the wire has it, or why it cannot stand there.
struct SInputValue {
    std::string text;
    std::string error;   ///< "\"abc\" is not a number", empty when all is well.
    std::string date;    ///< The day that was given with a time; else empty.
    bool capped = false; ///< The text is the largest number that the wire has, smaller than the one given.
};

/// Reads one value of a user's own data.
///
/// Shape   text: Windows-1252, not empty, blanks around it aside; commas in texts are dropped
SInputValue ReadInputValue(EInputKind kind, std::string_view text);

} // namespace vx::sim
