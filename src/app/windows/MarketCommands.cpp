// SPDX-License-Identifier: MIT
#include "app/windows/MarketCommands.h"

#include "app/commands/AddSymbols.h"
#include "app/commands/Commands.h"
#include "app/commands/FrameContext.h"
#include "app/windows/HeadlinesDlg.h"
#include "app/windows/SymbolSearchDlg.h"
#include "app/windows/TimeAndSalesDlg.h"
#include "feed/lookup/SymbolSearch.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QAction>

#include <algorithm>

namespace vx {

CMarketCommands::CMarketCommands(const SFrameContext& context, CFeedSession& session)
    : QObject(&context.window), m_context(context), m_session(session) {
    BindSearchType();
    context.commands.Bind(ECommand::SymbolSearch, [this] { SearchSymbols(); });
    context.commands.Bind(ECommand::Headlines, [this] { ShowHeadlines(); });
    context.commands.Bind(ECommand::TimeAndSales, [this] { ShowTimeAndSales(); });
}

CMarketCommands::~CMarketCommands() {
    delete m_headlines;
    delete m_timeAndSales;
}

void CMarketCommands::BindSearchType() {
    const auto bind = [&](ECommand command, int type) {
        m_context.commands.Bind(
            command, [this, type] { m_context.settings.WriteInteger(kSearchType, type); },
            [this, type](SCommandState& state) {
                state.checked = m_context.settings.ReadInteger(kSearchType) == type;
            });
    };
    bind(ECommand::SearchBySymbol, 0);
    bind(ECommand::SearchByDescription, 1);
}

void CMarketCommands::SearchSymbols() {
    CSymbolSearchDlg dialog(m_session, m_context.settings, &m_context.window);
    if (m_searchSize.isValid()) dialog.resize(m_searchSize);
    const bool chosen = dialog.exec() == QDialog::Accepted;
    m_searchSize = dialog.size();
    if (!chosen || dialog.ChosenSymbol() == CSearchResults::kNothingFound) return;
    if (!dialog.ChosenSymbol().empty()) m_context.settings.WriteText(kCurrentSymbol, dialog.ChosenSymbol());
    CWatchlistGrid& grid = m_context.view.Grid();
    const SAddedRows rows = AddSymbols(m_context.doc, grid.FocusCell().row, dialog.ChosenSymbols());
    if (rows.count == 0) return;
    const int column = std::max(grid.FocusCell().column, 1);
    m_context.doc.RevealRows(rows.first, rows.first + rows.count - 1);
    grid.SelectRange({rows.first, rows.first + rows.count - 1, column, column});
    grid.EnsureVisible(rows.first + rows.count - 1, column);
    grid.EnsureVisible(rows.first, column);
}

void CMarketCommands::ShowHeadlines() {
    CHeadlinesDlg& window = WindowOf(m_headlines);
    window.ShowInFront();
    window.ShowRowsHeadlines();
}

void CMarketCommands::ShowTimeAndSales() {
    CTimeAndSalesDlg& window = WindowOf(m_timeAndSales);
    window.ShowInFront();
    window.ShowRowsTrades();
}

// The commands of the three windows work in each of them too.
template <typename TWindow> TWindow& CMarketCommands::WindowOf(TWindow*& window) {
    if (!window) {
        window = new TWindow(m_context.doc, m_context.view.Grid(), &m_context.window);
        for (const ECommand command : {ECommand::SymbolSearch, ECommand::Headlines, ECommand::TimeAndSales})
            window->addAction(&m_context.commands.Action(command));
    }
    return *window;
}

} // namespace vx
