#pragma once

#include <QObject>

class QDialog;

namespace vx {

class CGuideDlg;
class CKeysDlg;
struct SBoardContext;

/// Opens the windows of the Help menu.
///
/// Owns    nothing: the help windows are children of the context's window
/// Thread  GUI thread only
class CHelpDesk : public QObject {
    Q_OBJECT
public:
    explicit CHelpDesk(const SBoardContext& context);

private:
    void Add(QDialog& window) const;
    static void Show(QDialog& window);

    const SBoardContext& m_context;
    // Made when they are first shown.
    CGuideDlg* m_guide = nullptr;
    CKeysDlg* m_keys = nullptr;
};

} // namespace vx
