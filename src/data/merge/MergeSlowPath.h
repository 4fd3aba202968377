#pragma once

#include "data/merge/MergeKernel.h"

#include <string_view>

namespace vx::slowpath {

// What is rare in a stream or not worth a vector, shared by all kernels. The text is trimmed and not empty. Blocks are
// handed over by value, so that a kernel can keep its own in registers.

/// Handles the slots of kind Rare.
void MergeRareField(std::string_view text, const SSlot& slot, SFieldSlots block);

/// Adds a tick to the trend. A code without a mark leaves the trend and takes the direction away.
void MergeTick(int64_t code, const SSlot& slot, SFieldSlots block);

/// A price that is no plain decimal number: "Not Found", or whatever the lenient reader makes of it. Says which.
EPriceWord ClassifyPrice(std::string_view text);

} // namespace vx::slowpath
