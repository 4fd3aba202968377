// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/edit/FormatCommands.h"

#include <QToolButton>
#include <QWidget>

#include <cstdint>

class QCheckBox;
class QComboBox;
class QFontComboBox;
class QFormLayout;
class QSpinBox;

namespace vx {

/// A button that shows a colour and lets the user choose another: the theme's own, one of a few that can be read in
/// light and dark, or any other.
///
/// Units   colours 0xBBGGRR, SCellFormat::kAutomatic for the theme's
/// Thread  GUI thread only
class CColourButton : public QToolButton {
    Q_OBJECT
public:
    explicit CColourButton(QWidget* parent = nullptr);

    void SetColour(int32_t colour);
    int32_t Colour() const { return m_colour; }

Q_SIGNALS:
    /// The user chose a colour.
    void ColourChosen(int32_t colour);

private:
    void Choose(int32_t colour);
    void ChooseAny();

    int32_t m_colour = -1;
};

class CColourButton;

/// The controls of a cell format: font, colours, alignment, decimals, border and what a number is shown as. Only what
/// the user touches becomes a change.
///
/// Thread  GUI thread only
class CFormatFields : public QWidget {
    Q_OBJECT
public:
    explicit CFormatFields(QWidget* parent = nullptr);

    /// Shows a format; nothing counts as changed then.
    ///
    /// standsOut: see IsDrawnBold; ofField: the rule of colours where nobody chose one, OfField when that differs
    void Show(const SCellFormat& format, bool standsOut, EColourRule ofField);
    const SFormatChange& Change() const { return m_change; }

    /// Some rule of the whole watchlist overrides the field: it is disabled, and its tip says why.
    void DisableAlignment(const QString& why);
    void DisableDecimals(const QString& why);
    /// The cells cannot be shown so.
    void DisableKind(ECellKind kind, const QString& why);

private:
    CColourButton* AddColour(QFormLayout& form, const char* name, const QString& label,
                             std::optional<int32_t>& changed);
    void ConnectFields();
    static void ShowNumber(QComboBox& box, int32_t number);

    SFormatChange m_change;
    QFontComboBox* m_font;
    QSpinBox* m_size;
    QCheckBox* m_bold;
    QCheckBox* m_italic;
    QComboBox* m_alignment;
    QSpinBox* m_decimals;
    QComboBox* m_colourRule;
    QComboBox* m_border;
    QComboBox* m_kind;
    CColourButton* m_text;
    CColourButton* m_back;
    CColourButton* m_up;
    CColourButton* m_down;
    CColourButton* m_unchanged;
};

} // namespace vx
