// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertsMap.h"
#include "alerts/ui/AlertDialogServices.h"

#include <QDialog>

#include <functional>

#include <string>
#include <string_view>

class QLabel;
class QListView;
class QPushButton;

namespace vx {

class CAlertListModel;
class CNewAlertDlg;

/// Lists the alerts of the watchlist; the user adds, edits, deletes, arms and disarms them. It works on the working
/// copy of the map and commits nothing.
class CAlertsDlg : public QDialog {
    Q_OBJECT
public:
    CAlertsDlg(CAlertsMap& alerts, const SAlertDialogServices& services, QWidget* parent = nullptr);

    /// Selects the first alert of a symbol, the first of all when it has none.
    void SelectSymbol(std::string_view symbol);

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void LayOut();
    void EnableButtons();
    void New();
    void Edit();
    void Delete();
    void Store(const std::string& symbol, const A_INFO& alert);
    void Replace(const std::string& oldSymbol, int oldIndex, const CNewAlertDlg& edited);
    void Refill(int row);
    void RefillAt(const std::string& symbol, const A_INFO& alert);
    void SelectRow(int row);
    int SelectedRow() const;

    CAlertsMap& m_alerts;
    const SAlertDialogServices& m_services;
    const bool m_hasSymbols;
    CAlertListModel* m_model;
    QListView* m_list;
    QLabel* m_empty;
    QPushButton* m_new;
    QPushButton* m_edit;
    QPushButton* m_delete;
};

/// Tells in a message box that a symbol, or the whole watchlist, has as many alerts as it can have.
void TellNoRoomForAlert(std::string_view symbol);

/// Has the user edit the alerts in the management dialog, modally, with the first alert of `symbol` selected. OK puts
/// the working copy in place of the live alerts.
///
/// around: when given, is handed that last step and carries it out; the owner records it, for example
/// Returns whether OK was chosen
bool EditAlertsWithDialog(CAlertsMap& alerts, const SAlertDialogServices& services, QWidget* parent,
                          std::string_view symbol = {},
                          const std::function<void(const std::function<void()>&)>& around = {});

} // namespace vx
