#pragma once

namespace vx {

// The product and version that the feed client is started with. They are part of the protocol: the version stays as it
// is when a release gets another number, which is the project's in CMakeLists.txt.

inline constexpr const char* kProductId = "ZANTREL_WATCHLIST";
inline constexpr const char* kLaunchVersion = "1.8.3.0";

} // namespace vx
