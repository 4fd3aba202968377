#pragma once

#include "alerts/AlertNotice.h"

#include <QObject>

namespace vx {

class CCommands;
class CMainFrame;

/// Tells the user of the alerts that fire, and opens the windows in which they are set.
///
/// Owns    nothing of the frame, which outlives it
/// Thread  GUI thread only
class CAlertDesk : public QObject, public CAlertNotices {
    Q_OBJECT
public:
    CAlertDesk(CMainFrame& frame, CCommands& commands);

    void PostNotice(std::string record) override;
    void PostNewsNotice(SAlertNotice notice) override;

private:
    CMainFrame& m_frame;
};

} // namespace vx
