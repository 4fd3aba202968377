#pragma once

#include <QObject>
#include <QString>

namespace vx {

class CMainMenus;
class CViewCommands;
struct SBoardContext;

/// Carries out the commands that edit, arrange and show the rows and columns of the watchlist: owns the groups of them,
/// opens what a double click on a cell asks for, and has the commands look at the board again when it changed.
///
/// Owns    nothing of the context
/// Thread  GUI thread only
class CBoardDesk : public QObject {
    Q_OBJECT
public:
    CBoardDesk(const SBoardContext& context, CMainMenus& menus);

    /// name: as in the setting of the theme; keep: also from the next start on.
    void UseTheme(const QString& name, bool keep);

private:
    void OpenDetail(int column);

    const SBoardContext& m_context;
    CViewCommands* m_view = nullptr;
};

} // namespace vx
