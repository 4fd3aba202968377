// SPDX-License-Identifier: MIT
#include "alerts/ui/ResetAlert.h"

#include "alerts/rules/AlertTexts.h"
#include "base/MessageBox.h"
#include "base/Number.h"
#include "base/qt/QtText.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

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

namespace {

constexpr double kNewsThreshold = 1.0;
constexpr int kPercentDecimals = 4;
constexpr int kPromptWidth = 380;

std::string Fixed(double number, int decimals = 6) {
    std::string out;
    AppendFixed(out, number, decimals);
    return out;
}

// How the two numbers of the dialog follow each other: how far the threshold moves in percent of the old one (the
// base), and the new threshold.

// The threshold that lies so many percent of the base's size above it, or below it for a negative percent.
double ThresholdOfPercent(double base, double percent) {
    const double step = std::fabs(percent) / 100 * std::fabs(base);
    return percent > 0 ? base + step : base - step;
}

// How many percent a threshold differs from the base, by the sizes of both; -0 at the base itself, 0 for a base of 0.
double PercentOfThreshold(double base, double threshold) {
    if (base == 0) return 0;
    const double ratio = std::fabs(threshold / base) * 100;
    return threshold > base ? ratio - 100 : -(100 - ratio);
}

QLabel* MakeLabel(const char* name) {
    auto* label = new QLabel;
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(kPromptWidth);
    return label;
}

} // namespace

CResetAlert::CResetAlert(SAlertRecord notice, QWidget* parent)
    : QDialog(parent), m_notice(std::move(notice)), m_base(m_notice.threshold), m_target(MakeLabel("target")),
      m_percent(new CSpinEdit), m_value(new CSpinEdit) {
    setObjectName(QStringLiteral("resetAlert"));
    setWindowTitle(QStringLiteral("Reset Alert"));
    auto* prompt = MakeLabel("prompt");
    prompt->setText(QtText(ResetPrompt(m_notice)));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    m_ok->setText(QStringLiteral("&Reset Alert"));
    connect(buttons, &QDialogButtonBox::accepted, this, &CResetAlert::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(prompt);
    layout->addWidget(m_target);
    m_target->hide();
    layout->addSpacing(8);
    MakeBoxes();
    if (!m_notice.isNews) {
        auto* form = new QFormLayout;
        form->addRow(QStringLiteral("&Percent:"), m_percent);
        form->addRow(QStringLiteral("&Value:"), m_value);
        layout->addLayout(form);
        layout->addSpacing(8);
        m_value->setFocus();
    }
    layout->addStretch(1);
    layout->addWidget(buttons);
    m_ok->setDefault(true); // Only a button that is already in its dialog stays the default one.
}

void CResetAlert::MakeBoxes() {
    m_percent->setParent(this);
    m_value->setParent(this);
    m_percent->setVisible(!m_notice.isNews);
    m_value->setVisible(!m_notice.isNews);
    m_percent->setObjectName(QStringLiteral("percent"));
    m_percent->setToolTip(QStringLiteral("How far the alert moves, in percent of its present value"));
    m_value->setObjectName(QStringLiteral("value"));
    m_value->setToolTip(QStringLiteral("The value at which the alert fires from now on"));
    m_percent->SetText(Fixed(0, kPercentDecimals));
    m_value->SetText(Fixed(m_base));
    connect(m_percent, &CSpinEdit::Stepped, this, &CResetAlert::OnPercentStep);
    connect(m_value, &CSpinEdit::Stepped, this, &CResetAlert::OnValueStep);
    connect(m_percent, &CSpinEdit::Typed, this, &CResetAlert::ShowValueOfPercent);
    connect(m_value, &CSpinEdit::Typed, this, &CResetAlert::ShowPercentOfValue);
}

void CResetAlert::ShowTarget(const std::string& line, bool isFired, std::vector<double> taken) {
    m_taken = std::move(taken);
    m_target->setVisible(!line.empty());
    m_target->setText(isFired
                          ? QStringLiteral("This resets the alert that fired:\n%1").arg(QtText(line))
                          : QStringLiteral("This resets the first alert of the symbol, not the one that fired:\n%1\n"
                                           "\"Arm this alert\" in the notice arms the one that fired.")
                                .arg(QtText(line)));
}

double CResetAlert::NewThreshold() const { return m_notice.isNews ? kNewsThreshold : m_value->Number(); }

void CResetAlert::OnPercentStep(int direction) {
    m_percent->SetText(Fixed(m_percent->Number() + direction, kPercentDecimals));
    ShowValueOfPercent();
}

void CResetAlert::OnValueStep(int direction) {
    m_value->SetText(Fixed(m_value->Number() + direction));
    ShowPercentOfValue();
}

void CResetAlert::ShowValueOfPercent() {
    m_value->SetText(Fixed(ThresholdOfPercent(m_base, m_percent->Number()), kPercentDecimals));
    EnableOk();
}

void CResetAlert::ShowPercentOfValue() {
    m_percent->SetText(Fixed(PercentOfThreshold(m_base, m_value->Number())));
    EnableOk();
}

void CResetAlert::EnableOk() { m_ok->setEnabled(m_notice.isNews || m_value->HoldsNumber()); }

void CResetAlert::accept() {
    const double threshold = NewThreshold();
    const auto isIt = [threshold](const std::string& other) { return ReadDouble(other) == threshold; };
    const bool taken =
        std::ranges::any_of(m_notice.otherThresholds, isIt) || std::ranges::count(m_taken, threshold) != 0;
    if (taken && !m_notice.isNews) {
        ShowMessageBox(
            {ThresholdTakenText(m_notice.symbol, threshold, m_notice.fieldName), {}, EBoxButtons::Ok, EBoxIcon::None});
        return;
    }
    QDialog::accept();
}

} // namespace vx
