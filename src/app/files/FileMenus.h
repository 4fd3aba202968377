// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include <string>

class QFontMetrics;
class QMenu;

namespace vx {

class CFileController;
class CMainMenus;

/// How a recent file is called in a menu: its number as access key, and its path, in the middle of which is left out
/// what would make the menu too wide.
QString RecentFileLabel(size_t number, const std::string& path, const QFontMetrics& metrics);

/// The two menus of files that change from day to day: the recent files, and the backups of the open one.
///
/// Shape   filled anew each time they open
/// Thread  GUI thread only
class CFileMenus : public QObject {
    Q_OBJECT
public:
    CFileMenus(CFileController& files, const CMainMenus& menus);

Q_SIGNALS:
    /// The user looks for unsaved changes of an earlier run.
    void RecoveryAsked();

private:
    void FillRecent(QMenu& menu);
    void FillVersions(QMenu& menu);
    void OpenRecent(const std::string& path);

    CFileController& m_files;
};

} // namespace vx
