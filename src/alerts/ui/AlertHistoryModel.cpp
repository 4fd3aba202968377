// SPDX-License-Identifier: MIT
#include "alerts/ui/AlertHistoryModel.h"

#include "alerts/rules/AlertTexts.h"
#include "base/qt/QtText.h"

#include <fmt/format.h>

#include <array>
#include <utility>

namespace vx {

namespace {

constexpr std::array kHeadings = {"Fired", "Symbol", "Field", "Condition", "Threshold", "Value",
                                  "Bid",   "Ask",    "Last",  "Outcome",   "Closed"};
static_assert(kHeadings.size() == CAlertHistoryModel::ColumnCount);

bool IsNumber(int column) { return column >= CAlertHistoryModel::Threshold && column <= CAlertHistoryModel::Last; }

double NumberOf(const SAlertFiring& firing, int column) {
    switch (column) {
    case CAlertHistoryModel::Threshold:
        return firing.threshold;
    case CAlertHistoryModel::Value:
        return firing.value;
    case CAlertHistoryModel::Bid:
        return firing.bid;
    case CAlertHistoryModel::Ask:
        return firing.ask;
    default:
        return firing.last;
    }
}

std::string TextOf(const SAlertFiring& firing, int column) {
    switch (column) {
    case CAlertHistoryModel::Fired:
        return LocalTimeText(firing.firedMs);
    case CAlertHistoryModel::Symbol:
        return ShownLine(firing.symbol);
    case CAlertHistoryModel::Field:
        return ShownLine(firing.field);
    case CAlertHistoryModel::Condition:
        return firing.isNews ? "received" : ShownLine(firing.condition);
    case CAlertHistoryModel::Outcome:
        return ShownLine(EndText(firing));
    case CAlertHistoryModel::Closed:
        return LocalTimeText(firing.endedMs);
    default:
        return firing.isNews ? std::string{} : fmt::format("{}", NumberOf(firing, column));
    }
}

QVariant SortKey(const SAlertFiring& firing, int column) {
    if (column == CAlertHistoryModel::Fired) return static_cast<qlonglong>(firing.firedMs);
    if (column == CAlertHistoryModel::Closed) return static_cast<qlonglong>(firing.endedMs);
    if (IsNumber(column)) return NumberOf(firing, column);
    return QtText(TextOf(firing, column));
}

} // namespace

void CAlertHistoryModel::SetFirings(std::vector<SAlertFiring> firings) {
    beginResetModel();
    m_firings = std::move(firings);
    endResetModel();
}

int CAlertHistoryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_firings.size());
}

int CAlertHistoryModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant CAlertHistoryModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const SAlertFiring& firing = At(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return QtText(TextOf(firing, index.column()));
    case Qt::TextAlignmentRole:
        return static_cast<int>((IsNumber(index.column()) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    case kSortRole:
        return SortKey(firing, index.column());
    default:
        return {};
    }
}

QVariant CAlertHistoryModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount) return {};
    if (role == Qt::DisplayRole) return QString::fromLatin1(kHeadings[static_cast<size_t>(section)]);
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>((IsNumber(section) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

CAlertHistoryFilter::CAlertHistoryFilter(CAlertHistoryModel& model, QObject* parent)
    : QSortFilterProxyModel(parent), m_model(model) {
    setSourceModel(&model);
    setSortRole(CAlertHistoryModel::kSortRole);
}

void CAlertHistoryFilter::SetFilter(SHistoryFilter filter) {
    m_filter = std::move(filter);
    m_lastAbsence = LastAbsence(m_model.Firings());
    invalidateFilter();
}

std::vector<SAlertFiring> CAlertHistoryFilter::Shown() const {
    std::vector<SAlertFiring> out;
    for (int row = 0; row < rowCount(); ++row) out.push_back(m_model.At(mapToSource(index(row, 0)).row()));
    return out;
}

bool CAlertHistoryFilter::filterAcceptsRow(int row, const QModelIndex&) const {
    const SAlertFiring& firing = m_model.At(row);
    if (m_filter.whileAway && !FiredWhileAway(firing, m_lastAbsence)) return false;
    if (m_filter.onlyOpen && firing.end != EFiringEnd::Open) return false;
    if (!m_filter.symbol.empty() && firing.symbol != m_filter.symbol) return false;
    if (m_filter.text.isEmpty()) return true;
    for (int column = 0; column < CAlertHistoryModel::ColumnCount; ++column)
        if (QtText(TextOf(firing, column)).contains(m_filter.text, Qt::CaseInsensitive)) return true;
    return false;
}

} // namespace vx
