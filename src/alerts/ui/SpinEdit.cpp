#include "alerts/ui/SpinEdit.h"

#include "base/Number.h"
#include "base/qt/QtText.h"

#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace vx {

namespace {

constexpr int kMostCharacters = 330; // The greatest double in full.

bool IsNumberCharacter(QChar c) { return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('.'); }

} // namespace

CSpinEdit::CSpinEdit(QWidget* parent) : QAbstractSpinBox(parent) {
    setCorrectionMode(CorrectToPreviousValue);
    lineEdit()->setMaxLength(kMostCharacters);
    connect(lineEdit(), &QLineEdit::textEdited, this, &CSpinEdit::Typed);
}

void CSpinEdit::SetText(const std::string& number) { lineEdit()->setText(QtText(number)); }

double CSpinEdit::Number() const { return ReadDouble(BytesFromQt(text())); }

bool CSpinEdit::HoldsNumber() const {
    const auto number = ReadWholeDouble(BytesFromQt(text().trimmed()));
    return number && std::isfinite(*number);
}

void CSpinEdit::stepBy(int steps) {
    const int direction = steps > 0 ? 1 : -1;
    for (int i = std::abs(steps); i > 0; --i) {
        if (std::abs(m_steps + direction) > kMostSteps) return;
        m_steps += direction;
        Q_EMIT Stepped(direction);
    }
}

QAbstractSpinBox::StepEnabled CSpinEdit::stepEnabled() const {
    StepEnabled out = StepNone;
    if (m_steps < kMostSteps) out |= StepUpEnabled;
    if (m_steps > -kMostSteps) out |= StepDownEnabled;
    return out;
}

QValidator::State CSpinEdit::validate(QString& text, int&) const {
    const auto first = text.cbegin() + (text.startsWith(QLatin1Char('-')) ? 1 : 0);
    return std::all_of(first, text.cend(), IsNumberCharacter) ? QValidator::Acceptable : QValidator::Invalid;
}

void CSpinEdit::keyPressEvent(QKeyEvent* event) {
    const QString typed = event->text();
    const bool types = !typed.isEmpty() && typed.front().isPrint();
    if (types && !std::all_of(typed.cbegin(), typed.cend(), IsNumberCharacter)) return event->accept();
    QAbstractSpinBox::keyPressEvent(event);
}

} // namespace vx
