#pragma once

#include <string_view>

namespace vx {

// Names under which the program's windows register the messages that they post to each other.

/// Records changed: the window drains its CChangeQueue. The two parameters of a notice are the record's identifiers.
inline constexpr std::string_view kPaintMessageName = "VXDOCS PAINT MSG";
/// The feed's connection state changed; the first parameter is 1 or 0.
inline constexpr std::string_view kConnectStatusMessageName = "VXDOCS CONNECT STATUS MSG";
/// Somebody saves the workspace: each window notes where it stands and what it shows.
inline constexpr std::string_view kSaveWorkspaceMessageName = "ZANTREL_SAVE_WORKSPACE";

} // namespace vx
