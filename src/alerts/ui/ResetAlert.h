#pragma once

#include "alerts/rules/FiredAlert.h"

#include <QDialog>

#include <string>
#include <vector>

class QLabel;
class QPushButton;

namespace vx {

class CSpinEdit;

/// Asks for the new threshold of an alert that fired: as a value, or as percent up or down from the old one.
///
/// Errors  a threshold that another alert of the symbol has on the field is refused in a message box; OK cannot be
///         pressed while the value is no number
/// Thread  GUI thread only
class CResetAlert : public QDialog {
    Q_OBJECT
public:
    explicit CResetAlert(SAlertRecord notice, QWidget* parent = nullptr);

    /// Names the alert that will be changed, in words, and says whether it is the one that fired. An empty line names
    /// none. taken: the thresholds of the symbol's other alerts on its field.
    void ShowTarget(const std::string& line, bool isFired, std::vector<double> taken);
    /// The new threshold; for news, the one that news alerts always have.
    double NewThreshold() const;

    void accept() override;

private:
    void MakeBoxes();
    void OnPercentStep(int direction);
    void OnValueStep(int direction);
    void ShowValueOfPercent();
    void ShowPercentOfValue();
    void EnableOk();

    SAlertRecord m_notice;
    double m_base;
    std::vector<double> m_taken;
    QLabel* m_target;
    CSpinEdit* m_percent;
    CSpinEdit* m_value;
    QPushButton* m_ok = nullptr;
};

} // namespace vx
