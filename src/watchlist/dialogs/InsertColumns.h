// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTreeWidget;

namespace vx {

class CColumnMap;
struct SFieldEntry;

/// The catalogue columns that can be put into a grid, in catalogue order from entry 1 on: those that have a name and
/// are not shown. A hidden column is not shown.
std::vector<const SFieldEntry*> InsertableColumns(const CColumnMap& columns);

/// Lets the user choose columns to insert: their names with an explanation beside each, and a filter that looks into
/// both.
///
/// Thread  GUI thread only
class CInsertColumns : public QDialog {
    Q_OBJECT
public:
    CInsertColumns(const CColumnMap& columns, QWidget* parent);

    /// The names chosen, in the order of the list.
    std::vector<std::string> Chosen() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Fill(const CColumnMap& columns);
    void Filter(const QString& text);
    void ShowState();

    QLineEdit* m_filter;
    QTreeWidget* m_list;
    QLabel* m_state;
    QPushButton* m_insert;
};

/// Asks whether rows or columns are meant, when what is selected does not say. It opens with rows chosen, whatever was
/// chosen the last time.
///
/// Thread  GUI thread only
class CInsertDeleteChoiceDlg : public QDialog {
    Q_OBJECT
public:
    enum class EWhat { Insert, Delete };

    /// rows, columns: how many of each are selected.
    CInsertDeleteChoiceDlg(EWhat what, int rows, int columns, QWidget* parent);

    bool IsRows() const;

private:
    QRadioButton* m_rows;
    QRadioButton* m_columns;
};

} // namespace vx
