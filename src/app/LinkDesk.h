#pragma once

#include <QObject>

namespace vx {

class CCommands;
class CMainFrame;

/// Starts the sibling programs, keeps the window on top and saves its place for the workspace.
///
/// Owns    nothing of the frame, which outlives it
/// Thread  GUI thread only
class CLinkDesk : public QObject {
    Q_OBJECT
public:
    CLinkDesk(CMainFrame& frame, CCommands& commands);

private:
    CMainFrame& m_frame;
};

} // namespace vx
