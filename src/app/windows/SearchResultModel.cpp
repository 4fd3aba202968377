#include "app/windows/SearchResultModel.h"

#include "base/qt/QtText.h"

#include <array>

namespace vx {

namespace {

constexpr std::array<const char*, CSearchResultModel::kColumns> kTitles = {"Symbol", "Market", "Description"};

} // namespace

void CSearchResultModel::Clear() {
    if (m_rows.empty()) return;
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

void CSearchResultModel::Append(const std::vector<SRow>& rows) {
    if (rows.empty()) return;
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(rows.size()) - 1);
    m_rows.insert(m_rows.end(), rows.begin(), rows.end());
    endInsertRows();
}

int CSearchResultModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CSearchResultModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int{kColumns}; }

QVariant CSearchResultModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const SRow& row = m_rows[static_cast<size_t>(index.row())];
    const QString& text = index.column() == kSymbol   ? row.shownSymbol
                          : index.column() == kMarket ? row.market
                                                      : row.description;
    return role == Qt::ToolTipRole ? PlainTipText(text) : text;
}

QVariant CSearchResultModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= kColumns) return {};
    return QString::fromUtf8(kTitles[static_cast<size_t>(section)]);
}

} // namespace vx
