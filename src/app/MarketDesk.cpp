#include "app/MarketDesk.h"

#include "app/MainFrame.h"
#include "settings/Settings.h"
#include "watchlist/Commands.h"

namespace vx {

CMarketDesk::CMarketDesk(CMainFrame& frame, CCommands& commands) : QObject(&frame), m_frame(frame) {
    const auto bind = [&](ECommand command, int type) {
        commands.Bind(
            command, [this, type] { m_frame.Settings().WriteInteger(kSearchType, type); },
            [this, type](SCommandState& state) {
                state.checked = m_frame.Settings().ReadInteger(kSearchType) == type;
            });
    };
    bind(ECommand::SearchBySymbol, 0);
    bind(ECommand::SearchByDescription, 1);
}

} // namespace vx
