#include "app/commands/BoardCommands.h"

#include "app/shell/MainFrame.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <fmt/format.h>

namespace vx {

CBoardCommands::CBoardCommands(const SBoardSeat& seat)
    : QObject(&seat.desk), m_frame(seat.frame), m_commands(seat.commands) {}

CWatchlistDoc& CBoardCommands::Doc() const { return m_frame.Document(); }

CWatchlistView& CBoardCommands::View() const { return m_frame.View(); }

CWatchlistGrid& CBoardCommands::Grid() const { return m_frame.View().Grid(); }

CSettings& CBoardCommands::Settings() const { return m_frame.Settings(); }

SGridRegion CBoardCommands::Region() const { return SelectedRegion(Grid()); }

SCellRange CBoardCommands::CellRange() const {
    const SGridRange range = Grid().SelectedRange();
    return {range.firstRow, range.lastRow, range.firstColumn, range.lastColumn};
}

void CBoardCommands::Say(std::string_view text) { m_frame.Say(text); }

std::string CBoardCommands::Counted(int count, const char* one) {
    return fmt::format("{} {}{}", count, one, count == 1 ? "" : "s");
}

} // namespace vx
