#pragma once

#include "watchlist/FillRows.h"

#include <QString>

class QWidget;

namespace vx {

/// Shows how far a long piece of work has come, in a box over a window with a button to cancel. The box comes up when
/// the work takes longer than a moment; while it is up the window is painted and the feed is heard, but nothing else
/// can be done in the window.
///
/// Owns    the box, which goes with the last copy of what is returned
/// Thread  GUI thread only
CWorkProgress ShowProgressBox(QWidget& window, const QString& text);

} // namespace vx
