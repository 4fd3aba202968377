#include "app/windows/HelpDesk.h"

#include "app/commands/Commands.h"
#include "app/shell/MainFrame.h"
#include "app/windows/GuideDlg.h"
#include "app/windows/KeysDlg.h"

#include <QAction>

namespace vx {

CHelpDesk::CHelpDesk(CMainFrame& frame, CCommands& commands) : QObject(&frame), m_frame(frame) {
    commands.Bind(ECommand::HelpGuide, [this] {
        if (!m_guide) Add(*(m_guide = new CGuideDlg(&m_frame)));
        Show(*m_guide);
    });
    commands.Bind(ECommand::HelpKeys, [this] {
        if (!m_keys) Add(*(m_keys = new CKeysDlg(m_frame.Commands(), &m_frame)));
        Show(*m_keys);
    });
    commands.Bind(ECommand::About, [this] { m_frame.ShowAbout(); });
}

// One window of the help opens the other as well.
void CHelpDesk::Add(QDialog& window) const {
    for (const ECommand command : {ECommand::HelpGuide, ECommand::HelpKeys})
        window.addAction(&m_frame.Commands().Action(command));
}

void CHelpDesk::Show(QDialog& window) {
    if (window.isMinimized()) window.showNormal();
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace vx
