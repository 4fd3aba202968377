// SPDX-License-Identifier: MIT
#pragma once

#include "app/commands/CommandGroup.h"

#include <QString>

namespace vx {

class CMainMenus;
struct SBooleanSetting;
struct SWatchlistOptions;

/// How the grid looks: what is shown around the cells, lines and shading, the theme.
///
/// Thread  GUI thread only
class CViewCommands : public CCommandGroup {
    Q_OBJECT
public:
    CViewCommands(const SFrameContext& context, QObject* parent, CMainMenus& menus);

    /// name: as in the setting of the theme; keep: also from the next start on.
    void UseTheme(const QString& name, bool keep);

private:
    /// Ties a checkable command to a setting of the grid's look.
    void BindSwitch(ECommand command, const SBooleanSetting& setting);
    /// Ties one to an option that is saved with the watchlist. what: its name in an undo step.
    void BindOption(ECommand command, bool SWatchlistOptions::*option, const char* what);
    void FillThemeMenu();
    void ShowToolBar();

    CMainMenus& m_menus;
};

} // namespace vx
