#include "app/LinkDesk.h"

#include "app/FileDesk.h"
#include "app/MainFrame.h"
#include "app/WindowSlot.h"
#include "app/Workspace.h"
#include "base/Log.h"
#include "base/MessageBox.h"
#include "base/Registry.h"
#include "base/UserFolders.h"
#include "data/MessageNames.h"
#include "feed/ProgramStart.h"
#include "grid/QtText.h"
#include "watchlist/Commands.h"
#include "watchlist/RegisteredMessage.h"
#include "watchlist/WatchlistDoc.h"
#include "watchlist/WatchlistGrid.h"
#include "watchlist/WatchlistView.h"

#include <QCoreApplication>

#include <fmt/format.h>

#include <array>

namespace vx {

namespace {

using enum ECommand;

/// A sibling program, and the commands that start it.
struct SLink {
    const char* program;
    ECommand fromMenu;
    ECommand fromRow; ///< Count for none.
    bool takesSymbol; ///< It is started on the symbol of the row.
};

constexpr std::array kLinks = {
    SLink{"vxsnapquote", LinkSnapQuote, RowSnapQuote, true},
    SLink{"vxchart", LinkChart, RowChart, true},
    SLink{"vxtimesales", LinkTimeAndSales, RowTimeAndSales, true},
    SLink{"vxnews", LinkNews, RowNews, false},
    SLink{"zantrel-watchlist", LinkWatchlist, Count, false},
    SLink{"vxoptions", LinkOptionChains, RowOptionChains, true},
    SLink{"vxdepth", LinkMarketDepth, RowMarketDepth, true},
    SLink{"vxscans", LinkMarketScans, Count, true},
};

// Without a symbol in the row the program starts empty, as its user would start it.
void Start(const SLink& link, const std::string& symbol) {
    QStringList arguments;
    if (link.takesSymbol && !symbol.empty()) arguments = {QStringLiteral("-symbol"), QtText(symbol)};
    const SStartResult result = StartProgram(link.program, arguments);
    if (result.Started()) return;
    ShowMessageBox({fmt::format("Unable to launch {}.  Error Code: {}", link.program, result.error), kProgramName,
                    EBoxButtons::Ok, EBoxIcon::Exclamation});
}

} // namespace

CLinkDesk::CLinkDesk(CMainFrame& frame, CCommands& commands) : QObject(&frame), m_frame(frame) {
    BindLinks(commands);
    commands.Bind(
        AlwaysOnTop, [this] { m_frame.SetAlwaysOnTop(!m_frame.IsAlwaysOnTop()); },
        [this](SCommandState& state) { state.checked = m_frame.IsAlwaysOnTop(); });
    commands.Bind(ECommand::SaveWorkspace, [this] { SaveAllWindows(); });
    if (!m_frame.CommandLine().screenshot.empty()) return;
    m_slot = new CWindowSlot(UserRuntimeFolder(), this);
    connect(m_slot, &CWindowSlot::SaveAsked, this, &CLinkDesk::PostSaveMessage);
}

void CLinkDesk::BindLinks(CCommands& commands) {
    for (const SLink& link : kLinks) {
        commands.Bind(link.fromMenu, [this, &link] { Start(link, RowSymbol()); });
        if (link.fromRow == Count) continue;
        commands.Bind(
            link.fromRow, [this, &link] { Start(link, RowSymbol()); },
            [this, &link](SCommandState& state) { state.enabled = !link.takesSymbol || !RowSymbol().empty(); });
    }
}

std::string CLinkDesk::RowSymbol() const {
    return std::string(m_frame.Document().RowSymbol(m_frame.View().Grid().FocusCell().row));
}

// The workspace

void CLinkDesk::SaveAllWindows() {
    if (m_slot) m_slot->AskOthers();
    PostSaveMessage();
}

void CLinkDesk::PostSaveMessage() {
    QCoreApplication::postEvent(&m_frame, new CRegisteredMessage(RegisterMessage(kSaveWorkspaceMessageName)));
}

void CLinkDesk::SaveWorkspace() {
    LogInformation(fmt::format("Received broadcast save workspace message in {}.", kProgramName));
    const CNorvCommandLineInfo& given = m_frame.CommandLine();
    SWorkspaceWindow window;
    window.number = m_slot && m_slot->Number() > 0 ? m_slot->Number() : 1;
    window.file = m_frame.Files().File().Path();
    window.symbols = given.symbol;
    window.type = given.type;
    window.interval = given.interval;
    window.placement = m_frame.Placement();
    window.minimised = m_frame.isMinimized();
    const int error = SaveToWorkspace(CRegistry::CurrentUser(), window,
                                      [this](int number) { return m_slot && m_slot->Runs(number); });
    if (m_slot) m_slot->Answer(error == 0);
    if (error != 0) {
        ShowMessageBox({WorkspaceError(WorkspaceValueName(window.number), error), kWorkspaceErrorCaption,
                        EBoxButtons::Ok, EBoxIcon::Stop});
        return;
    }
    m_frame.Say("Workspace saved");
}

} // namespace vx
