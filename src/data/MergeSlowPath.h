#pragma once

#include "data/MergeKernel.h"

#include <string_view>

namespace vx::slowpath {

// The rules that are rare in a stream, shared by all kernels. The text is trimmed and not empty.

/// Handles every rule but the plain numbers and texts.
void MergeRareField(std::string_view text, const SSlot& slot, const SFieldSlots& block);

/// A price that is no plain decimal number: "Not Found", or whatever the lenient reader makes of it. Says which.
EPriceWord ClassifyPrice(std::string_view text);

} // namespace vx::slowpath
