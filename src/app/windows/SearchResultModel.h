#pragma once

#include <QAbstractTableModel>

#include <string>
#include <vector>

namespace vx {

/// The results of a symbol search as rows, in the order of their arrival.
///
/// Thread  GUI thread only
class CSearchResultModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum EColumn { kSymbol, kMarket, kDescription, kColumns };

    struct SRow {
        std::string symbol; ///< As the feed sent it.
        QString shownSymbol;
        QString market;
        QString description;
    };

    using QAbstractTableModel::QAbstractTableModel;

    void Clear();
    void Append(const std::vector<SRow>& rows);
    const std::string& SymbolAt(int row) const { return m_rows[static_cast<size_t>(row)].symbol; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<SRow> m_rows;
};

} // namespace vx
