// SPDX-License-Identifier: MIT
#include "alerts/ui/NewAlertDlg.h"

#include "alerts/rules/AlertInfo.h"
#include "alerts/rules/AlertTexts.h"
#include "alerts/ui/AlertSoundBox.h"
#include "base/MessageBox.h"
#include "base/Number.h"
#include "base/qt/QtText.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace vx {

namespace {

constexpr double kNewsThreshold = 1.0;
constexpr int kListCharacters = 26;
constexpr int kMostListRows = 20;
constexpr int kMostValueCharacters = 330; // The greatest double in full.
constexpr const char* kIsReceived = "is received";

QComboBox* MakeList(const char* name, const QString& placeholder) {
    auto* list = new QComboBox;
    list->setObjectName(QString::fromLatin1(name));
    list->setPlaceholderText(placeholder);
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(kListCharacters);
    // Most styles would cover the screen with a long list, however many rows are asked for.
    list->setStyleSheet(QStringLiteral("combobox-popup: 0"));
    list->view()->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    list->setMaxVisibleItems(kMostListRows);
    return list;
}

} // namespace

SAlertDraft DraftOf(const std::string& symbol, const A_INFO& alert) {
    return {.symbol = symbol,
            .fieldId = alert.fieldId,
            .condition = alert.condition,
            .value = fmt::format("{}", alert.value),
            .noZero = alert.noZero != 0,
            .soundType = alert.soundType,
            .soundFile = alert.soundFile,
            .loopSound = alert.loopSound != 0};
}

CNewAlertDlg::CNewAlertDlg(const SAlertDialogServices& services, const SAlertDraft& draft, QWidget* parent)
    : QDialog(parent), m_services(services) {
    setObjectName(QStringLiteral("newAlertDlg"));
    setWindowTitle(QStringLiteral("Alert"));
    MakeWidgets();
    LayOut();
    FillSymbols(draft.symbol);
    FillFields(draft.fieldId);
    ShowOperations(false);
    if (draft.condition && !ConditionWords(*draft.condition).empty())
        m_operationList->setCurrentIndex(static_cast<int>(*draft.condition));
    m_valueBox->setText(QtText(draft.value));
    m_noZero->setChecked(draft.noZero);
    m_sound->Choose(draft.soundType, draft.soundFile);
    m_loop->setChecked(draft.loopSound);
    m_arm->setVisible(draft.offerArming);
    m_arm->setChecked(draft.offerArming);
    OnFieldChosen();
    connect(m_symbolList, &QComboBox::currentIndexChanged, this, &CNewAlertDlg::ShowValueNow);
    connect(m_fieldList, &QComboBox::currentIndexChanged, this, &CNewAlertDlg::OnFieldChosen);
    if (m_fieldList->currentIndex() >= 0 && !IsNews()) {
        m_valueBox->setFocus();
        m_valueBox->selectAll();
    }
}

void CNewAlertDlg::MakeWidgets() {
    m_symbolList = MakeList("symbolList", QStringLiteral("Choose a symbol"));
    m_fieldList = MakeList("fieldList", QStringLiteral("Choose a field"));
    m_operationList = MakeList("operationList", QStringLiteral("Choose an operation"));
    m_valueBox = new QLineEdit;
    m_valueBox->setObjectName(QStringLiteral("valueBox"));
    m_valueBox->setMaxLength(kMostValueCharacters);
    m_valueNow = new QLabel;
    m_valueNow->setObjectName(QStringLiteral("valueNow"));
    m_valueNow->setTextFormat(Qt::PlainText);
    m_noZero = new QCheckBox(QStringLiteral("Do &NOT fire alert for zero values"));
    m_noZero->setObjectName(QStringLiteral("noZero"));
    m_sound = new CAlertSoundBox(m_services);
    m_loop = new QCheckBox(QStringLiteral("&Loop the sound until the notice is closed"));
    m_loop->setObjectName(QStringLiteral("loopSound"));
    m_arm = new QCheckBox(QStringLiteral("&Arm this alert: it fired or is off"));
    m_arm->setObjectName(QStringLiteral("arm"));
}

void CNewAlertDlg::LayOut() {
    auto* value = new QHBoxLayout;
    value->addWidget(m_valueBox, 1);
    value->addWidget(m_valueNow);
    auto* form = new QFormLayout;
    const auto addRow = [form](const QString& text, auto* field, QWidget* buddy) {
        auto* label = new QLabel(text);
        label->setBuddy(buddy);
        form->addRow(label, field);
    };
    addRow(QStringLiteral("&Symbol:"), m_symbolList, m_symbolList);
    addRow(QStringLiteral("&Field Name:"), m_fieldList, m_fieldList);
    addRow(QStringLiteral("&Operation:"), m_operationList, m_operationList);
    addRow(QStringLiteral("&Value:"), value, m_valueBox);
    form->addRow(QString(), m_noZero);
    addRow(QStringLiteral("So&und:"), m_sound, &m_sound->List());
    form->addRow(QString(), m_loop);
    form->addRow(QString(), m_arm);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->setObjectName(QStringLiteral("buttons"));
    connect(buttons, &QDialogButtonBox::accepted, this, &CNewAlertDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addStretch(1);
    layout->addWidget(buttons);
}

// The symbol of an alert may have left the watchlist: it can be kept.
void CNewAlertDlg::FillSymbols(const std::string& chosen) {
    m_symbols = m_services.symbols();
    auto place = std::ranges::find(m_symbols, chosen);
    if (place == m_symbols.end() && !chosen.empty()) place = m_symbols.insert(m_symbols.begin(), chosen);
    QStringList shown;
    shown.reserve(static_cast<qsizetype>(m_symbols.size()));
    for (const std::string& symbol : m_symbols) shown.append(QtText(ShownLine(symbol)));
    m_symbolList->addItems(shown);
    m_symbolList->setCurrentIndex(chosen.empty() ? -1 : static_cast<int>(place - m_symbols.begin()));
}

// A field's place in the list is its id, but for the latest headline, which is an alert on news under another name.
void CNewAlertDlg::FillFields(const std::optional<int32_t>& chosen) {
    for (int32_t id = 0; !AlertFieldName(id).empty(); ++id) m_fieldList->addItem(QtText(AlertFieldName(id)));
    const bool known = chosen && *chosen >= 0 && *chosen < m_fieldList->count();
    m_fieldList->setCurrentIndex(known ? *chosen : -1);
}

bool CNewAlertDlg::IsNews() const { return m_fieldList->currentIndex() == NewsFieldId(); }

int32_t CNewAlertDlg::ChosenField() const {
    const int place = m_fieldList->currentIndex();
    return AlertFieldId(AlertFieldName(place)) == NewsFieldId() ? NewsFieldId() : place;
}

bool CNewAlertDlg::ArmsAgain() const { return m_arm->isChecked(); }

void CNewAlertDlg::OnFieldChosen() {
    const bool news = IsNews();
    if (news != m_newsShown) ShowOperations(news);
    m_valueBox->setEnabled(!news);
    m_noZero->setEnabled(!news);
    ShowValueNow();
}

void CNewAlertDlg::ShowOperations(bool news) {
    if (news) m_operation = m_operationList->currentIndex();
    m_newsShown = news;
    m_operationList->clear();
    if (news) {
        m_operationList->addItem(QString::fromLatin1(kIsReceived));
        m_operationList->setCurrentIndex(0);
        return;
    }
    for (uint32_t code = 0; !ConditionWords(code).empty(); ++code)
        m_operationList->addItem(QtText(ConditionWords(code)));
    m_operationList->setCurrentIndex(m_operation);
}

void CNewAlertDlg::ShowValueNow() {
    const int symbol = m_symbolList->currentIndex();
    const int field = ChosenField();
    QString hint;
    if (field == NewsFieldId()) {
        hint = QStringLiteral("Fires with each news story");
    } else if (field >= 0 && !JudgedField(field)) {
        hint = QStringLiteral("Alerts on this field never fire");
    } else if (m_services.valueNow && symbol >= 0 && field >= 0) {
        const std::string now = m_services.valueNow(m_symbols[static_cast<size_t>(symbol)], field);
        if (!now.empty()) hint = QStringLiteral("Now %1").arg(QtText(now));
    }
    m_valueNow->setText(hint);
    m_valueNow->setVisible(!IsNews() && !hint.isEmpty());
}

bool CNewAlertDlg::Refuse(const char* text, QWidget& where) {
    ShowMessageBox({.text = text, .caption = {}, .icon = EBoxIcon::Exclamation});
    where.setFocus();
    return false;
}

bool CNewAlertDlg::ReadChoices() {
    const int symbol = m_symbolList->currentIndex();
    if (symbol < 0) return Refuse("Please select a Symbol.", *m_symbolList);
    const int32_t field = ChosenField();
    if (field < 0) return Refuse("Please select a Field Name.", *m_fieldList);
    const int operation = m_operationList->currentIndex();
    if (!IsNews() && operation < 0) return Refuse("Please select an Operation.", *m_operationList);

    m_symbol = m_symbols[static_cast<size_t>(symbol)];
    m_fieldName = BytesFromQt(m_fieldList->currentText());
    m_alert.enabled = 1;
    m_alert.fieldId = field;
    m_alert.condition = IsNews() ? 0 : static_cast<uint32_t>(operation);
    m_alert.value = kNewsThreshold;
    m_alert.noZero = m_noZero->isChecked() ? 1 : 0;
    m_alert.soundType = m_sound->SoundType();
    m_alert.soundFile = m_sound->SoundFile();
    m_alert.loopSound = m_loop->isChecked() ? 1 : 0;
    if (IsNews()) return true;
    const std::optional<double> value = ReadWholeDouble(BytesFromQt(m_valueBox->text().trimmed()));
    if (!value || !std::isfinite(*value)) {
        m_valueBox->selectAll();
        return Refuse("The Value entered was invalid.\n\nPlease enter a new Value.", *m_valueBox);
    }
    m_alert.value = *value;
    return true;
}

void CNewAlertDlg::accept() {
    if (!ReadChoices()) return;
    m_sound->SaveFiles();
    QDialog::accept();
}

} // namespace vx
