// SPDX-License-Identifier: MIT
#pragma once

#include "feed/lookup/LookupTables.h"

#include <QAbstractTableModel>
#include <QWidget>

#include <array>
#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QPushButton;
class QStandardItemModel;

namespace vx {

class CListView;

/// The results of a symbol search as rows, in the order of their arrival.
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

/// The filter of a symbol search: none, some listed markets or some security types, which are chosen from a list.
///
/// The names are loaded from the lookup port when they are first needed, which blocks the window for the time-out at
/// most; a list that could not be loaded says why and offers another try.
///
/// Owns    the two tables
class CSearchFilter : public QWidget {
    Q_OBJECT
public:
    enum EMode { kNone, kMarkets, kSecurityTypes };

    explicit CSearchFilter(QWidget* parent);

    std::array<QWidget*, 3> InTabOrder() const;
    void SetTimes(SLookupTimes times);

    EMode Mode() const { return m_mode; }
    /// Does nothing for the mode that is shown already.
    void SetMode(EMode mode);
    /// The identifiers of the selected rows, blanks between them; empty for none.
    std::string SelectedIds() const;
    /// The short name of a market by its identifier as the feed writes it; empty for an empty identifier, an unknown
    /// one, and while there are no names. Tries once to load them.
    QString MarketName(std::string_view id);
    bool HasMarketNames() const { return m_markets.IsLoaded(); }

private:
    void Fill();
    template <typename TTable> void FillFrom(TTable& table, const QString& nothing);
    void ShowHint();
    void ShowList(bool shown);

    CListedMarkets m_markets;
    CSecurityTypes m_types;
    EMode m_mode = kNone;
    bool m_marketsTried = false;
    QComboBox* m_choice;
    QLabel* m_hint;
    QPushButton* m_again;
    CListView* m_list;
    QStandardItemModel* m_rows;
};

} // namespace vx
