// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertInfo.h"
#include "alerts/ui/AlertDialogServices.h"

#include <QDialog>

#include <optional>
#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

namespace vx {

class CAlertSoundBox;

/// An alert and the symbol it belongs to, as far as it is known.
struct SAlertDraft {
    std::string symbol = {};             ///< Empty: not chosen yet.
    std::optional<int32_t> fieldId = {}; ///< Not chosen without.
    std::optional<uint32_t> condition = {};
    std::string value = {}; ///< As text.
    bool noZero = false;
    uint32_t soundType = 0;
    std::string soundFile = {};
    bool loopSound = false;
    bool offerArming = false; ///< The alert being edited fired or was switched off.
};

/// An alert as the dialog is filled with it for editing.
SAlertDraft DraftOf(const std::string& symbol, const A_INFO& alert);

/// Edits one alert. Every field of the catalogue is offered, "News" among them; of one that alerts are never judged by
/// the dialog says so. "Latest Headline" keeps its operations and makes an alert on news.
///
/// Errors  OK checks symbol, field, operation and value in this order; the first that is missing or no number is named
///         in a message box and the dialog stays open
class CNewAlertDlg : public QDialog {
    Q_OBJECT
public:
    CNewAlertDlg(const SAlertDialogServices& services, const SAlertDraft& draft, QWidget* parent = nullptr);

    // The results, once it was accepted.

    const std::string& Symbol() const { return m_symbol; }
    const std::string& FieldName() const { return m_fieldName; }
    /// Armed.
    const A_INFO& Alert() const { return m_alert; }
    /// Whether the user has an alert armed that fired or was switched off.
    bool ArmsAgain() const;

    void accept() override;

private:
    void MakeWidgets();
    void LayOut();
    void FillSymbols(const std::string& chosen);
    void FillFields(const std::optional<int32_t>& chosen);
    void OnFieldChosen();
    void ShowOperations(bool news);
    void ShowValueNow();
    bool IsNews() const;
    int32_t ChosenField() const;
    bool Refuse(const char* text, QWidget& where);
    bool ReadChoices();

    const SAlertDialogServices& m_services;
    std::vector<std::string> m_symbols; ///< Parallel to the list of symbols.
    QComboBox* m_symbolList;
    QComboBox* m_fieldList;
    QComboBox* m_operationList;
    QLineEdit* m_valueBox;
    QLabel* m_valueNow;
    QCheckBox* m_noZero;
    CAlertSoundBox* m_sound;
    QCheckBox* m_loop;
    QCheckBox* m_arm;
    bool m_newsShown = false;
    int m_operation = -1; ///< The choice to come back to after News.

    std::string m_symbol;
    std::string m_fieldName;
    A_INFO m_alert;
};

} // namespace vx
