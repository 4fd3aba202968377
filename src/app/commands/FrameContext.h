// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace vx {

class CCommands;
class CFramePlacer;
class CSettings;
class CStatusPanes;
class CWatchlistDoc;
class CWatchlistView;

/// What the groups of commands and the windows work with: the watchlist of one main window and what surrounds it. The
/// main frame makes it once, and neither it nor anything that it names goes while one of them works.
struct SFrameContext {
    CWatchlistDoc& doc;
    CWatchlistView& view;
    CSettings& settings;
    CCommands& commands;
    CStatusPanes& status;
    CFramePlacer& place; ///< Of the window.
    QWidget& window;     ///< Parent of dialogs and of the groups.
};

} // namespace vx
