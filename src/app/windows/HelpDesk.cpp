#include "app/windows/HelpDesk.h"

#include "app/commands/BoardContext.h"
#include "app/commands/Commands.h"
#include "app/windows/GuideDlg.h"
#include "app/windows/KeysDlg.h"

#include <QAction>

namespace vx {

CHelpDesk::CHelpDesk(const SBoardContext& context) : QObject(&context.window), m_context(context) {
    context.commands.Bind(ECommand::HelpGuide, [this] {
        if (!m_guide) Add(*(m_guide = new CGuideDlg(&m_context.window)));
        Show(*m_guide);
    });
    context.commands.Bind(ECommand::HelpKeys, [this] {
        if (!m_keys) Add(*(m_keys = new CKeysDlg(m_context.commands, &m_context.window)));
        Show(*m_keys);
    });
}

// One window of the help opens the other as well.
void CHelpDesk::Add(QDialog& window) const {
    for (const ECommand command : {ECommand::HelpGuide, ECommand::HelpKeys})
        window.addAction(&m_context.commands.Action(command));
}

void CHelpDesk::Show(QDialog& window) {
    if (window.isMinimized()) window.showNormal();
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace vx
