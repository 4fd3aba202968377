// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QObject>

class QLineEdit;
class QSortFilterProxyModel;

namespace vx {

class CCommands;
class CGuideDlg;
class CListView;
struct SFrameContext;

/// All keys of the program and what they do: those of the commands, and those of the grid.
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

/// Opens the windows of the Help menu.
class CHelpCommands : public QObject {
    Q_OBJECT
public:
    explicit CHelpCommands(const SFrameContext& context);

private:
    void Add(QDialog& window) const;
    static void Show(QDialog& window);

    const SFrameContext& m_context;
    // Made when they are first shown.
    CGuideDlg* m_guide = nullptr;
    CKeysDlg* m_keys = nullptr;
};

} // namespace vx
