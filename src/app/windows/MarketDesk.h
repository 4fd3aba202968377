#pragma once

#include <QObject>
#include <QSize>

namespace vx {

class CCommands;
class CHeadlinesDlg;
class CMainFrame;
class CTimeAndSalesDlg;

/// Opens the windows that look further than the board: symbol search, headlines, time and sales.
///
/// Owns    the windows; nothing of the frame, which outlives it
/// Thread  GUI thread only
class CMarketDesk : public QObject {
    Q_OBJECT
public:
    CMarketDesk(CMainFrame& frame, CCommands& commands);
    ~CMarketDesk() override;

    /// Lets the user search and puts what was chosen into the watchlist.
    void SearchSymbols();
    void ShowHeadlines();
    void ShowTimeAndSales();

private:
    void BindSearchType(CCommands& commands);
    template <typename TWindow> TWindow& WindowOf(TWindow*& window);

    CMainFrame& m_frame;
    // Made when they are first shown.
    CHeadlinesDlg* m_headlines = nullptr;
    CTimeAndSalesDlg* m_timeAndSales = nullptr;
    QSize m_searchSize; ///< As the search was left last.
};

} // namespace vx
