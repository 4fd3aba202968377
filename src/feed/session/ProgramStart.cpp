// SPDX-License-Identifier: MIT
#include "feed/session/ProgramStart.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <fmt/format.h>

namespace vx {

namespace {

constexpr const char* kFeedClient = "vxconnect.exe";
constexpr SStartResult kNotFound{2, 2};
constexpr SStartResult kAccessDenied{5, 5};

QStringList Spellings(QString name) {
    const QString ending = QStringLiteral(".exe");
    if (name.endsWith(ending, Qt::CaseInsensitive)) name.chop(ending.size());
    return {name + ending, name};
}

QString FindExecutable(const QStringList& spellings) {
    for (const QStringList& folders : {QStringList{QCoreApplication::applicationDirPath()}, QStringList{}})
        for (const QString& spelling : spellings) {
            const QString path = QStandardPaths::findExecutable(spelling, folders);
            if (!path.isEmpty()) return path;
        }
    return {};
}

bool LiesBesideThisProgram(const QStringList& spellings) {
    for (const QString& spelling : spellings)
        if (QFileInfo(QCoreApplication::applicationDirPath() + QLatin1Char('/') + spelling).isFile()) return true;
    return false;
}

QString FromText(std::string_view text) { return QString::fromLatin1(text.data(), qsizetype(text.size())); }

} // namespace

SStartResult StartProgram(std::string_view name, const QStringList& arguments) {
    const QStringList spellings = Spellings(FromText(name));
    const QString path = FindExecutable(spellings);
    if (path.isEmpty()) return LiesBesideThisProgram(spellings) ? kAccessDenied : kNotFound;
    return QProcess::startDetached(path, arguments) ? SStartResult{} : kAccessDenied;
}

bool IsInstalled(std::string_view name) { return !FindExecutable(Spellings(FromText(name))).isEmpty(); }

SStartResult StartFeedClient(std::string_view product, std::string_view version) {
    return StartProgram(kFeedClient,
                        {QStringLiteral("-product"), FromText(product), QStringLiteral("-version"), FromText(version)});
}

std::string FeedClientStartError(const SStartResult& result) {
    return fmt::format("Unable to launch {}.  Error Code: {} hInst: {}", kFeedClient, result.error, result.instance);
}

} // namespace vx
