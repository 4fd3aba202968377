// SPDX-License-Identifier: MIT
#pragma once

#include "app/windows/ListWindow.h"
#include "data/record/FieldBlock.h"
#include "data/record/L1SymbolRec.h"
#include "grid/GridTheme.h"

#include <QAbstractTableModel>

#include <cstdint>
#include <deque>
#include <vector>

class QCheckBox;
class QLabel;

namespace vx {

class CL1SymbolRec;
class CListView;

/// The trades of one symbol as rows, newest first: a picture of its history as it was at the last Show.
///
/// Owns    a copy of the trades, so that it depends on no record
class CTradeModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum EColumn { kTime, kTick, kPrice, kSize, kExtendedPrice, kExtendedSize, kColumns };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows a record's trades; null shows none.
    ///
    /// Returns how many rows came on top of those that were there before, 0 when all are others
    int Show(const CL1SymbolRec* record);
    void SetTheme(const SGridTheme& theme);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    int FreshTrades(const CTimeAndSales& history) const;
    void ShowAnew(const CTimeAndSales* history);
    void AddOnTop(const CTimeAndSales& history, int count);
    EDirection DirectionOf(size_t row) const;
    QString Text(size_t row, int column) const;

    std::vector<sTimeAndSalesRec> m_trades; ///< Newest first.
    uint32_t m_record = 0;                  ///< The record's running number, 0 for none.
    int m_decimals = 0;
    const SGridTheme* m_theme = &kLightGridTheme;
};

/// The trades of one symbol as they happen, newest first: those of the focus row's symbol, or of the one it was held
/// on. Trades are kept only for symbols that were looked at while the window is open.
///
/// Owns    the histories of these symbols' records, as far as their length goes: 0 again when the window is closed
class CTimeAndSalesDlg : public CRowWindow {
    Q_OBJECT
public:
    /// Trades kept of a symbol.
    static constexpr size_t kHistoryLimit = 500;
    /// Symbols whose trades are still kept after the focus has moved on; the one viewed longest ago is dropped first.
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
