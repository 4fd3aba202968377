// SPDX-License-Identifier: MIT
#include "alerts/ui/AlertListModel.h"

#include "alerts/rules/AlertInfo.h"
#include "alerts/rules/AlertTexts.h"
#include "base/qt/QtText.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace vx {

namespace {

// Each at least 4.5:1 on the lists of its theme.
constexpr QRgb kLightWarning = 0xFFA03C00;
constexpr QRgb kDarkWarning = 0xFFFFB870;

} // namespace

CAlertListModel::CAlertListModel(CAlertsMap& alerts, const std::vector<std::string>& symbols, QObject* parent)
    : QAbstractListModel(parent), m_alerts(alerts), m_listed(symbols.begin(), symbols.end()) {
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

QString CAlertListModel::StateText(int row) const {
    return QtText(CannotFireText(Alert(row), m_listed.contains(At(row).symbol)));
}

QString CAlertListModel::TipText(int row) const {
    const A_INFO& alert = Alert(row);
    QString tip = QtText(AlertLineText(At(row).symbol, alert));
    tip +=
        QLatin1Char('\n') + (alert.enabled != 0 ? QStringLiteral("Armed: fires once, on the next value that meets it")
                                                : QStringLiteral("Fired or switched off: check it to arm it"));
    if (!CanFire(alert))
        tip += QStringLiteral("\nThe field has no numbers: it cannot fire");
    else if (!m_listed.contains(At(row).symbol))
        tip += QStringLiteral("\nThe symbol is not in the watchlist: it cannot fire until it is");
    return tip;
}

QVariant CAlertListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const int row = index.row();
    switch (role) {
    case Qt::DisplayRole:
        return QtText(AlertLineText(At(row).symbol, Alert(row)));
    case Qt::CheckStateRole:
        return Alert(row).enabled != 0 ? Qt::Checked : Qt::Unchecked;
    case kStateRole:
        return StateText(row);
    case Qt::AccessibleTextRole: {
        const QString state = StateText(row);
        const QString line = data(index, Qt::DisplayRole).toString();
        return state.isEmpty() ? line : line + QStringLiteral(", ") + state;
    }
    case Qt::ToolTipRole:
        return PlainTipText(TipText(row));
    default:
        return {};
    }
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

void CAlertLineDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    constexpr int kMargin = 6;
    constexpr int kGap = 12;
    const QString state = index.data(CAlertListModel::kStateRole).toString();
    QStyleOptionViewItem line = option;
    initStyleOption(&line, index);
    const QStyle& style = *(line.widget ? line.widget->style() : QApplication::style());
    if (!state.isEmpty()) {
        const QRect text = style.subElementRect(QStyle::SE_ItemViewItemText, &line, line.widget);
        const int room = text.width() - line.fontMetrics.horizontalAdvance(state) - kMargin - kGap;
        line.text = line.fontMetrics.elidedText(line.text, Qt::ElideRight, std::max(room, 0));
    }
    style.drawControl(QStyle::CE_ItemViewItem, &line, painter, line.widget);
    if (state.isEmpty()) return;
    const bool selected = line.state.testFlag(QStyle::State_Selected);
    const bool dark = line.palette.color(QPalette::Base).lightness() < 128;
    painter->save();
    painter->setFont(line.font);
    painter->setPen(selected ? line.palette.color(QPalette::HighlightedText)
                             : QColor::fromRgb(dark ? kDarkWarning : kLightWarning));
    painter->drawText(line.rect.adjusted(0, 0, -kMargin, 0), Qt::AlignRight | Qt::AlignVCenter, state);
    painter->restore();
}

} // namespace vx
