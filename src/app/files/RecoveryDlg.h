// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/file/RecoveryFile.h"

#include <QDialog>

#include <optional>
#include <vector>

class QPushButton;
class QTreeWidget;

namespace vx {

/// Lists unsaved changes of earlier runs: one may be recovered into this window, each may be thrown away after a
/// question, and what is left waits for the next time.
///
/// Owns    the recoveries, and with them the claim to each while the dialog is open
/// Thread  GUI thread only
class CRecoveryDlg : public QDialog {
    Q_OBJECT
public:
    CRecoveryDlg(std::vector<SRecovery> found, QWidget* parent);

    /// The recovery to open; nothing when none was chosen. The claims to all others end.
    std::optional<SRecovery> TakeChosen();

private:
    void Fill();
    void Discard();
    int Current() const;

    std::vector<SRecovery> m_found; ///< Newest first, as in the list.
    QTreeWidget* m_list;
    QPushButton* m_recover;
    QPushButton* m_discard;
};

} // namespace vx
