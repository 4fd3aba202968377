#include "app/LinkDesk.h"

#include "app/MainFrame.h"
#include "base/MessageBox.h"
#include "feed/ProgramStart.h"
#include "grid/QtText.h"
#include "watchlist/Commands.h"
#include "watchlist/WatchlistDoc.h"
#include "watchlist/WatchlistGrid.h"
#include "watchlist/WatchlistView.h"

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

} // namespace vx
