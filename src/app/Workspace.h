#pragma once

#include "watchlist/WatchlistFrame.h"

#include <functional>
#include <string>

namespace vx {

class CRegistry;

/// One window as the workspace keeps it.
struct SWorkspaceWindow {
    int number = 1;      ///< Among the running windows.
    std::string file;    ///< Of the document, bytes as the system takes them; empty for none.
    std::string symbols; ///< As the command line named them; counts without a file.
    std::string type;    ///< -type and -interval, as the command line gave them.
    std::string interval;
    SPlacement placement;
    bool minimised = false;
};

/// The name of a window's value in the workspace.
std::string WorkspaceValueName(int number);

/// The command that starts a window as it stands: program and document, then " -max", " -min" or the edges.
///
/// Shape   one line of a POSIX shell; bytes as they are
std::string WorkspaceText(const SWorkspaceWindow& window);

/// Writes a window into the saved workspace, and takes out those of our windows that no longer run.
///
/// Shape   runs: whether a window with a number runs
/// Errors  0, or the number of CRegistry::LastError when nothing was written
int SaveToWorkspace(CRegistry& registry, const SWorkspaceWindow& window, const std::function<bool(int)>& runs);

/// What the user reads when the workspace could not be written.
std::string WorkspaceError(const std::string& name, int error);
inline constexpr const char* kWorkspaceErrorCaption = "Zantrel Workspace Create Error";

} // namespace vx
