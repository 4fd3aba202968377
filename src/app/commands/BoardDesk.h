#pragma once

#include "app/commands/Commands.h"

#include <QObject>

namespace vx {

class CMainFrame;
class CViewCommands;

/// Carries out the commands that edit, arrange and show the rows and columns of the watchlist: owns the groups of them,
/// opens what a double click on a cell asks for, and has the commands look at the board again when it changed.
///
/// Owns    nothing of the frame, which outlives it
/// Thread  GUI thread only
class CBoardDesk : public QObject {
    Q_OBJECT
public:
    CBoardDesk(CMainFrame& frame, CCommands& commands);

    /// name: as in the setting of the theme; keep: also from the next start on.
    void UseTheme(const QString& name, bool keep);

private:
    void OpenDetail(int column);

    CMainFrame& m_frame;
    CCommands& m_commands;
    CViewCommands* m_view = nullptr;
};

} // namespace vx
