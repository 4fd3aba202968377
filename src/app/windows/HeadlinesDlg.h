#pragma once

#include "app/windows/RowWindow.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;

namespace vx {

class CHeadlineModel;
class CListView;

/// The headlines since the watchlist was opened, newest first: those of the focus row's symbol or all, each with its
/// whole text below the list.
///
/// Thread  GUI thread only
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
