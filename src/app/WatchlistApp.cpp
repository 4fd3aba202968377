#include "app/WatchlistApp.h"

#include "app/FileDesk.h"
#include "app/MainFrame.h"
#include "app/QtMessageBox.h"
#include "app/RecoveryDesk.h"
#include "app/Screenshot.h"
#include "app/SessionEnd.h"
#include "base/Log.h"
#include "grid/QtText.h"
#include "settings/LogSettings.h"
#include "watchlist/WatchlistDoc.h"

#include <QFile>
#include <QIcon>
#include <QTimer>
#include <fmt/format.h>

#include <algorithm>

namespace vx {

namespace {

constexpr int kScreenshotWidth = 1320;
constexpr int kScreenshotHeight = 760;
constexpr int kLargestPicture = 8192;
// The window is painted and the feed under way before a dialog stands over it.
constexpr int kOfferRecoveryMs = 400;

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
    for (const std::string& option : m_commandLine.unknown)
        LogInformation(fmt::format("Command line: \"{}\" is not understood and was ignored.", option));
    if (!ProcessShellCommand()) {
        if (picture && !m_commandLine.file.empty()) return false;
        m_frame->Document().NewDocument();
    }
    if (picture) {
        m_frame->ShowSized(std::clamp(m_commandLine.width.value_or(kScreenshotWidth), 1, kLargestPicture),
                           std::clamp(m_commandLine.height.value_or(kScreenshotHeight), 1, kLargestPicture));
        return true;
    }
    m_frame->ShowPlaced();
    new CSessionEnd(*m_frame); // The frame's child.
    QTimer::singleShot(kOfferRecoveryMs, m_frame.get(), [this] {
        const std::string& opened = m_frame->Files().File().Path();
        if (!opened.empty()) CFileDesk::TellLeftAlone(opened, m_commandLine.otherFiles.size());
        m_frame->Recovery().Offer(false);
    });
    return true;
}

int CWatchlistApp::Run() {
    if (!m_commandLine.screenshot.empty()) return RunScreenshot(*m_frame, m_commandLine);
    return CNorvWinAppEx::Run();
}

void CWatchlistApp::StartLog() {
    ApplyLogCategories(m_settings);
    ConfigureLog({.folder = ReadLogPath(Registry())});
}

bool CWatchlistApp::ProcessShellCommand() {
    if (!m_commandLine.file.empty()) return m_frame->Files().Open(m_commandLine.file);
    if (!m_commandLine.starter || !m_commandLine.symbol.empty()) return false;
    QFile starter(QString::fromLatin1(kStarterList));
    if (!starter.open(QIODevice::ReadOnly)) return false;
    const QByteArray text = starter.readAll();
    m_frame->Document().OpenText({text.constData(), static_cast<size_t>(text.size())}, {});
    return true;
}

} // namespace vx
