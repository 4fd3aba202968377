#pragma once

#include "app/NorvCommandLineInfo.h"
#include "watchlist/WatchlistFrame.h"

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

/// A rectangle of which too little lies on any screen for its title to be grasped is moved onto the first screen, and
/// made no larger than it; others stay where they are. None is larger than all screens together. Without screens
/// nothing changes.
SPlacement BroughtInside(SPlacement placement, const std::vector<SScreenArea>& screens);

} // namespace vx
