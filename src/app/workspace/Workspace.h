// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/WatchlistFrame.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

class CRegistry;
struct SRunningWindow;

/// This program, as it is started.
inline constexpr const char* kWatchlistProgram = "zantrel-watchlist";

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

/// The command that starts a window as it is: program and document, then " -max", " -min" or the edges.
///
/// Shape   one line of a POSIX shell; bytes as they are
std::string WorkspaceText(const SWorkspaceWindow& window);

/// Takes WorkspaceText back: what follows the program's name, cut at blanks as the shell would, with its quotes.
///
/// Errors  nothing for a command of another program, and for one whose quotes do not end
std::optional<std::vector<std::string>> WorkspaceArguments(std::string_view text);

/// Writes a window into the saved workspace, and takes out those of our windows that no longer run.
///
/// Shape   runs: whether a window with a number runs
/// Errors  0, or the number of CRegistry::LastError when nothing was written
int SaveToWorkspace(CRegistry& registry, const SWorkspaceWindow& window, const std::function<bool(int)>& runs);

/// The outcome of opening the saved workspace.
struct SOpenedWorkspace {
    int stored = 0;  ///< Windows that it has.
    int started = 0; ///< Of them, windows that were started, and windows that were open already.
    int open = 0;
    std::vector<std::string> problems; ///< A sentence for each of the others.

    bool IsWhole() const { return stored > 0 && problems.empty(); }
};

/// Starts the windows of the saved workspace in the order of their numbers, but those that are open already and those
/// whose file is no longer there. Values of other programs are left alone.
///
/// Shape   start: starts this program with arguments, bytes as they are, and returns an error number or 0
SOpenedWorkspace OpenWorkspace(CRegistry& registry, std::vector<SRunningWindow> running,
                               const std::function<int(const std::vector<std::string>&)>& start);

/// The message to the user when it is not whole; Windows-1252.
std::string WorkspaceProblems(const SOpenedWorkspace& opened);

/// The message to the user when the workspace could not be written.
std::string WorkspaceError(const std::string& name, int error);
inline constexpr const char* kWorkspaceErrorCaption = "Zantrel Workspace Create Error";

} // namespace vx
