#pragma once

#include "watchlist/Commands.h"

#include <QObject>

namespace vx {

class CMainFrame;
struct SBooleanSetting;

/// Carries out the commands that edit, arrange and show the rows and columns of the watchlist.
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
    /// Ties a checkable command to a setting of the grid's look.
    void BindSwitch(ECommand command, const SBooleanSetting& setting);
    void FillThemeMenu();

    CMainFrame& m_frame;
    CCommands& m_commands;
};

} // namespace vx
