#include "app/frame/FramePlacer.h"

#include "app/frame/FramePlacement.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <QWindowStateChangeEvent>

namespace vx {

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

// Through the window's own flags the toolkit would make the platform window anew, which hides it for a moment and
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
