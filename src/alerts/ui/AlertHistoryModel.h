// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertHistory.h"

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>

#include <vector>

namespace vx {

/// The firings of the history as a table, the latest first.
class CAlertHistoryModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum EColumn { Fired, Symbol, Field, Condition, Threshold, Value, Bid, Ask, Last, Outcome, Closed, ColumnCount };
    /// What a column is sorted by.
    static constexpr int kSortRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void SetFirings(std::vector<SAlertFiring> firings);
    const SAlertFiring& At(int row) const { return m_firings[m_firings.size() - 1 - static_cast<size_t>(row)]; }
    const std::vector<SAlertFiring>& Firings() const { return m_firings; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<SAlertFiring> m_firings; ///< As read: the latest last.
};

/// Which firings the table shows.
struct SHistoryFilter {
    bool whileAway = false; ///< Only those of the last absence.
    bool onlyOpen = false;  ///< Only those whose notice was not closed.
    std::string symbol;     ///< Only this symbol; empty for all.
    QString text;           ///< Stands in one of the cells, whatever the case.
};

class CAlertHistoryFilter : public QSortFilterProxyModel {
    Q_OBJECT
public:
    explicit CAlertHistoryFilter(CAlertHistoryModel& model, QObject* parent = nullptr);

    void SetFilter(SHistoryFilter filter);
    /// The firings shown, in the order shown.
    std::vector<SAlertFiring> Shown() const;

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    CAlertHistoryModel& m_model;
    SHistoryFilter m_filter;
    int64_t m_lastAbsence = 0;
};

} // namespace vx
