#pragma once

#include "watchlist/document/WatchlistFrame.h"

#include <QObject>

#include <string>

namespace vx {

class CCommands;
class CMainFrame;
class CWindowSlot;
struct SWorkspaceWindow;

/// The window among the other windows of the program: opens new ones, brings the one up that has a file, keeps its own
/// place apart from theirs, stays on top, and saves and opens the workspace of all.
///
/// Owns    the window's slot among the running windows; nothing of the frame, which outlives it
/// Thread  GUI thread only
class CWindowDesk : public QObject {
    Q_OBJECT
public:
    CWindowDesk(CMainFrame& frame, CCommands& commands);

    /// Writes this window into the workspace: the registered message arrived.
    void SaveWorkspace();
    /// Brings another window up that has the file open; false when there is none.
    bool ShowOther(const std::string& path);
    /// A place for this window at which it does not hide another one.
    SPlacement BesideOthers(const SPlacement& placement) const;

private:
    SWorkspaceWindow Describe() const;
    void SaveAllWindows();
    void PostSaveMessage();
    void OpenStored();
    void BringUp();

    CMainFrame& m_frame;
    CWindowSlot* m_slot = nullptr; ///< A child; null in a run that only makes a picture.
};

} // namespace vx
