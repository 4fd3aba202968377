#pragma once

#include "alerts/AlertsMap.h"

#include <QAbstractListModel>

#include <string>
#include <vector>

namespace vx {

/// The working copy of an alert map as a list with a check box on each line: checked while the alert is armed.
///
/// Owns    nothing of the map, which outlives it; it holds no texts, so that any number of alerts opens at once
/// Thread  GUI thread only
class CAlertListModel : public QAbstractListModel {
    Q_OBJECT
public:
    struct SLine {
        std::string symbol;
        int index = 0; ///< Of the alert among those of its symbol.
    };

    explicit CAlertListModel(CAlertsMap& alerts, QObject* parent = nullptr);

    /// Reads the map again: alerts came or went.
    void Refill();
    SLine At(int row) const;
    const A_INFO& Alert(int row) const;
    /// The row of an alert; -1 when there is none.
    int RowOf(std::string_view symbol, int index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    size_t SymbolOf(int row) const;

    CAlertsMap& m_alerts;
    std::vector<std::string> m_symbols; ///< In the order of their bytes.
    std::vector<int> m_firstRows;       ///< Of each symbol, and behind them the number of rows.
};

} // namespace vx
