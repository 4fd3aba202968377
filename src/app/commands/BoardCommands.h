#pragma once

#include "app/commands/Commands.h"
#include "watchlist/exchange/ShownCells.h"
#include "watchlist/view/GridRegion.h"

#include <QObject>

#include <string>
#include <string_view>

namespace vx {

class CMainFrame;
class CSettings;
class CWatchlistDoc;
class CWatchlistGrid;
class CWatchlistView;

/// Where a group of commands belongs.
struct SBoardSeat {
    CMainFrame& frame;
    CCommands& commands;
    QObject& desk; ///< Owns the group.
};

/// What the groups of commands that work on the board share.
///
/// Owns    nothing of the frame, which outlives it
/// Thread  GUI thread only
class CBoardCommands : public QObject {
    Q_OBJECT
protected:
    explicit CBoardCommands(const SBoardSeat& seat);

    CMainFrame& Frame() const { return m_frame; }
    CCommands& Commands() const { return m_commands; }
    CWatchlistDoc& Doc() const;
    CWatchlistView& View() const;
    CWatchlistGrid& Grid() const;
    CSettings& Settings() const;
    SGridRegion Region() const;
    /// The selection as the document's operations take it.
    SCellRange CellRange() const;
    /// Says something in the status bar for a few seconds.
    void Say(std::string_view text);

    /// "3 rows", "1 row"
    static std::string Counted(int count, const char* one);

private:
    CMainFrame& m_frame;
    CCommands& m_commands;
};

} // namespace vx
