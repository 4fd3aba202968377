#pragma once

#include "alerts/AlertNotice.h"
#include "base/Clock.h"

#include <QDialog>
#include <QElapsedTimer>

#include <string>

class QPushButton;

namespace vx {

/// Tells the user that an alert fired. Accepted when the alert was reset, which the owner has been posted then as
/// kResetAlertMessage; rejected when it was dismissed and stays disarmed.
///
/// Keys are dropped until none was pressed for kKeyGuardMs, for kMostKeyGuardMs at the most: what is being typed was
/// meant for what the notice came over.
///
/// Thread  GUI thread only
class CAlertsNotice : public QDialog {
    Q_OBJECT
public:
    static constexpr int kKeyGuardMs = 400;
    static constexpr int kMostKeyGuardMs = 2000;

    /// owner: the frame window, which outlives the notice. firedAt: local time.
    CAlertsNotice(SAlertNotice notice, const SLocalTime& firedAt, QObject& owner, QWidget* parent = nullptr);

    const SAlertNotice& Notice() const { return m_notice; }
    /// How many more notices wait behind this one; with some, they can be dismissed together.
    void SetWaiting(int count);
    /// Whether there is an alert to reset.
    void SetResettable(bool resettable);
    /// The threshold that it was reset to; only once accepted.
    double NewThreshold() const { return m_newThreshold; }

Q_SIGNALS:
    void DismissAll();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void MakeButtons();
    bool IsGuarded() const;
    void OnReset();

    SAlertNotice m_notice;
    QObject& m_owner;
    QPushButton* m_reset = nullptr;
    QPushButton* m_dismiss = nullptr;
    QPushButton* m_dismissAll = nullptr;
    QElapsedTimer m_shown;
    QElapsedTimer m_lastKey; ///< Or since it is shown.
    double m_newThreshold = 0;
};

} // namespace vx
