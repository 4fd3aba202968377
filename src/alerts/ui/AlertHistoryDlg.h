// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertHistory.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class QTimer;

namespace vx {

class CAlertHistoryFilter;
class CAlertHistoryModel;

/// Shows which alerts fired: first those that fired while the user was away, then all, filtered and sorted as the user
/// likes, and written to a file for spreadsheets. Modeless.
class CAlertHistoryDlg : public QDialog {
    Q_OBJECT
public:
    explicit CAlertHistoryDlg(const CAlertHistory& history, QWidget* parent = nullptr);

    /// The history has changed: reads it again, once, when the event loop comes round.
    void RefreshSoon();
    /// Reads the history and shows what fired in the last absence; everything when nothing did.
    void ShowMissed();

    /// Errors  a message box names a file that cannot be written
    void ExportTo(const QString& path);

private:
    void MakeFilters();
    void MakeTable();
    void LayOut();
    void Refresh();
    void FillSymbols();
    void Filter();
    void ShowSummary();
    void ChooseExport();

    const CAlertHistory& m_history;
    CAlertHistoryModel* m_model;
    CAlertHistoryFilter* m_filter;
    QComboBox* m_view;
    QComboBox* m_symbol;
    QLineEdit* m_text;
    QCheckBox* m_onlyOpen;
    QTableView* m_table;
    QLabel* m_summary;
    QLabel* m_empty;
    QPushButton* m_export;
    QTimer* m_soon;
    std::vector<std::string> m_symbols; ///< Parallel to the list of symbols from its second entry on.
};

} // namespace vx
