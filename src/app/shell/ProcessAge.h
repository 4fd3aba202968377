#pragma once

#include <cstdint>
#include <optional>

namespace vx {

/// Milliseconds since the system started this process, the loading of its libraries included.
///
/// Units   as precise as the system's clock tick, usually 10 ms
/// Errors  nothing where the system does not tell
std::optional<int64_t> ProcessAgeMs();

} // namespace vx
