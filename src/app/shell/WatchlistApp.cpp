// SPDX-License-Identifier: MIT
#include "app/shell/WatchlistApp.h"

#include "app/files/FileController.h"
#include "app/files/RecoveryController.h"
#include "app/frame/Dialogs.h"
#include "app/frame/ProgramName.h"
#include "app/shell/MainFrame.h"
#include "app/shell/RestartController.h"
#include "app/shell/Screenshot.h"
#include "app/shell/SessionEnd.h"
#include "base/Log.h"
#include "base/MessageBox.h"
#include "base/Registry.h"
#include "base/Windows1252.h"
#include "base/qt/QtText.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/fileformat/WatchlistReader.h"

#include <QFile>
#include <QIcon>
#include <QTimer>

#include <fmt/format.h>

#include <clocale>
#include <cstdio>
#include <utility>
#include <vector>

namespace vx {

CNorvWinAppEx::CNorvWinAppEx(int& argc, char** argv, CRegistry& registry)
    : QApplication(argc, argv), m_registry(registry), m_profile(registry, kApplicationProfileKey) {
    // The application object takes the user's locale; a comma for a decimal point would reach files and the wire.
    std::setlocale(LC_NUMERIC, "C");
    std::setlocale(LC_TIME, "C");
}

int CNorvWinAppEx::Run() { return exec(); }

namespace {

constexpr int kScreenshotWidth = 1320;
constexpr int kScreenshotHeight = 760;
// The window is painted and the feed under way before a box stands over it.
constexpr int kFirstBoxMs = 400;

// The starter list is part of the program.
constexpr const char* kStarterList = ":/starter.vxw";

} // namespace

CWatchlistApp::CWatchlistApp(int& argc, char** argv, CRegistry& registry)
    : CNorvWinAppEx(argc, argv, registry),
      m_commandLine(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc)), m_configWriter(Profile()),
      m_settings(m_configWriter) {
    m_commandLine.symbol = BytesFromQt(QString::fromLocal8Bit(m_commandLine.symbol));
}

CWatchlistApp::~CWatchlistApp() = default;

bool CWatchlistApp::InitInstance() {
    StartLog();
    setWindowIcon(QIcon(QStringLiteral(":/watchlist.svg")));
    m_frame = std::make_unique<CMainFrame>(m_settings, m_commandLine);
    const bool picture = !m_commandLine.screenshot.empty();
    if (!picture) InstallQtMessageBoxes(m_frame.get()); // Nobody could answer a box in a picture: it is printed.
    TellUnknownOptions();
    std::vector<SMessageBox> early;
    if (picture ? !ProcessShellCommand() : !ProcessShellCommand(early)) {
        if (picture && !m_commandLine.file.empty()) return false;
        m_frame->Document().NewDocument();
    }
    if (picture) {
        m_frame->ShowSized(m_commandLine.width.value_or(kScreenshotWidth),
                           m_commandLine.height.value_or(kScreenshotHeight));
        return true;
    }
    m_frame->ShowPlaced();
    new CSessionEnd(*m_frame); // The frame's child.
    connect(&m_frame->Restart(), &CRestartController::Restarted, this, [] { exit(0); });
    QTimer::singleShot(kFirstBoxMs, m_frame.get(), [this, early] {
        for (const SMessageBox& box : early) ShowMessageBox(box);
        const std::string& opened = m_frame->Files().File().Path();
        if (!opened.empty()) CFileController::TellLeftAlone(opened, m_commandLine.otherFiles.size());
        if (!m_resumed) m_frame->Recovery().Offer(false);
    });
    return true;
}

// The user who typed them looks at the terminal.
void CWatchlistApp::TellUnknownOptions() const {
    for (const std::string& option : m_commandLine.unknown) {
        const std::string text = fmt::format("\"{}\" is not understood and was ignored.", option);
        std::fprintf(stderr, "zantrel-watchlist: %s\n", text.c_str());
        LogInformation("Command line: " + text);
    }
}

int CWatchlistApp::Run() {
    if (!m_commandLine.screenshot.empty()) return RunScreenshot(*m_frame, m_commandLine);
    return CNorvWinAppEx::Run();
}

void CWatchlistApp::StartLog() {
    ApplyLogCategories(m_settings);
    ConfigureLog({.folder = ReadLogPath(Registry()), .console = m_commandLine.log});
}

// What is to be said of the file waits for the window, over which it is said.
bool CWatchlistApp::ProcessShellCommand(std::vector<SMessageBox>& early) {
    MessageBoxHandler shown = SetMessageBoxHandler([&](const SMessageBox& box) {
        early.push_back(box);
        return EBoxAnswer::Ok;
    });
    const bool opened = ProcessShellCommand();
    SetMessageBoxHandler(std::move(shown));
    return opened;
}

bool CWatchlistApp::ProcessShellCommand() {
    if (!m_commandLine.resume.empty()) {
        m_resumed = m_frame->Recovery().Resume(m_commandLine.resume);
        if (m_resumed) return true;
        ShowMessageBox({fmt::format("The unsaved changes in \"{}\" could not be taken over.",
                                    Windows1252FromUtf8(m_commandLine.resume)),
                        kProgramName, EBoxButtons::Ok, EBoxIcon::Exclamation});
    }
    if (!m_commandLine.file.empty()) return m_frame->Files().Open(m_commandLine.file);
    if (!m_commandLine.starter || !m_commandLine.symbol.empty()) return false;
    QFile starter(QString::fromLatin1(kStarterList));
    if (!starter.open(QIODevice::ReadOnly)) return false;
    const QByteArray text = starter.readAll();
    OpenText(m_frame->Document(), {text.constData(), static_cast<size_t>(text.size())}, {});
    return true;
}

} // namespace vx
