#pragma once

#include "feed/socket/FeedOwner.h"

#include <array>

namespace vx {

using LineHandler = void (CFeedOwner::*)(std::string_view line);

/// Which handler of the owner takes a line, by the line's first byte.
extern const std::array<LineHandler, 256> kLineHandlers;

} // namespace vx
