#pragma once

#include <QObject>

namespace vx {

class CCommands;
class CMainFrame;

/// Opens the windows that look further than the board: symbol search, headlines, time and sales.
///
/// Owns    nothing of the frame, which outlives it
/// Thread  GUI thread only
class CMarketDesk : public QObject {
    Q_OBJECT
public:
    CMarketDesk(CMainFrame& frame, CCommands& commands);

private:
    CMainFrame& m_frame;
};

} // namespace vx
