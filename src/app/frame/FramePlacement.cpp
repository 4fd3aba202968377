// SPDX-License-Identifier: MIT
#include "app/frame/FramePlacement.h"

#include "settings/Settings.h"

#include <QEvent>
#include <QGuiApplication>
#include <QRect>
#include <QRegion>
#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <QWindowStateChangeEvent>

#include <algorithm>
#include <cstdint>

namespace vx {

namespace {

// Farther out than any screen, and no sum of two runs over.
constexpr int kFarPx = 1 << 24;

QRect RectOf(const SScreenArea& screen) { return {screen.left, screen.top, screen.width, screen.height}; }

// How far a window is from the one before it.
constexpr int kCascadePx = 28;
// With less room than this beside it a window becomes smaller instead of going back to the edge.
constexpr int kRoomSteps = 5;
// As many windows as may run can be passed over.
constexpr int kMostSteps = 64;

// One step along an axis of a screen that reaches from low to high.
void StepAlong(int& from, int& size, int low, int high) {
    from += kCascadePx;
    if (from + size <= high) return;
    if (high - low >= size + kRoomSteps * kCascadePx)
        from = low;
    else
        size = std::max(1, high - from);
}

// How much two rectangles have in common.
int64_t Overlap(const QRect& a, const QRect& b) {
    const QRect common = a & b;
    return int64_t{common.width()} * common.height();
}

bool WriteIfChanged(CSettings& settings, const SIntegerSetting& setting, int value) {
    return settings.ReadInteger(setting) == value || settings.WriteInteger(setting, value);
}

bool WriteIfChanged(CSettings& settings, const SBooleanSetting& setting, bool value) {
    return settings.ReadBoolean(setting) == value || settings.WriteBoolean(setting, value);
}

} // namespace

SPlacement ReadStoredPlacement(const CSettings& settings) {
    SPlacement out;
    out.left = settings.ReadInteger(kRectLeft);
    out.top = settings.ReadInteger(kRectTop);
    out.width = settings.ReadInteger(kRectWidth);
    out.height = settings.ReadInteger(kRectHeight);
    out.maximised = settings.ReadBoolean(kMaximized);
    out.alwaysOnTop = settings.ReadBoolean(kAlwaysOnTop);
    return out;
}

void WriteStoredPlacement(CSettings& settings, const SPlacement& placement) {
    // A store that takes one value not in time takes none of them, and the window is closing.
    WriteIfChanged(settings, kRectLeft, placement.left) && WriteIfChanged(settings, kRectTop, placement.top) &&
        WriteIfChanged(settings, kRectWidth, placement.width) &&
        WriteIfChanged(settings, kRectHeight, placement.height) &&
        WriteIfChanged(settings, kMaximized, placement.maximised) &&
        WriteIfChanged(settings, kAlwaysOnTop, placement.alwaysOnTop);
}

SPlacement WithCommandLineEdges(SPlacement placement, const CNorvCommandLineInfo& commandLine) {
    const auto span = [](int64_t from, int64_t to) {
        return static_cast<int>(std::clamp<int64_t>(to - from, 0, 32767));
    };
    if (commandLine.left) placement.left = *commandLine.left;
    if (commandLine.top) placement.top = *commandLine.top;
    if (commandLine.right) placement.width = span(placement.left, *commandLine.right);
    if (commandLine.bottom) placement.height = span(placement.top, *commandLine.bottom);
    if (commandLine.show == CNorvCommandLineInfo::EShow::Maximised) placement.maximised = true;
    if (commandLine.show == CNorvCommandLineInfo::EShow::Minimised) placement.maximised = false;
    return placement;
}

// Where a pixel is several on the screen, edges and margins are rounded: one pixel less on each side is inside for
// sure.
std::vector<SScreenArea> ScreenAreas() {
    std::vector<SScreenArea> out;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const int less = screen->devicePixelRatio() == 1 ? 0 : 1;
        const QRect area = screen->availableGeometry().adjusted(less, less, -less, -less);
        out.push_back({area.left(), area.top(), area.width(), area.height()});
    }
    return out;
}

SPlacement BroughtInside(SPlacement placement, const std::vector<SScreenArea>& screens, const SFrameMargins& margins) {
    if (screens.empty()) return placement;
    const auto sane = [](int number) { return std::clamp(number, -kFarPx, kFarPx); };
    QRect frame(sane(placement.left), sane(placement.top), sane(placement.width) + margins.left + margins.right,
                sane(placement.height) + margins.top + margins.bottom);
    QRegion outside(frame);
    QRect home = RectOf(screens.front());
    for (const SScreenArea& screen : screens) {
        outside -= RectOf(screen);
        if (Overlap(frame, RectOf(screen)) > Overlap(frame, home)) home = RectOf(screen);
    }
    if (outside.isEmpty()) return placement;
    frame.setSize(frame.size().boundedTo(home.size()));
    placement.left = std::clamp(frame.left(), home.left(), home.right() + 1 - frame.width());
    placement.top = std::clamp(frame.top(), home.top(), home.bottom() + 1 - frame.height());
    placement.width = std::max(1, frame.width() - margins.left - margins.right);
    placement.height = std::max(1, frame.height() - margins.top - margins.bottom);
    return placement;
}

SPlacement Cascaded(SPlacement placement, const std::vector<QPoint>& corners, const std::vector<SScreenArea>& screens) {
    if (screens.empty() || placement.maximised) return placement;
    SPlacement out = BroughtInside(placement, screens);
    const auto hides = [&out](const QPoint& corner) {
        return (corner - QPoint(out.left, out.top)).manhattanLength() < kCascadePx;
    };
    QRect home = RectOf(screens.front());
    for (const SScreenArea& screen : screens)
        if (RectOf(screen).contains(out.left, out.top)) home = RectOf(screen);
    for (int steps = kMostSteps; steps > 0 && std::ranges::any_of(corners, hides); --steps) {
        StepAlong(out.left, out.width, home.left(), home.right() + 1);
        StepAlong(out.top, out.height, home.top(), home.bottom() + 1);
    }
    return out;
}

namespace {

// A maximised window is larger a moment before it says that it is maximised.
constexpr int kNoteMs = 200;

bool SamePlace(const SPlacement& a, const SPlacement& b) {
    return a.left == b.left && a.top == b.top && a.width == b.width && a.height == b.height;
}

} // namespace

CFramePlacer::CFramePlacer(QWidget& window) : QObject(&window), m_window(window) {
    m_look.setObjectName(QStringLiteral("placeTimer"));
    m_look.setInterval(kLookMs);
    m_note.setInterval(kNoteMs);
    m_note.setSingleShot(true);
    connect(&m_look, &QTimer::timeout, this, &CFramePlacer::Look);
    connect(&m_note, &QTimer::timeout, this, &CFramePlacer::Note);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &CFramePlacer::WatchScreens);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &CFramePlacer::WatchScreens);
    WatchScreens();
    m_window.installEventFilter(this);
}

// Putting

void CFramePlacer::Put(const SPlacement& placement) {
    const bool moves = placement.width >= 1 && placement.height >= 1;
    if (moves) {
        m_normal = placement;
        m_normal.alwaysOnTop = false;
        m_due = true;
    }
    if (!m_window.isVisible()) return moves ? MoveTo(Fitted()) : void();
    // A window that is maximised would not move; it does so as soon as it is normal.
    const Qt::WindowStates others = m_window.windowState() & ~Qt::WindowMaximized;
    if (placement.maximised)
        m_window.setWindowState(others | Qt::WindowMaximized);
    else if (moves)
        m_window.setWindowState(others);
    if (moves && IsNormal()) Settle();
}

bool CFramePlacer::IsNormal() const {
    return (m_window.windowState() & (Qt::WindowMaximized | Qt::WindowMinimized | Qt::WindowFullScreen)) == 0;
}

SPlacement CFramePlacer::Current() const {
    const QPoint corner = m_window.frameGeometry().topLeft();
    return {corner.x(), corner.y(), m_window.width(), m_window.height()};
}

SPlacement CFramePlacer::Fitted() const {
    const QMargins margins = m_window.windowHandle() ? m_window.windowHandle()->frameMargins() : QMargins();
    return BroughtInside(m_normal, ScreenAreas(), {margins.left(), margins.top(), margins.right(), margins.bottom()});
}

void CFramePlacer::MoveTo(const SPlacement& place) {
    m_window.resize(place.width, place.height);
    m_window.move(place.left, place.top);
}

void CFramePlacer::Settle() {
    MoveTo(Fitted());
    m_looks = kLooks;
    m_look.start();
}

// The window manager may be about to restore the window, or to draw its frame: for a while it may move it again.
void CFramePlacer::Look() {
    if (!m_window.isVisible() || !IsNormal()) return m_look.stop();
    if (!m_window.windowHandle()->isExposed()) return;
    const SPlacement wanted = Fitted();
    if (!SamePlace(Current(), wanted)) MoveTo(wanted);
    if (--m_looks > 0) return;
    m_look.stop();
    m_due = false;
    Note();
    m_put = m_normal;
}

// Through the window's own flags the toolkit would recreate the platform window, which hides it for a moment and
// forgets where its frame stands.
void CFramePlacer::SetAlwaysOnTop(bool onTop) {
    if (IsAlwaysOnTop() == onTop) return;
    if (!m_window.windowHandle()) {
        m_window.setWindowFlag(Qt::WindowStaysOnTopHint, onTop);
        return;
    }
    m_window.overrideWindowFlags(m_window.windowFlags().setFlag(Qt::WindowStaysOnTopHint, onTop));
    m_window.windowHandle()->setFlag(Qt::WindowStaysOnTopHint, onTop);
}

// Knowing

bool CFramePlacer::IsAlwaysOnTop() const { return m_window.windowFlags().testFlag(Qt::WindowStaysOnTopHint); }

SPlacement CFramePlacer::Placement() const {
    SPlacement out = !IsNormal() ? m_normal : m_due ? Fitted() : Current();
    out.maximised = m_window.isMaximized();
    out.alwaysOnTop = IsAlwaysOnTop();
    return out;
}

bool CFramePlacer::IsWherePut() const { return m_due || SamePlace(Placement(), m_put); }

void CFramePlacer::Note() {
    if (IsNormal() && !m_due) m_normal = Current();
}

bool CFramePlacer::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
        m_note.start();
        break;
    case QEvent::Show:
        if (m_due && IsNormal()) Settle();
        break;
    case QEvent::WindowStateChange:
        OnStateChange(static_cast<QWindowStateChangeEvent*>(event)->oldState());
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void CFramePlacer::OnStateChange(Qt::WindowStates before) {
    if (IsNormal() && m_due) return Settle();
    // Minimised, a window keeps its size; what it had a moment ago is not noted yet.
    if (m_window.windowState() == Qt::WindowMinimized && before == Qt::WindowNoState && !m_due) m_normal = Current();
}

void CFramePlacer::WatchScreens() {
    for (const QScreen* screen : QGuiApplication::screens())
        connect(screen, &QScreen::availableGeometryChanged, this, &CFramePlacer::OnScreens, Qt::UniqueConnection);
    OnScreens();
}

void CFramePlacer::OnScreens() {
    if (!m_window.isVisible() || !IsNormal()) return;
    if (!m_due) m_normal = Current();
    m_due = true;
    Settle();
}

} // namespace vx
