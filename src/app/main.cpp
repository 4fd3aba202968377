#include "app/NorvCommandLineInfo.h"
#include "app/NorvMainFrame.h"
#include "app/Screenshot.h"
#include "app/WatchlistApp.h"
#include "base/Log.h"
#include "base/Registry.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

// What the toolkit has to say belongs into the log, not onto the terminal of whoever started the program.
void LogToolkitMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtFatalMsg) std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
    vx::Log(type == QtDebugMsg ? vx::ELogCategory::Debug : vx::ELogCategory::Information, vx::ELogDirection::Status,
            "Toolkit: " + text.toStdString());
}

// Without a display the toolkit would end the program with a core dump.
bool HasDisplay() {
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

} // namespace

int main(int argc, char** argv) {
    const vx::CNorvCommandLineInfo commandLine(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
    if (commandLine.help) {
        std::fputs(vx::CommandLineHelp(), stdout);
        return 0;
    }
    if (commandLine.version) {
        std::printf("zantrel-watchlist %s\n", vx::kProgramVersion);
        return 0;
    }
    qInstallMessageHandler(LogToolkitMessage);
    vx::PrepareScreenshot(commandLine);
    if (!HasDisplay()) {
        std::fputs("zantrel-watchlist: there is no display here; --screenshot FILE renders the live window into a PNG "
                   "instead.\n",
                   stderr);
        return 1;
    }
    QApplication::setApplicationName(QStringLiteral("zantrel-watchlist"));
    QApplication::setApplicationVersion(QString::fromLatin1(vx::kProgramVersion));
    vx::CWatchlistApp app(argc, argv, vx::CRegistry::CurrentUser(), commandLine);
    return app.InitInstance() ? app.Run() : 1;
}
