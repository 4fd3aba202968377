#pragma once

#include "app/frame/NorvCommandLineInfo.h"

#include <string>
#include <vector>

class QLocalSocket;

namespace vx {

// The windows of the program that run on this computer, each of them a process of its own with a CWindowSlot.

/// Sends a request to a window.
///
/// Errors  false when no window has the number, or it does not take the request
bool AskWindow(QLocalSocket& socket, const std::string& folder, int number, const char* request);

/// What came of asking all running windows to save the workspace.
struct SWorkspaceCall {
    int windows = 0; ///< That were reached.
    int saved = 0;   ///< That said that they saved.
};

/// Asks every running window to save the workspace, and waits for the answers. Sockets that nobody listens at any more
/// are removed.
///
/// Units   waitMs: for each window
/// Thread  any, with or without an event loop
SWorkspaceCall CallWindows(const std::string& folder, int waitMs);

/// A running window as it says of itself.
struct SRunningWindow {
    int number = 0;
    CNorvCommandLineInfo shows; ///< What would start it as it stands: its file or symbols, and its edges.
};

/// The running windows but one, lowest number first. A window that does not answer within half a second is left out.
///
/// Thread  any, with or without an event loop
std::vector<SRunningWindow> RunningWindows(const std::string& folder, int except);

/// Brings the window up that has a file open, if there is one; links lead to the same file.
///
/// Returns whether there is one
/// Thread  any, with or without an event loop
bool ShowWindowWithFile(const std::string& folder, int except, const std::string& path);

/// Starts another window of this program with arguments, bytes as they are. A file among them is opened even when a
/// window has it.
///
/// Errors  0, or the error number of StartProgram
int StartWindow(const std::vector<std::string>& arguments);
std::string WindowStartError(int error);

/// Whether two paths lead to the same file.
bool IsSameFile(const std::string& one, const std::string& other);

} // namespace vx
