// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/edit/FormatCommands.h"

#include <QDialog>

class QCheckBox;
class QSpinBox;

namespace vx {

class CFormatFields;
class CWatchlistDoc;

/// The dialog of the look of the selected cells.
///
/// Owns    nothing of the document, which outlives it
/// Thread  GUI thread only
class CCellSettingsDlg : public QDialog {
    Q_OBJECT
public:
    /// Shows the format of the cell (row, column); what the user changes of it is changed in all of the range.
    CCellSettingsDlg(CWatchlistDoc& doc, const SFormatRange& range, int row, int column, QWidget* parent);

    void accept() override;

private:
    CWatchlistDoc& m_doc;
    SFormatRange m_range;
    CFormatFields* m_fields;
};

/// The dialog of the look and the options of the whole watchlist.
///
/// Owns    nothing of the document, which outlives it
/// Thread  GUI thread only
class CGridSettingsDlg : public QDialog {
    Q_OBJECT
public:
    CGridSettingsDlg(CWatchlistDoc& doc, QWidget* parent);

    void accept() override;

private:
    CWatchlistDoc& m_doc;
    CFormatFields* m_fields;
    QCheckBox* m_gridPrecision;
    QCheckBox* m_defaultAlignment;
    QSpinBox* m_trailingRows;
};

} // namespace vx
