// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/FiredAlert.h"

#include <QAbstractSpinBox>
#include <QDialog>

#include <string>
#include <vector>

class QLabel;
class QPushButton;

namespace vx {

/// A box for a decimal number with two arrows beside it. The arrows only count, up to kMostSteps either way, and report
/// each step; the receiver changes the number. A QDoubleSpinBox would limit the number instead of the steps, and round
/// what is typed to its decimals.
///
/// Shape   keys that type are limited to digits and the decimal point; a text with other characters cannot be pasted
class CSpinEdit : public QAbstractSpinBox {
    Q_OBJECT
public:
    static constexpr int kMostSteps = 1000;

    explicit CSpinEdit(QWidget* parent = nullptr);

    void SetText(const std::string& number);
    /// The number at the beginning of the text; 0 when there is none.
    double Number() const;
    /// Whether the whole text is a number.
    bool HoldsNumber() const;

    void stepBy(int steps) override;
    QValidator::State validate(QString& text, int& position) const override;

Q_SIGNALS:
    /// An arrow moved the box by one, up (1) or down (-1).
    void Stepped(int direction);
    /// The user typed.
    void Typed();

protected:
    StepEnabled stepEnabled() const override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    int m_steps = 0;
};

/// Asks for the new threshold of an alert that fired: as a value, or as percent up or down from the old one.
///
/// Errors  a threshold that another alert of the symbol has on the field is refused in a message box; OK cannot be
///         pressed while the value is no number
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
