#pragma once

#include <QAbstractSpinBox>

namespace vx {

/// A box for a decimal number with two arrows beside it. What an arrow does to the text is up to whoever hears of it;
/// the arrows themselves only count, from 0 to kMostSteps either way.
///
/// Shape   keys that type are limited to digits and the decimal point; a text with other characters cannot be pasted
/// Thread  GUI thread only
class CSpinEdit : public QAbstractSpinBox {
    Q_OBJECT
public:
    static constexpr int kMostSteps = 1000;

    explicit CSpinEdit(QWidget* parent = nullptr);

    void SetText(const std::string& number);
    /// What stands in the box, read from its beginning; 0 when that is no number.
    double Number() const;
    /// Whether what stands in the box is a number as a whole.
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

} // namespace vx
