// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

namespace vx {

class CMainMenus;
class CViewCommands;
struct SFrameContext;

/// Carries out the commands that edit, arrange and show the rows and columns of the watchlist: owns the groups of them,
/// opens what a double click on a cell asks for, and updates the states of the commands when the grid changed.
///
/// Owns    nothing of the context
/// Thread  GUI thread only
class CGridCommands : public QObject {
    Q_OBJECT
public:
    CGridCommands(const SFrameContext& context, CMainMenus& menus);

    /// name: as in the setting of the theme; keep: also from the next start on.
    void UseTheme(const QString& name, bool keep);

private:
    void OpenDetail(int column);

    const SFrameContext& m_context;
    CViewCommands* m_view = nullptr;
};

} // namespace vx
