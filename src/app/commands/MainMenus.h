// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <map>

class QMainWindow;
class QMenu;
class QToolBar;

namespace vx {

class CCommands;

/// The menu bar and the tool bar of the main frame, made of the program's commands.
///
/// Shape   menus that are filled as they open, such as the recent files, are found by their object name
/// Owns    nothing: menus and tool bar are the window's
/// Thread  GUI thread only
class CMainMenus : public QObject {
    Q_OBJECT
public:
    static constexpr const char* kRecentFiles = "recentFiles";
    static constexpr const char* kBackupsMenu = "backups";
    static constexpr const char* kTheme = "themeMenu";

    CMainMenus(QMainWindow& window, CCommands& commands);

    /// One of the named menus above, empty at first: whoever fills it connects to aboutToShow.
    QMenu& Named(const char* name) const { return *m_named.at(name); }
    QToolBar& ToolBar() const { return *m_toolBar; }

private:
    CCommands& m_commands;
    std::map<std::string, QMenu*, std::less<>> m_named;
    QToolBar* m_toolBar;
};

} // namespace vx
