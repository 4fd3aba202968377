#pragma once

#include "app/frame/NorvCommandLineInfo.h"
#include "watchlist/document/WatchlistFrame.h"

#include <QPoint>

#include <vector>

namespace vx {

class CSettings;

/// The placement of the last run; width and height 0 when there was none.
SPlacement ReadStoredPlacement(const CSettings& settings);

/// Keeps a placement for the next run; only values that changed are written.
void WriteStoredPlacement(CSettings& settings, const SPlacement& placement);

/// Puts the edges that the command line names in place of a placement's, and its way of showing.
SPlacement WithCommandLineEdges(SPlacement placement, const CNorvCommandLineInfo& commandLine);

struct SScreenArea {
    int left = 0, top = 0, width = 0, height = 0;
};

/// The parts of all screens that windows may take.
std::vector<SScreenArea> ScreenAreas();

/// What a window manager draws around a window.
struct SFrameMargins {
    int left = 0, top = 0, right = 0, bottom = 0;
};

/// A window, its frame counted, that does not lie on screens with all of itself goes to the screen that shows most of
/// it, else to the first: made no larger than that one, and moved as little as need be. Others stay as they are, also
/// across several screens. Without screens nothing changes.
SPlacement BroughtInside(SPlacement placement, const std::vector<SScreenArea>& screens,
                         const SFrameMargins& margins = {});

/// A place as large for a window at which its corner is not that of another one: a little down and to the right, from
/// the screen's edge again where that leaves the screen, and smaller where the screen has no more room. A maximised
/// one stays.
SPlacement Cascaded(SPlacement placement, const std::vector<QPoint>& corners, const std::vector<SScreenArea>& screens);

} // namespace vx
