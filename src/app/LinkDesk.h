#pragma once

#include <QObject>

#include <string>

namespace vx {

class CCommands;
class CMainFrame;
class CWindowSlot;
enum class ECommand;

/// Starts the sibling programs, keeps the window on top and saves its place for the workspace.
///
/// Owns    the window's slot among the running windows; nothing of the frame, which outlives it
/// Thread  GUI thread only
class CLinkDesk : public QObject {
    Q_OBJECT
public:
    CLinkDesk(CMainFrame& frame, CCommands& commands);

    /// Writes this window into the workspace: the registered message arrived.
    void SaveWorkspace();

private:
    void BindLinks(CCommands& commands);
    std::string RowSymbol() const;
    void PostSaveMessage();
    void SaveAllWindows();

    CMainFrame& m_frame;
    CWindowSlot* m_slot = nullptr; ///< A child; null in a run that only makes a picture.
};

} // namespace vx
