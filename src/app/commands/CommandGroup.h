// SPDX-License-Identifier: MIT
#pragma once

#include "app/commands/Commands.h"
#include "watchlist/exchange/ShownCells.h"
#include "watchlist/view/WatchlistGrid.h"

#include <QObject>

#include <string>
#include <string_view>

namespace vx {

class CSettings;
class CStatusPanes;
class CWatchlistDoc;
class CWatchlistGrid;
class CWatchlistView;
struct SFrameContext;

/// What the groups of commands that work on the grid share.
///
/// Owns    nothing of the context
/// Thread  GUI thread only
class CCommandGroup : public QObject {
    Q_OBJECT
protected:
    CCommandGroup(const SFrameContext& context, QObject* parent);

    CCommands& Commands() const;
    CWatchlistDoc& Doc() const;
    CWatchlistView& View() const;
    CWatchlistGrid& Grid() const;
    CSettings& Settings() const;
    CStatusPanes& Status() const;
    /// The parent of dialogs.
    QWidget& Window() const;
    SGridRegion Region() const;
    /// The selection as the document's operations take it.
    SCellRange CellRange() const;
    /// Says something in the status bar for a few seconds.
    void Say(std::string_view text);

    /// "3 rows", "1 row"
    static std::string Counted(int count, const char* one);

private:
    const SFrameContext& m_context;
};

} // namespace vx
