#include "app/LinkDesk.h"

#include "app/MainFrame.h"
#include "watchlist/Commands.h"

namespace vx {

CLinkDesk::CLinkDesk(CMainFrame& frame, CCommands& commands) : QObject(&frame), m_frame(frame) {
    commands.Bind(
        ECommand::AlwaysOnTop, [this] { m_frame.SetAlwaysOnTop(!m_frame.IsAlwaysOnTop()); },
        [this](SCommandState& state) { state.checked = m_frame.IsAlwaysOnTop(); });
}

} // namespace vx
