// SPDX-License-Identifier: MIT
#include "app/frame/NorvCommandLineInfo.h"
#include "app/shell/Screenshot.h"
#include "app/shell/WatchlistApp.h"
#include "app/workspace/RunningWindows.h"
#include "app/workspace/Workspace.h"
#include "base/FileSystem.h"
#include "base/Log.h"
#include "base/Registry.h"
#include "base/qt/QtText.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr int kBadUsage = 2;

// The toolkit's messages belong in the log, not on the terminal that started the program.
void LogToolkitMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    static QByteArray warning; // The first one: later ones are only its consequences.
    if (type == QtWarningMsg && warning.isEmpty()) warning = text.toLocal8Bit();
    if (type == QtFatalMsg && QCoreApplication::startingUp()) {
        // No display that answers. A core dump would tell nobody more.
        std::fprintf(stderr, "zantrel-watchlist: %s; --screenshot FILE needs no display.\n",
                     (warning.isEmpty() ? text.toLocal8Bit() : warning).constData());
        std::_Exit(1);
    }
    if (type == QtFatalMsg) std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
    vx::Log(type == QtDebugMsg ? vx::ELogCategory::Debug : vx::ELogCategory::Information, vx::ELogDirection::Status,
            "Toolkit: " + vx::BytesFromQt(text));
}

// Without a display the toolkit would end the program with a core dump. Its own options may name one.
bool HasDisplay(const std::vector<std::string>& arguments) {
    const bool named = std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
        const std::string_view body = std::string_view(argument).substr(argument.rfind("--", 0) == 0 ? 1 : 0);
        return body.rfind("-platform", 0) == 0 || body.rfind("-display", 0) == 0;
    });
    return named || qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

// Asks the running windows to save the workspace; needs no display. Returns the exit code.
int SaveWorkspace() {
    constexpr int kAnswerMs = 5000;
    const vx::SWorkspaceCall call = vx::CallWindows(vx::UserRuntimeFolder(), kAnswerMs);
    if (call.windows == 0) std::fputs("zantrel-watchlist: no window is running, so nothing was saved.\n", stderr);
    if (call.saved < call.windows)
        std::fprintf(stderr, "zantrel-watchlist: %d of %d windows did not save the workspace.\n",
                     call.windows - call.saved, call.windows);
    return call.windows > 0 && call.saved == call.windows ? 0 : 1;
}

// Starts the windows of the workspace that are not open. Returns the exit code.
int OpenWorkspace(int& argc, char** argv) {
    const QCoreApplication app(argc, argv); // Its folder is where the program is looked for.
    const vx::SOpenedWorkspace opened = vx::OpenWorkspace(
        vx::CRegistry::CurrentUser(), vx::RunningWindows(vx::UserRuntimeFolder(), 0), vx::StartWindow);
    if (opened.IsWhole()) return 0;
    const QString text = vx::QtText(vx::WorkspaceProblems(opened));
    std::fprintf(stderr, "zantrel-watchlist: %s\n", text.toLocal8Bit().constData());
    return 1;
}

// A file that a window has open is shown there.
bool IsShownElsewhere(const vx::CNorvCommandLineInfo& commandLine) {
    if (commandLine.file.empty() || commandLine.newWindow || !commandLine.symbol.empty() ||
        !commandLine.screenshot.empty() || !vx::ShowWindowWithFile(vx::UserRuntimeFolder(), 0, commandLine.file))
        return false;
    std::printf("\"%s\" is open already; its window is shown.\n", commandLine.file.c_str());
    return true;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    const vx::CNorvCommandLineInfo commandLine(arguments);
    if (commandLine.help) {
        std::fputs(vx::CommandLineHelp().c_str(), stdout);
        return 0;
    }
    if (commandLine.version) {
        std::puts("zantrel-watchlist " ZW_RELEASE);
        return 0;
    }
    if (!commandLine.error.empty()) {
        std::fprintf(stderr, "zantrel-watchlist: %s\n", commandLine.error.c_str());
        return kBadUsage;
    }
    if (commandLine.saveWorkspace) return SaveWorkspace();
    qInstallMessageHandler(LogToolkitMessage);
    vx::PrepareScreenshot(commandLine);
    if (!HasDisplay(arguments)) {
        std::fputs("zantrel-watchlist: there is no display here; --screenshot FILE renders the live window into a PNG "
                   "instead.\n",
                   stderr);
        return 1;
    }
    if (commandLine.openWorkspace) return OpenWorkspace(argc, argv);
    if (IsShownElsewhere(commandLine)) return 0;
    QApplication::setApplicationName(QStringLiteral("zantrel-watchlist"));
    QApplication::setApplicationVersion(QStringLiteral(ZW_RELEASE));
    QApplication::setDesktopFileName(QStringLiteral("zantrel-watchlist")); // As the file is called that is installed.
    vx::CWatchlistApp app(argc, argv, vx::CRegistry::CurrentUser());
    return app.InitInstance() ? app.Run() : 1;
}
