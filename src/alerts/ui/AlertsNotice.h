#pragma once

#include "alerts/rules/AlertNotice.h"

#include <QDialog>
#include <QPoint>

#include <optional>
#include <string>
#include <vector>

class QPushButton;

namespace vx {

/// What can be done about an alert that fired, as the notice appears.
struct SNoticeTarget {
    bool canArm = true;        ///< The alert that fired is still there.
    bool canReset = true;      ///< There is an alert at the index that a reset names.
    bool resetsFired = true;   ///< And it is the one that fired.
    std::string resetLine;     ///< That alert in words.
    std::vector<double> taken; ///< Thresholds of the symbol's other alerts on its field.
};

/// Tells the user that an alert fired. It is not modal and does not take the keyboard when it is shown; its queue keeps
/// input from the other windows and the first keys from it (CInputGate). No button is the default one or has the focus:
/// Enter presses a button that the user went to, Esc dismisses.
///
/// Shape   result(): EResult. A reset was posted to the owner as kResetAlertMessage by then
/// Owns    nothing of the owner, which outlives it
/// Thread  GUI thread only
class CAlertsNotice : public QDialog {
    Q_OBJECT
public:
    enum EResult { Dismissed = QDialog::Rejected, WasReset = QDialog::Accepted, Armed = 2 };

    CAlertsNotice(SFiredNotice fired, QObject& owner, QWidget* parent = nullptr);

    /// How many more notices wait behind this one; with some, they can be dismissed together.
    void SetWaiting(int count);
    void SetTarget(SNoticeTarget target);
    /// Whether the keyboard was with it, or with what was opened from it, when it was closed.
    bool HadKeyboard() const { return m_hadKeyboard; }
    /// Where the user moved it to; nothing while it is where it was opened.
    std::optional<QPoint> MovedTo() const;

    void done(int result) override;

Q_SIGNALS:
    void DismissAll();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void MakeTexts();
    void MakeButtons();
    void OnReset();

    SFiredNotice m_fired;
    SNoticeTarget m_target;
    QObject& m_owner;
    QPushButton* m_arm = nullptr;
    QPushButton* m_reset = nullptr;
    QPushButton* m_dismiss = nullptr;
    QPushButton* m_dismissAll = nullptr;
    bool m_hadKeyboard = false;
    std::optional<QPoint> m_openedAt; ///< Once the desktop has put it somewhere.
};

} // namespace vx
