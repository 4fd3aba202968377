#pragma once

#include <QDialog>

class QLineEdit;
class QSortFilterProxyModel;

namespace vx {

class CCommands;
class CListView;

/// All keys of the program and what they do: those of the commands, and those of the board itself.
///
/// Owns    nothing of the commands, which outlive it
/// Thread  GUI thread only
class CKeysDlg : public QDialog {
    Q_OBJECT
public:
    CKeysDlg(CCommands& commands, QWidget* parent);

private:
    void Fill(const CCommands& commands);

    QLineEdit* m_filter;
    CListView* m_list;
    QSortFilterProxyModel* m_shown;
};

} // namespace vx
