// SPDX-License-Identifier: MIT
#pragma once

#include "base/fields/QuoteFields.h"

#include <string>

namespace vx {

/// The list of update fields as the level-1 session sends it: the names with "," between them and LF at the end.
/// The LF belongs to the text; the session's command adds one more.
const std::string& UpdateFieldList();

} // namespace vx
