// SPDX-License-Identifier: MIT
#include "app/commands/CommandGroup.h"

#include "app/commands/FrameContext.h"
#include "app/frame/StatusPanes.h"
#include "watchlist/view/WatchlistGrid.h"
#include "watchlist/view/WatchlistView.h"

#include <fmt/format.h>

namespace vx {

CCommandGroup::CCommandGroup(const SFrameContext& context, QObject* parent) : QObject(parent), m_context(context) {}

CCommands& CCommandGroup::Commands() const { return m_context.commands; }

CWatchlistDoc& CCommandGroup::Doc() const { return m_context.doc; }

CWatchlistView& CCommandGroup::View() const { return m_context.view; }

CWatchlistGrid& CCommandGroup::Grid() const { return m_context.view.Grid(); }

CSettings& CCommandGroup::Settings() const { return m_context.settings; }

CStatusPanes& CCommandGroup::Status() const { return m_context.status; }

QWidget& CCommandGroup::Window() const { return m_context.window; }

SGridRegion CCommandGroup::Region() const { return SelectedRegion(Grid()); }

SCellRange CCommandGroup::CellRange() const {
    const SGridRange range = Grid().SelectedRange();
    return {range.firstRow, range.lastRow, range.firstColumn, range.lastColumn};
}

void CCommandGroup::Say(std::string_view text) { m_context.status.Say(text); }

std::string CCommandGroup::Counted(int count, const char* one) {
    return fmt::format("{} {}{}", count, one, count == 1 ? "" : "s");
}

} // namespace vx
