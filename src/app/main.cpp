#include "app/NorvCommandLineInfo.h"
#include "app/NorvMainFrame.h"
#include "app/Screenshot.h"
#include "app/WatchlistApp.h"
#include "base/Registry.h"

#include <cstdio>
#include <string>
#include <vector>

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
    vx::PrepareScreenshot(commandLine);
    QApplication::setApplicationName(QStringLiteral("zantrel-watchlist"));
    QApplication::setApplicationVersion(QString::fromLatin1(vx::kProgramVersion));
    vx::CWatchlistApp app(argc, argv, vx::CRegistry::CurrentUser(), commandLine);
    return app.InitInstance() ? app.Run() : 1;
}
