// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QTimer>

#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSortFilterProxyModel;

namespace vx {

class CFeedSession;
class CListView;
class CSearchFilter;
class CSearchResultModel;
class CSettings;

/// Finds symbols on the feed client's lookup port: run it modally, and after OK take what was chosen.
///
/// Results are shown as they arrive. The replies of a search still arrive in the session when the dialog is gone.
class CSymbolSearchDlg : public QDialog {
    Q_OBJECT
public:
    static constexpr int kResultsTimer = 0;
    static constexpr int kResultsMs = 100;
    /// A feed that has been silent for this long is reported.
    static constexpr int kSilentMs = 5000;

    CSymbolSearchDlg(CFeedSession& session, CSettings& settings, QWidget* parent);

    CSearchFilter& Filter() { return *m_filter; }

    /// The symbol of the first selected result, "No Results Found" included; empty when none was selected, which the
    /// window's own OK button does not allow.
    const std::string& ChosenSymbol() const { return m_chosen; }
    /// The symbols of all selected results in the order in which they are shown.
    const std::vector<std::string>& ChosenSymbols() const { return m_allChosen; }

    void accept() override;
    void done(int result) override;

private:
    enum class EState { Idle, NotSent, Searching, Stopped };

    void MakeWidgets();
    void MakeLayout();
    void ConnectWidgets();
    void Search();
    void Stop();
    void TakeResults();
    void GoOn(bool nothing);
    void ShowState();
    QString StateText() const;
    QString EndText(int found) const;
    int FoundCount() const;
    bool IsConnected() const;

    CFeedSession& m_session;
    CSettings& m_settings;
    QLineEdit* m_text;
    QPushButton* m_search;
    QPushButton* m_stop;
    QRadioButton* m_bySymbol;
    QRadioButton* m_byDescription;
    CSearchFilter* m_filter;
    CListView* m_list;
    CSearchResultModel* m_results;
    QSortFilterProxyModel* m_sorted;
    QPushButton* m_other; ///< Searches again, by description instead of by symbol or the other way round.
    QLabel* m_state;
    QTimer m_timer;
    EState m_searching = EState::Idle;
    QString m_searched;   ///< The text that was searched for.
    int m_generation = 0; ///< Of the results that the list shows.
    std::string m_chosen;
    std::vector<std::string> m_allChosen;
};

} // namespace vx
