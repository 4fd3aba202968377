// SPDX-License-Identifier: MIT
#pragma once

#include "app/files/RecoveryController.h"

#include <QObject>
#include <QPointer>

namespace vx {

class CMainFrame;

/// Ends the program without a question when the system asks for it (SIGTERM, SIGINT, SIGHUP) or the session does, and
/// leaves unsaved changes where the next start finds them. The same when the display is lost: then the toolkit calls
/// exit() from its event loop.
///
/// A signal that was ignored when the program started, as by nohup, stays ignored. There is at most one of these.
class CSessionEnd : public QObject {
    Q_OBJECT
public:
    explicit CSessionEnd(CMainFrame& frame);
    ~CSessionEnd() override;

private:
    static void AtExit();
    void OnSignal();
    void Leave();

    CMainFrame& m_frame;
    QPointer<CRecoveryController> m_recovery; ///< It goes before its frame.
    int m_pipe[2] = {-1, -1};
};

} // namespace vx
