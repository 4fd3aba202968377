// SPDX-License-Identifier: MIT
#include "app/workspace/CompanionPrograms.h"

#include "app/commands/Commands.h"
#include "app/commands/FrameContext.h"
#include "app/frame/ProgramName.h"
#include "base/Clock.h"
#include "base/MessageBox.h"
#include "base/qt/QtText.h"
#include "feed/session/ProgramStart.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QAction>
#include <QMenu>
#include <QTimer>

#include <fmt/format.h>

#include <array>

namespace vx {

namespace {

using enum ECommand;

/// A companion program, and the commands that start it.
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

// Menus ask often, and programs come and go seldom.
constexpr int64_t kLookAgainMs = 2000;
// A companion program that sets the current symbol does it while it is looked at; ours is looked at soon after.
constexpr int kCurrentSymbolMs = 250;

} // namespace

CCompanionPrograms::CCompanionPrograms(const SFrameContext& context) : QObject(&context.window), m_context(context) {
    BindLinks();
    for (QObject* shows : m_context.commands.Action(LinkChart).associatedObjects())
        if (auto* menu = qobject_cast<QMenu*>(shows)) menu->setToolTipsVisible(true);
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &CCompanionPrograms::LookAtCurrentSymbol);
    timer->start(kCurrentSymbolMs);
}

void CCompanionPrograms::BindLinks() {
    for (const SLink& link : kLinks) {
        m_context.commands.Bind(
            link.fromMenu, [this, &link] { Start(link.program, link.takesSymbol); },
            [this, &link](SCommandState& state) { state.tip = TipOf(link.program); });
        if (link.fromRow == Count) continue;
        m_context.commands.Bind(
            link.fromRow, [this, &link] { Start(link.program, link.takesSymbol); },
            [this, &link](SCommandState& state) {
                state.enabled = !link.takesSymbol || !RowSymbol().empty();
                state.tip = TipOf(link.program);
            });
    }
}

// Without a symbol in the row the program starts empty, as its user would start it.
void CCompanionPrograms::Start(const char* program, bool takesSymbol) {
    const std::string symbol = RowSymbol();
    QStringList arguments;
    if (takesSymbol && !symbol.empty()) arguments = {QStringLiteral("-symbol"), QtText(symbol)};
    const SStartResult result = StartProgram(program, arguments);
    if (!result.Started()) {
        ShowMessageBox({fmt::format("Unable to launch {}.  Error Code: {}", program, result.error), kProgramName,
                        EBoxButtons::Ok, EBoxIcon::Exclamation});
    } else if (!arguments.empty()) {
        m_context.settings.WriteText(kCurrentSymbol, symbol);
    }
}

// Nothing for a program that is there: its command says what it does.
QString CCompanionPrograms::TipOf(const char* program) {
    const int64_t now = CClock::Instance().MonotonicMs();
    auto [entry, isNew] = m_installed.try_emplace(program);
    if (isNew || now - entry->second.lookedMs >= kLookAgainMs) entry->second = {IsInstalled(program), now};
    return entry->second.installed ? QString() : QStringLiteral("Not installed: %1").arg(QString::fromLatin1(program));
}

void CCompanionPrograms::LookAtCurrentSymbol() {
    std::string current = m_context.settings.ReadTextOrDefault(kCurrentSymbol);
    if (current == m_currentSymbol) return;
    m_currentSymbol = std::move(current);
    m_context.commands.RefreshSoon();
}

std::string CCompanionPrograms::RowSymbol() const {
    return std::string(m_context.doc.RowSymbol(m_context.view.Grid().FocusCell().row));
}

} // namespace vx
