// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/WatchlistFrame.h"

#include <QObject>

#include <string>

namespace vx {

class CFileController;
class CNorvCommandLineInfo;
class CWindowRegistration;
struct SWorkspaceWindow;
struct SFrameContext;

/// Handles this window among the other windows of the program: opens new ones, brings the one up that has a file, keeps
/// its own place apart from theirs, stays on top, and saves and opens the workspace of all.
///
/// Owns    the window's registration among the running windows
class CWindowController : public QObject {
    Q_OBJECT
public:
    CWindowController(const SFrameContext& context, CFileController& files, const CNorvCommandLineInfo& commandLine);

    /// Brings another window up that has the file open; false when there is none.
    bool ShowOther(const std::string& path);
    /// A place for this window at which it does not hide another one.
    SPlacement BesideOthers(const SPlacement& placement) const;

protected:
    /// The registered message that saves the workspace.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SaveWorkspace();
    SWorkspaceWindow Describe() const;
    void SaveAllWindows();
    void PostSaveMessage();
    void OpenStored();
    void BringUp();

    const SFrameContext& m_context;
    CFileController& m_files;
    const CNorvCommandLineInfo& m_commandLine;
    CWindowRegistration* m_registration = nullptr; ///< A child; null in a run that only makes a picture.
};

} // namespace vx
