#pragma once

#include "base/AtomicFile.h"

#include <QLocalServer>
#include <QObject>

#include <memory>
#include <string>
#include <vector>

class QLocalSocket;

namespace vx {

/// A running window's place in the user's runtime folder: a number that no other running window has, and a socket by
/// which it can be asked to save the workspace.
///
/// Shape   "watchlist-<number>.lock", held while the window runs, and "watchlist-<number>.socket"; a request is the
/// line
///         kSaveRequest, its answer "saved" or "failed" and a line feed
/// Errors  without a folder of the user's own there is no number, and nobody reaches the window; the log says why
/// Thread  GUI thread only
class CWindowSlot : public QObject {
    Q_OBJECT
public:
    static constexpr const char* kSaveRequest = "ZANTREL_SAVE_WORKSPACE\n";
    static constexpr int kMostWindows = 64;

    explicit CWindowSlot(std::string folder, QObject* parent);

    /// 1 and up; 0 for none.
    int Number() const { return m_number; }
    /// Whether a window with this number runs.
    bool Runs(int number) const;
    /// Asks every other running window to save the workspace, without waiting for the answers.
    void AskOthers() const;
    /// Tells who asked what came of it.
    void Answer(bool saved);

Q_SIGNALS:
    void SaveAsked();

private:
    void OnConnection();
    void OnRequest(QLocalSocket& socket);

    std::string m_folder;
    int m_number = 0;
    std::unique_ptr<CFileLock> m_lock;
    QLocalServer m_server;
    std::vector<QLocalSocket*> m_waiting; ///< Children of the server.
};

/// What came of asking all running windows.
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

} // namespace vx
