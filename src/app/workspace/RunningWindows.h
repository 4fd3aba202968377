// SPDX-License-Identifier: MIT
#pragma once

#include "app/frame/NorvCommandLineInfo.h"
#include "base/AtomicFile.h"

#include <QLocalServer>
#include <QObject>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QLocalSocket;

namespace vx {

/// A running window's registration in the user's runtime folder: a number that no other running window has, and a
/// socket through which other programs reach it.
///
/// Shape   "watchlist-<number>.lock", held while the window runs, and "watchlist-<number>.socket"; a request is one of
///         the lines below, and the connection ends with its answer
/// Errors  without a folder of the user's own there is no number, and nobody reaches the window; the log says why
class CWindowRegistration : public QObject {
    Q_OBJECT
public:
    /// Save the workspace: "saved" or "failed" and a line feed.
    static constexpr const char* kSaveRequest = "ZANTREL_SAVE_WORKSPACE\n";
    /// What the window shows and where: the command that starts it as it is.
    static constexpr const char* kTellRequest = "ZANTREL_TELL_WINDOW\n";
    /// Bring the window up: "shown" and a line feed.
    static constexpr const char* kShowRequest = "ZANTREL_SHOW_WINDOW\n";
    static constexpr int kMostWindows = 64;

    static std::string LockName(const std::string& folder, int number);
    static std::string SocketName(const std::string& folder, int number);

    /// tell: answers kTellRequest.
    CWindowRegistration(std::string folder, std::function<std::string()> tell, QObject* parent);

    /// 1 and up; 0 for none.
    int Number() const { return m_number; }
    const std::string& Folder() const { return m_folder; }
    /// Whether a window with this number runs.
    bool Runs(int number) const;
    /// Asks every other running window to save the workspace, without waiting for the answers.
    void AskOthers() const;
    /// Answers the requests with the outcome.
    void Answer(bool saved);

Q_SIGNALS:
    void SaveAsked();
    void ShowAsked();

private:
    void OnConnection();
    void OnRequest(QLocalSocket& socket);

    std::string m_folder;
    std::function<std::string()> m_tell;
    int m_number = 0;
    std::unique_ptr<CFileLock> m_lock;
    std::vector<QLocalSocket*> m_waiting; ///< Children of the server, which takes each out when it goes.
    QLocalServer m_server;
};

// The windows of the program that run on this computer, each of them a process of its own with a CWindowRegistration.

/// Sends a request to a window.
///
/// Errors  false when no window has the number, or it does not take the request
bool AskWindow(QLocalSocket& socket, const std::string& folder, int number, const char* request);

/// The outcome of asking all running windows to save the workspace.
struct SWorkspaceCall {
    int windows = 0; ///< That were reached.
    int saved = 0;   ///< That said that they saved.
};

/// Asks every running window to save the workspace, and waits for the answers. Sockets that nobody listens on any more
/// are removed.
///
/// Units   waitMs: for each window
/// Thread  any, with or without an event loop
SWorkspaceCall CallWindows(const std::string& folder, int waitMs);

/// A running window as it describes itself.
struct SRunningWindow {
    int number = 0;
    CNorvCommandLineInfo shows; ///< What would start it as it stands: its file or symbols, and its edges.
};

/// All running windows except one, lowest number first. A window that does not answer within half a second is left out.
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
