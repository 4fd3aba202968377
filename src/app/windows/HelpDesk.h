#pragma once

#include <QObject>

class QDialog;

namespace vx {

class CCommands;
class CGuideDlg;
class CKeysDlg;
class CMainFrame;

/// Opens the windows of the Help menu.
///
/// Owns    nothing: the windows are the frame's, which outlives this object
/// Thread  GUI thread only
class CHelpDesk : public QObject {
    Q_OBJECT
public:
    CHelpDesk(CMainFrame& frame, CCommands& commands);

private:
    void Add(QDialog& window) const;
    static void Show(QDialog& window);

    CMainFrame& m_frame;
    // Made when they are first shown.
    CGuideDlg* m_guide = nullptr;
    CKeysDlg* m_keys = nullptr;
};

} // namespace vx
