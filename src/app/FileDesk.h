#pragma once

#include "watchlist/WatchlistFile.h"

#include <QObject>

#include <string>

namespace vx {

class CCommands;
class CMainFrame;

/// The watchlist file in the user's hands: new, open, save and all that goes with it.
///
/// Owns    the file of the frame's document; nothing of the frame, which outlives it
/// Thread  GUI thread only
class CFileDesk : public QObject {
    Q_OBJECT
public:
    CFileDesk(CMainFrame& frame, CCommands& commands);

    /// Opens a watchlist file, and says in message boxes what did not go as expected.
    ///
    /// Shape   path: bytes as the system takes them
    /// Errors  false when it could not be opened; the document stays as it was
    bool Open(const std::string& path);
    void New();

    CWatchlistFile& File() { return m_file; }

private:
    CMainFrame& m_frame;
    CWatchlistFile m_file;
};

} // namespace vx
