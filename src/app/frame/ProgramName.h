// SPDX-License-Identifier: MIT
#pragma once

namespace vx {

/// The program's name for people.
inline constexpr const char* kProgramName = "Zantrel Watchlist";

} // namespace vx
