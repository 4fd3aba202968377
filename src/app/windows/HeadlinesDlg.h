// SPDX-License-Identifier: MIT
#pragma once

#include "app/windows/ListWindow.h"

#include <QAbstractTableModel>

#include <cstdint>
#include <deque>
#include <string>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;

namespace vx {

class CHeadlineLog;
class CListView;
struct SHeadline;

/// The headlines of a log that pass a filter, newest first.
///
/// Owns    the numbers of the headlines, not their texts: a row is read from the log when it is painted
class CHeadlineModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum EColumn { kTime, kSymbols, kText, kColumns };

    CHeadlineModel(const CHeadlineLog& log, QObject* parent) : QAbstractTableModel(parent), m_log(log) {}

    /// symbol: show its headlines only; everySymbol: whatever the symbol. text: show those that hold it in headline or
    /// symbols, whatever the case of ASCII letters; empty for all.
    ///
    /// Returns whether the rows are others now
    bool SetFilter(bool everySymbol, const std::string& symbol, const std::string& text);
    /// Follows what was added to the log and dropped from it.
    ///
    /// Returns how many rows came on top of those that were there before
    int Update();

    /// Null for a row whose headline has just left the log.
    const SHeadline* At(int row) const;
    /// -1 for a headline that is not shown.
    int RowOf(uint64_t number) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    bool Passes(const SHeadline& headline) const;
    void RemoveGone();

    const CHeadlineLog& m_log;
    bool m_everySymbol = true;
    std::string m_symbol;
    std::string m_text;          ///< In lower case.
    std::deque<uint64_t> m_rows; ///< Numbers in the log.
    uint64_t m_seen = 0;         ///< Number of the newest headline looked at.
};

/// The symbols of a headline for people: "IBM, MSFT".
QString HeadlineSymbols(const SHeadline& headline, size_t mostBytes);

/// The headlines since the watchlist was opened, newest first: those of the focus row's symbol or all, each with its
/// whole text below the list.
class CHeadlinesDlg : public CRowWindow {
    Q_OBJECT
public:
    CHeadlinesDlg(CWatchlistDoc& doc, CWatchlistGrid& grid, QWidget* parent);

    void Refresh() override;
    /// Shows those of the focus row's symbol, or all when the row has none.
    void ShowRowsHeadlines();

private:
    void MakeLayout();
    void SelectDetail();
    void ShowDetail();
    void GoToRow(const QModelIndex& index);
    QString EmptyText(const QString& symbol) const;

    QRadioButton* m_rowOnly;
    QRadioButton* m_all;
    QLineEdit* m_filter;
    CListView* m_list;
    QPlainTextEdit* m_detail;
    QLabel* m_state;
    CHeadlineModel* m_headlines;
    QString m_notice; ///< What a double click came to, until the next one.
    uint64_t m_detailNumber = 0;
};

} // namespace vx
