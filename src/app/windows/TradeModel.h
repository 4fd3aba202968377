#pragma once

#include "data/record/FieldValue.h"
#include "data/record/TimeAndSales.h"
#include "grid/GridTheme.h"

#include <QAbstractTableModel>

#include <cstdint>
#include <vector>

namespace vx {

class CL1SymbolRec;

/// The trades of one symbol as rows, newest first: a picture of its history as it was at the last Show.
///
/// Owns    a copy of the trades, so that it depends on no record
/// Thread  GUI thread only
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
    int m_places = 0;
    const SGridTheme* m_theme = &kLightGridTheme;
};

} // namespace vx
