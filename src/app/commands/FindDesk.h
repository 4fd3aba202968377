#pragma once

#include <QObject>

namespace vx {

class CCommands;
class CFindBar;
class CMainFrame;

/// Finds texts and symbols in the watchlist.
///
/// Owns    nothing of the frame, which outlives it
/// Thread  GUI thread only
class CFindDesk : public QObject {
    Q_OBJECT
public:
    CFindDesk(CMainFrame& frame, CCommands& commands);

private:
    void GoTo();

    CMainFrame& m_frame;
    CFindBar* m_bar;
};

} // namespace vx
