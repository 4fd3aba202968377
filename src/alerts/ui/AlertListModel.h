// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertsMap.h"

#include <QAbstractListModel>
#include <QStyledItemDelegate>

#include <string>
#include <unordered_set>
#include <vector>

namespace vx {

/// The working copy of an alert map as a list with a check box on each line: checked while the alert is armed. An alert
/// that cannot fire says so beside its line.
///
/// Owns    no texts, so that any number of alerts opens at once
class CAlertListModel : public QAbstractListModel {
    Q_OBJECT
public:
    /// Why the alert of a line cannot fire, a text; empty when it can.
    static constexpr int kStateRole = Qt::UserRole;

    struct SLine {
        std::string symbol;
        int index = 0; ///< Of the alert among those of its symbol.
    };

    /// symbols: those of the watchlist.
    CAlertListModel(CAlertsMap& alerts, const std::vector<std::string>& symbols, QObject* parent = nullptr);

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
    QString StateText(int row) const;
    QString TipText(int row) const;

    CAlertsMap& m_alerts;
    std::unordered_set<std::string> m_listed;
    std::vector<std::string> m_symbols; ///< In the order of their bytes.
    std::vector<int> m_firstRows;       ///< Of each symbol, and after them the number of rows.
};

/// Draws a line of the list, and at its right end why the alert cannot fire.
class CAlertLineDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace vx
