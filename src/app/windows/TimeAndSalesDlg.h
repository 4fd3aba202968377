#pragma once

#include "app/windows/RowWindow.h"

#include <deque>

class QCheckBox;
class QLabel;

namespace vx {

class CL1SymbolRec;
class CListView;
class CTradeModel;

/// The trades of one symbol as they happen, newest first: those of the focus row's symbol, or of the one it was held
/// on. Trades are kept only for symbols that were looked at while the window is open.
///
/// Owns    the histories of these symbols' records, as far as their length goes: 0 again when the window is closed
/// Thread  GUI thread only
class CTimeAndSalesDlg : public CRowWindow {
    Q_OBJECT
public:
    /// Trades kept of a symbol.
    static constexpr size_t kHistoryLimit = 500;
    /// Symbols whose trades go on being kept when the focus has moved on; the one looked at longest ago goes first.
    static constexpr size_t kKeptSymbols = 20;

    CTimeAndSalesDlg(CWatchlistDoc& doc, CWatchlistGrid& grid, QWidget* parent);

    void Refresh() override;
    /// Shows the focus row's symbol, also when the window was held on another one.
    void ShowRowsTrades();

protected:
    void Closed() override;

private:
    void KeepTrades();
    void SetSymbol(const std::string& symbol);
    void ShowState(const CL1SymbolRec* record);
    QString EmptyText(const CL1SymbolRec* record) const;

    QLabel* m_name;
    QCheckBox* m_follow;
    CListView* m_list;
    QLabel* m_state;
    CTradeModel* m_trades;
    std::string m_symbol;
    std::deque<std::string> m_kept; ///< Latest looked at first; m_symbol is the first of them.
};

} // namespace vx
