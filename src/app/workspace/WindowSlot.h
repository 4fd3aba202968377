#pragma once

#include "base/AtomicFile.h"

#include <QLocalServer>
#include <QObject>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QLocalSocket;

namespace vx {

/// A running window's place in the user's runtime folder: a number that no other running window has, and a socket by
/// which other programs reach it.
///
/// Shape   "watchlist-<number>.lock", held while the window runs, and "watchlist-<number>.socket"; a request is one of
///         the lines below, and the connection ends with its answer
/// Errors  without a folder of the user's own there is no number, and nobody reaches the window; the log says why
/// Thread  GUI thread only
class CWindowSlot : public QObject {
    Q_OBJECT
public:
    /// Save the workspace: "saved" or "failed" and a line feed.
    static constexpr const char* kSaveRequest = "ZANTREL_SAVE_WORKSPACE\n";
    /// What the window shows and where: the command that starts it as it stands.
    static constexpr const char* kTellRequest = "ZANTREL_TELL_WINDOW\n";
    /// Bring the window up: "shown" and a line feed.
    static constexpr const char* kShowRequest = "ZANTREL_SHOW_WINDOW\n";
    static constexpr int kMostWindows = 64;

    static std::string LockName(const std::string& folder, int number);
    static std::string SocketName(const std::string& folder, int number);

    /// tell: answers kTellRequest.
    CWindowSlot(std::string folder, std::function<std::string()> tell, QObject* parent);

    /// 1 and up; 0 for none.
    int Number() const { return m_number; }
    const std::string& Folder() const { return m_folder; }
    /// Whether a window with this number runs.
    bool Runs(int number) const;
    /// Asks every other running window to save the workspace, without waiting for the answers.
    void AskOthers() const;
    /// Tells who asked what came of it.
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
    QLocalServer m_server;
    std::vector<QLocalSocket*> m_waiting; ///< Children of the server.
};

} // namespace vx
