#include "app/windows/MarketDesk.h"

#include "app/commands/AddSymbols.h"
#include "app/commands/Commands.h"
#include "app/shell/MainFrame.h"
#include "app/windows/HeadlinesDlg.h"
#include "app/windows/SymbolSearchDlg.h"
#include "app/windows/TimeAndSalesDlg.h"
#include "settings/Settings.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <QAction>

#include <algorithm>

namespace vx {

CMarketDesk::CMarketDesk(CMainFrame& frame, CCommands& commands) : QObject(&frame), m_frame(frame) {
    BindSearchType(commands);
    commands.Bind(ECommand::SymbolSearch, [this] { SearchSymbols(); });
    commands.Bind(ECommand::Headlines, [this] { ShowHeadlines(); });
    commands.Bind(ECommand::TimeAndSales, [this] { ShowTimeAndSales(); });
}

CMarketDesk::~CMarketDesk() {
    delete m_headlines;
    delete m_timeAndSales;
}

void CMarketDesk::BindSearchType(CCommands& commands) {
    const auto bind = [&](ECommand command, int type) {
        commands.Bind(
            command, [this, type] { m_frame.Settings().WriteInteger(kSearchType, type); },
            [this, type](SCommandState& state) {
                state.checked = m_frame.Settings().ReadInteger(kSearchType) == type;
            });
    };
    bind(ECommand::SearchBySymbol, 0);
    bind(ECommand::SearchByDescription, 1);
}

void CMarketDesk::SearchSymbols() {
    CSymbolSearchDlg dialog(m_frame, m_frame.Settings(), &m_frame);
    if (m_searchSize.isValid()) dialog.resize(m_searchSize);
    const bool chosen = dialog.exec() == QDialog::Accepted;
    m_searchSize = dialog.size();
    if (!chosen || dialog.ChosenSymbol() == CSearchResults::kNothingFound) return;
    if (!dialog.ChosenSymbol().empty()) m_frame.Settings().WriteText(kCurrentSymbol, dialog.ChosenSymbol());
    CWatchlistGrid& grid = m_frame.View().Grid();
    const SAddedRows rows = AddSymbols(m_frame.Document(), grid.FocusCell().row, dialog.ChosenSymbols());
    if (rows.count == 0) return;
    const int column = std::max(grid.FocusCell().column, 1);
    m_frame.Document().RevealRows(rows.first, rows.first + rows.count - 1);
    grid.SelectRange({rows.first, rows.first + rows.count - 1, column, column});
    grid.EnsureVisible(rows.first + rows.count - 1, column);
    grid.EnsureVisible(rows.first, column);
}

void CMarketDesk::ShowHeadlines() {
    CHeadlinesDlg& window = WindowOf(m_headlines);
    window.ShowInFront();
    window.ShowRowsHeadlines();
}

void CMarketDesk::ShowTimeAndSales() {
    CTimeAndSalesDlg& window = WindowOf(m_timeAndSales);
    window.ShowInFront();
    window.ShowRowsTrades();
}

// The commands of the three windows work in each of them too.
template <typename TWindow> TWindow& CMarketDesk::WindowOf(TWindow*& window) {
    if (!window) {
        window = new TWindow(m_frame.Document(), m_frame.View().Grid(), &m_frame);
        for (const ECommand command : {ECommand::SymbolSearch, ECommand::Headlines, ECommand::TimeAndSales})
            window->addAction(&m_frame.Commands().Action(command));
    }
    return *window;
}

} // namespace vx
