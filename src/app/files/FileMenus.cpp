// SPDX-License-Identifier: MIT
#include "app/files/FileMenus.h"

#include "app/commands/MainMenus.h"
#include "app/files/FileController.h"
#include "app/frame/ProgramName.h"
#include "base/MessageBox.h"
#include "base/Windows1252.h"

#include <QAction>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QFontMetrics>
#include <QLocale>
#include <QMenu>

#include <fmt/format.h>

namespace vx {

namespace {

constexpr int kWidestPathPx = 480;
constexpr size_t kAccessKeys = 9;

void AddRemark(QMenu& menu, const QString& text) { menu.addAction(text)->setEnabled(false); }

// The number tells versions apart that a wrong clock gave the same time.
QString BackupLabel(const SBackup& backup) {
    return QStringLiteral("%1.    %2    %3")
        .arg(backup.number)
        .arg(QDateTime::fromSecsSinceEpoch(backup.savedAt).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
             QLocale::c().formattedDataSize(static_cast<qint64>(backup.bytes), 1, QLocale::DataSizeTraditionalFormat));
}

} // namespace

QString RecentFileLabel(size_t number, const std::string& path, const QFontMetrics& metrics) {
    QString text = QFile::decodeName(path.c_str());
    for (QChar& c : text) // A tab would begin the column of the shortcuts.
        if (c < QLatin1Char(' ')) c = QLatin1Char(' ');
    text = metrics.elidedText(text, Qt::ElideMiddle, kWidestPathPx);
    text.replace(QLatin1Char('&'), QStringLiteral("&&"));
    return (number <= kAccessKeys ? QStringLiteral("&%1  %2") : QStringLiteral("%1  %2")).arg(number).arg(text);
}

CFileMenus::CFileMenus(CFileController& files, const CMainMenus& menus) : QObject(&files), m_files(files) {
    QMenu& recent = menus.Named(CMainMenus::kRecentFiles);
    QMenu& versions = menus.Named(CMainMenus::kBackupsMenu);
    recent.setToolTipsVisible(true);
    connect(&recent, &QMenu::aboutToShow, this, [this, &recent] { FillRecent(recent); });
    connect(&versions, &QMenu::aboutToShow, this, [this, &versions] { FillVersions(versions); });
}

void CFileMenus::FillRecent(QMenu& menu) {
    menu.clear();
    size_t number = 0;
    for (const std::string& path : m_files.Recent().List()) {
        QAction* action = menu.addAction(RecentFileLabel(++number, path, menu.fontMetrics()), this,
                                         [this, path] { OpenRecent(path); });
        action->setToolTip(QFile::decodeName(path.c_str()).toHtmlEscaped());
        action->setStatusTip(QFile::decodeName(path.c_str()));
    }
    if (number == 0) return AddRemark(menu, QStringLiteral("No file was opened yet"));
    menu.addSeparator();
    menu.addAction(QStringLiteral("&Clear This List"), this, [this] { m_files.Recent().Clear(); });
}

void CFileMenus::OpenRecent(const std::string& path) {
    if (QFileInfo::exists(QFile::decodeName(path.c_str()))) {
        m_files.OpenInstead(path);
        return;
    }
    const std::string text = fmt::format("The file \"{}\" is no longer there. Remove it from the list of recent files?",
                                         Windows1252FromUtf8(path));
    if (ShowMessageBox({text, kProgramName, EBoxButtons::YesNo, EBoxIcon::Question}) == EBoxAnswer::Yes)
        m_files.Recent().Remove(path);
}

void CFileMenus::FillVersions(QMenu& menu) {
    menu.clear();
    const std::vector<SBackup> backups = m_files.File().Backups();
    for (const SBackup& backup : backups)
        menu.addAction(BackupLabel(backup), this, [this, backup] { m_files.OpenBackup(backup); });
    if (m_files.File().Path().empty())
        AddRemark(menu, QStringLiteral("This watchlist has no file yet"));
    else if (backups.empty())
        AddRemark(menu, QStringLiteral("No save has replaced a content of this file yet"));
    else
        AddRemark(menu, QStringLiteral("Opens as an unsaved copy"));
    menu.addSeparator();
    menu.addAction(QStringLiteral("&Recover Unsaved Changes..."), this, &CFileMenus::RecoveryAsked);
}

} // namespace vx
