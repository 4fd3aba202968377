#pragma once

#include <string_view>

namespace vx {

// The keys that the program uses in the registry of the current user, each spelled in this one place.

/// How the program starts: the feed client's ports and the log folder.
inline constexpr std::string_view kStartupKey = "Software\\Norv\\Zantrel\\Startup";
/// One text per program and saved workspace.
inline constexpr std::string_view kWorkspacesKey = "Software\\Norv\\Zantrel\\Workspaces";
/// What the display programs share: recent files and window state of the application framework.
inline constexpr std::string_view kApplicationProfileKey = "Software\\Norv\\Zantrel\\DisplayApps";
/// The watchlist files that were opened or saved last: texts "File1" to "File10", the latest first.
inline constexpr std::string_view kRecentFilesKey = "Software\\Norv\\Zantrel\\DisplayApps\\Watchlist\\Recent File List";
/// The application-wide settings of the watchlist; docs/settings.md lists them.
inline constexpr std::string_view kApplicationSettingsKey =
    "Software\\Norv\\Zantrel\\DisplayApps\\Watchlist\\Application Settings";

/// Values of kStartupKey: decimal port numbers as text, and the log folder.
inline constexpr std::string_view kLevel1PortValue = "Level1Port";
inline constexpr std::string_view kLookupPortValue = "LookupPort";
inline constexpr std::string_view kAdminPortValue = "AdminPort";
inline constexpr std::string_view kLogPathValue = "LogPath";

} // namespace vx
