// SPDX-License-Identifier: MIT
#pragma once

#include "app/frame/NorvCommandLineInfo.h"
#include "watchlist/document/WatchlistFrame.h"

#include <QObject>
#include <QPoint>
#include <QTimer>

#include <vector>

class QWidget;

namespace vx {

class CSettings;

/// The placement of the last run; width and height 0 when there was none.
SPlacement ReadStoredPlacement(const CSettings& settings);

/// Keeps a placement for the next run; only values that changed are written.
void WriteStoredPlacement(CSettings& settings, const SPlacement& placement);

/// Replaces edges by those that the command line names, in a placement's, and its way of showing.
SPlacement WithCommandLineEdges(SPlacement placement, const CNorvCommandLineInfo& commandLine);

struct SScreenArea {
    int left = 0, top = 0, width = 0, height = 0;
};

/// The areas of all screens that windows may cover.
std::vector<SScreenArea> ScreenAreas();

/// What a window manager draws around a window.
struct SFrameMargins {
    int left = 0, top = 0, right = 0, bottom = 0;
};

/// A window that, its frame included, is not wholly on screens goes to the screen that shows most of
/// it, else to the first: made no larger than that one, and moved as little as need be. Others stay as they are, also
/// across several screens. Without screens nothing changes.
SPlacement BroughtInside(SPlacement placement, const std::vector<SScreenArea>& screens,
                         const SFrameMargins& margins = {});

/// A placement of the same size whose corner is not that of another window: a little down and to the right, from
/// the screen's edge again where that leaves the screen, and smaller where the screen has no more room. A maximised
/// one stays.
SPlacement Cascaded(SPlacement placement, const std::vector<QPoint>& corners, const std::vector<SScreenArea>& screens);

/// Keeps the place of a top-level window: brings the window to where it belongs, whatever the window manager makes of
/// the first try, and knows where it is when it is neither maximised nor minimised.
///
/// A place is left and top of the frame, width and height of what is in it. A window that was put somewhere, or whose
/// screens changed, has all its edges on the screen, the frame counted, which is known only once the window manager has
/// drawn it. Where the user moves the window it stays.
class CFramePlacer : public QObject {
    Q_OBJECT
public:
    /// How often, and how many times, the window is looked at after it was put somewhere.
    static constexpr int kLookMs = 40;
    static constexpr int kLooks = 25;

    explicit CFramePlacer(QWidget& window);

    /// Moves the window, and maximises or restores it; without a width and height it moves nothing and restores
    /// nothing. A window that is not shown is only moved; a minimised one stays minimised.
    void Put(const SPlacement& placement);
    /// Where the window is when it is normal, and how it is shown.
    SPlacement Placement() const;
    /// Whether it is where it was put last, as far as the screen allowed that.
    bool IsWherePut() const;
    void SetAlwaysOnTop(bool onTop);
    bool IsAlwaysOnTop() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool IsNormal() const;
    SPlacement Current() const;
    SPlacement Fitted() const;
    void MoveTo(const SPlacement& place);
    void Settle();
    void Look();
    void Note();
    void OnStateChange(Qt::WindowStates before);
    void WatchScreens();
    void OnScreens();

    QWidget& m_window;
    SPlacement m_normal; ///< Where the window is, or belongs, when it is normal.
    SPlacement m_put;    ///< Where it came to be when it was put somewhere last.
    bool m_due = false;  ///< It belongs there, and has not been there yet.
    int m_looks = 0;     ///< Left to be taken.
    QTimer m_look{this};
    QTimer m_note{this};
};

} // namespace vx
