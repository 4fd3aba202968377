// SPDX-License-Identifier: MIT
#include "app/workspace/WindowController.h"

#include "app/commands/Commands.h"
#include "app/commands/FrameContext.h"
#include "app/files/FileController.h"
#include "app/frame/FramePlacement.h"
#include "app/frame/ProgramName.h"
#include "app/frame/StatusPanes.h"
#include "app/workspace/RunningWindows.h"
#include "app/workspace/Workspace.h"
#include "base/FileSystem.h"
#include "base/Log.h"
#include "base/MessageBox.h"
#include "base/Registry.h"
#include "base/Windows1252.h"
#include "watchlist/view/RegisteredMessage.h"

#include <QApplication>

#include <fmt/format.h>

namespace vx {

using Arguments = std::vector<std::string>;

CWindowController::CWindowController(const SFrameContext& context, CFileController& files,
                                     const CNorvCommandLineInfo& commandLine)
    : QObject(&context.window), m_context(context), m_files(files), m_commandLine(commandLine) {
    context.window.installEventFilter(this);
    context.commands.Bind(
        ECommand::AlwaysOnTop, [this] { m_context.place.SetAlwaysOnTop(!m_context.place.IsAlwaysOnTop()); },
        [this](SCommandState& state) { state.checked = m_context.place.IsAlwaysOnTop(); });
    context.commands.Bind(ECommand::FileNewWindow, [this] {
        const std::string& theme = m_commandLine.theme;
        if (const int error = StartWindow(theme.empty() ? Arguments{} : Arguments{"--theme", theme}))
            ShowMessageBox({WindowStartError(error), kProgramName, EBoxButtons::Ok, EBoxIcon::Exclamation});
    });
    context.commands.Bind(ECommand::SaveWorkspace, [this] { SaveAllWindows(); });
    context.commands.Bind(ECommand::OpenWorkspace, [this] { OpenStored(); });
    if (!m_commandLine.screenshot.empty()) return;
    m_registration = new CWindowRegistration(
        UserRuntimeFolder(), [this] { return WorkspaceText(Describe()); }, this);
    connect(m_registration, &CWindowRegistration::SaveAsked, this, &CWindowController::PostSaveMessage);
    connect(m_registration, &CWindowRegistration::ShowAsked, this, &CWindowController::BringUp);
}

SWorkspaceWindow CWindowController::Describe() const {
    SWorkspaceWindow window;
    window.number = m_registration && m_registration->Number() > 0 ? m_registration->Number() : 1;
    window.file = m_files.File().Path();
    window.symbols = m_commandLine.symbol;
    window.type = m_commandLine.type;
    window.interval = m_commandLine.interval;
    window.placement = m_context.place.Placement();
    window.minimised = m_context.window.isMinimized();
    return window;
}

// Other windows

bool CWindowController::ShowOther(const std::string& path) {
    if (!m_registration || IsSameFile(m_files.File().Path(), path) ||
        !ShowWindowWithFile(m_registration->Folder(), m_registration->Number(), path))
        return false;
    m_context.status.Say(fmt::format("\"{}\" is open in another window.", Windows1252FromUtf8(path)));
    return true;
}

// The window in which the keyboard belongs may be a dialog of this one.
void CWindowController::BringUp() {
    if (m_context.window.isMinimized())
        m_context.window.setWindowState(m_context.window.windowState() & ~Qt::WindowMinimized);
    m_context.window.raise();
    QWidget* dialog = QApplication::activeModalWidget();
    QWidget& front = dialog ? *dialog : m_context.window;
    front.raise();
    front.activateWindow();
}

SPlacement CWindowController::BesideOthers(const SPlacement& placement) const {
    std::vector<QPoint> corners;
    if (m_registration)
        for (const SRunningWindow& window : RunningWindows(m_registration->Folder(), m_registration->Number()))
            if (window.shows.left && window.shows.top) corners.emplace_back(*window.shows.left, *window.shows.top);
    return Cascaded(placement, corners, ScreenAreas());
}

// The workspace

void CWindowController::SaveAllWindows() {
    if (m_registration) m_registration->AskOthers();
    PostSaveMessage();
}

void CWindowController::PostSaveMessage() {
    QCoreApplication::postEvent(&m_context.window, new CRegisteredMessage(RegisterMessage(kSaveWorkspaceMessageName)));
}

bool CWindowController::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &m_context.window || event->type() != RegisterMessage(kSaveWorkspaceMessageName))
        return QObject::eventFilter(watched, event);
    SaveWorkspace();
    return true;
}

void CWindowController::SaveWorkspace() {
    LogInformation(fmt::format("Received broadcast save workspace message in {}.", kProgramName));
    const SWorkspaceWindow window = Describe();
    const int error = SaveToWorkspace(CRegistry::CurrentUser(), window,
                                      [this](int number) { return m_registration && m_registration->Runs(number); });
    if (m_registration) m_registration->Answer(error == 0);
    if (error == 0) return m_context.status.Say("Workspace saved");
    ShowMessageBox({WorkspaceError(WorkspaceValueName(window.number), error), kWorkspaceErrorCaption, EBoxButtons::Ok,
                    EBoxIcon::Stop});
}

void CWindowController::OpenStored() {
    std::vector<SRunningWindow> running;
    if (m_registration) running = RunningWindows(m_registration->Folder(), m_registration->Number());
    running.push_back({0, CNorvCommandLineInfo(*WorkspaceArguments(WorkspaceText(Describe())))});
    const SOpenedWorkspace opened = OpenWorkspace(CRegistry::CurrentUser(), running, StartWindow);
    if (opened.IsWhole())
        return m_context.status.Say(opened.started == 0 ? std::string("All windows of the workspace are open.")
                                                        : fmt::format("Windows opened: {}", opened.started));
    ShowMessageBox({WorkspaceProblems(opened), kProgramName, EBoxButtons::Ok,
                    opened.stored == 0 ? EBoxIcon::Information : EBoxIcon::Exclamation});
}

} // namespace vx
