// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QRadioButton;
class QSpinBox;

namespace vx {

class CWatchlistDoc;

/// The dialog of the auto sort: by which column, in which direction and how often.
///
/// Owns    nothing of the document, which outlives it; OK changes its sort record
/// Thread  GUI thread only
class CSort : public QDialog {
    Q_OBJECT
public:
    /// focusColumn: what the column list begins with while there is no sort column.
    CSort(CWatchlistDoc& doc, int focusColumn, QWidget* parent);

    /// OK: stays open after a message when the entry cannot be taken.
    void accept() override;

private:
    void ShowRecord(int focusColumn);
    void EnableFields();

    CWatchlistDoc& m_doc;
    QCheckBox* m_autoSort;
    QComboBox* m_column;
    QRadioButton* m_ascending;
    QRadioButton* m_descending;
    QSpinBox* m_interval;
    QComboBox* m_unit;
};

} // namespace vx
