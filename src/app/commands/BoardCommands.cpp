#include "app/commands/BoardCommands.h"

#include "app/commands/BoardContext.h"
#include "app/frame/StatusPanes.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <fmt/format.h>

namespace vx {

CBoardCommands::CBoardCommands(const SBoardContext& context, QObject* parent) : QObject(parent), m_context(context) {}

CCommands& CBoardCommands::Commands() const { return m_context.commands; }

CWatchlistDoc& CBoardCommands::Doc() const { return m_context.doc; }

CWatchlistView& CBoardCommands::View() const { return m_context.view; }

CWatchlistGrid& CBoardCommands::Grid() const { return m_context.view.Grid(); }

CSettings& CBoardCommands::Settings() const { return m_context.settings; }

CStatusPanes& CBoardCommands::Status() const { return m_context.status; }

QWidget& CBoardCommands::Window() const { return m_context.window; }

SGridRegion CBoardCommands::Region() const { return SelectedRegion(Grid()); }

SCellRange CBoardCommands::CellRange() const {
    const SGridRange range = Grid().SelectedRange();
    return {range.firstRow, range.lastRow, range.firstColumn, range.lastColumn};
}

void CBoardCommands::Say(std::string_view text) { m_context.status.Say(text); }

std::string CBoardCommands::Counted(int count, const char* one) {
    return fmt::format("{} {}{}", count, one, count == 1 ? "" : "s");
}

} // namespace vx
