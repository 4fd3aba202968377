// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSize>

namespace vx {

class CFeedSession;
class CHeadlinesDlg;
class CTimeAndSalesDlg;
struct SFrameContext;

/// Opens the windows that show more of the market: symbol search, headlines, time and sales.
///
/// Owns    the windows
class CMarketCommands : public QObject {
    Q_OBJECT
public:
    CMarketCommands(const SFrameContext& context, CFeedSession& session);
    ~CMarketCommands() override;

    /// Lets the user search and puts what was chosen into the watchlist.
    void SearchSymbols();
    void ShowHeadlines();
    void ShowTimeAndSales();

private:
    void BindSearchType();
    template <typename TWindow> TWindow& WindowOf(TWindow*& window);

    const SFrameContext& m_context;
    CFeedSession& m_session;
    // Made when they are first shown.
    CHeadlinesDlg* m_headlines = nullptr;
    CTimeAndSalesDlg* m_timeAndSales = nullptr;
    QSize m_searchSize; ///< As the search was left last.
};

} // namespace vx
