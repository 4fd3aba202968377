#pragma once

#include <QDialog>

#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
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

} // namespace vx
