#include "alerts/AlertListModel.h"

#include "alerts/AlertTexts.h"
#include "grid/QtText.h"

#include <algorithm>

namespace vx {

CAlertListModel::CAlertListModel(CAlertsMap& alerts, QObject* parent) : QAbstractListModel(parent), m_alerts(alerts) {
    Refill();
}

void CAlertListModel::Refill() {
    beginResetModel();
    m_symbols = m_alerts.Symbols(EAlertMap::WorkingCopy);
    m_firstRows.assign(1, 0);
    for (const std::string& symbol : m_symbols)
        m_firstRows.push_back(m_firstRows.back() + m_alerts.Count(symbol, EAlertMap::WorkingCopy));
    endResetModel();
}

size_t CAlertListModel::SymbolOf(int row) const {
    return static_cast<size_t>(std::ranges::upper_bound(m_firstRows, row) - m_firstRows.begin()) - 1;
}

CAlertListModel::SLine CAlertListModel::At(int row) const {
    const size_t symbol = SymbolOf(row);
    return {m_symbols[symbol], row - m_firstRows[symbol]};
}

const A_INFO& CAlertListModel::Alert(int row) const {
    const size_t symbol = SymbolOf(row);
    const auto index = static_cast<size_t>(row - m_firstRows[symbol]);
    return m_alerts.Get(m_symbols[symbol], EAlertMap::WorkingCopy).at(index);
}

int CAlertListModel::RowOf(std::string_view symbol, int index) const {
    const auto place = std::ranges::lower_bound(m_symbols, symbol);
    if (place == m_symbols.end() || *place != symbol) return -1;
    const auto number = static_cast<size_t>(place - m_symbols.begin());
    const int row = m_firstRows[number] + index;
    return index >= 0 && row < m_firstRows[number + 1] ? row : -1;
}

int CAlertListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : m_firstRows.back(); }

QVariant CAlertListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const QString line = QtText(AlertLineText(At(index.row()).symbol, Alert(index.row())));
    if (role == Qt::DisplayRole) return line;
    if (role == Qt::CheckStateRole) return Alert(index.row()).enabled != 0 ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::ToolTipRole)
        return PlainTipText(line + QLatin1Char('\n') +
                            (Alert(index.row()).enabled != 0 ? tr("Armed: fires once, on the next value that meets it")
                                                             : tr("Fired or switched off: check it to arm it")));
    return {};
}

bool CAlertListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::CheckStateRole) return false;
    const SLine line = At(index.row());
    m_alerts.SetEnabled(line.symbol, line.index, value.toInt() == Qt::Checked);
    Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

Qt::ItemFlags CAlertListModel::flags(const QModelIndex& index) const {
    return QAbstractListModel::flags(index) | Qt::ItemIsUserCheckable;
}

} // namespace vx
