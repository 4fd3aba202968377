#pragma once

namespace vx {

// Under what product and version the feed client is started; the version is the program's.

inline constexpr const char* kProductId = "ZANTREL_WATCHLIST";
inline constexpr const char* kProgramVersion = "1.8.3.0";

} // namespace vx
