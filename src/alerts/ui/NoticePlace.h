#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include <optional>
#include <string>
#include <string_view>

namespace vx {

// Where a notice opens. All places and sizes are those of windows with their frames, in logical pixels.

/// The place of a notice that the user has not moved yet: beside the board where the screen has room, else in a corner,
/// always whole on the screen and, as far as that goes, not over the middle of the board.
///
/// Shape   screen: what windows may cover of the screen that the board is on; an empty board gives a corner
QPoint FirstNoticePlace(const QSize& notice, const QRect& board, const QRect& screen);

/// The place nearest to `wanted` at which the whole notice is on the screen; its upper left corner where the screen is
/// too small.
QPoint BroughtInside(const QPoint& wanted, const QSize& notice, const QRect& screen);

/// A remembered place as it is kept in the settings.
///
/// Shape   "left,top"; nothing for every other text
std::optional<QPoint> ReadNoticePlace(std::string_view text);
std::string NoticePlaceText(const QPoint& place);

} // namespace vx
