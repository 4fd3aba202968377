#include "app/windows/RowWindow.h"

#include "data/record/SymbolHash.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/view/WatchlistGrid.h"

#include <QHideEvent>
#include <QShowEvent>

#include <algorithm>
#include <utility>

namespace vx {

namespace {

constexpr int kMargin = 28; ///< To the edges of the parent window.
/// The parent's status bar, which stays in sight, and the window's own title bar.
constexpr int kBarsHeight = 40;

} // namespace

CRowWindow::CRowWindow(CWatchlistDoc& doc, CWatchlistGrid& grid, Qt::Corner corner, QWidget* parent)
    : QDialog(parent), m_doc(doc), m_grid(grid), m_corner(corner) {
    setSizeGripEnabled(true);
    m_beat.setInterval(kBeatMs);
    connect(&m_beat, &QTimer::timeout, this, [this] { Refresh(); });
    connect(&grid, &CGridCtrl::FocusCellChanged, this, [this] {
        if (isVisible()) Refresh();
    });
}

void CRowWindow::MoveToCorner() {
    if (std::exchange(m_placed, true) || !parentWidget()) return;
    const QRect room =
        parentWidget()->window()->geometry().adjusted(kMargin, kMargin, -kMargin, -kMargin - kBarsHeight);
    const bool left = m_corner == Qt::TopLeftCorner || m_corner == Qt::BottomLeftCorner;
    const bool top = m_corner == Qt::TopLeftCorner || m_corner == Qt::TopRightCorner;
    move(left ? room.left() : std::max(room.left(), room.right() - width()),
         top ? room.top() : std::max(room.top(), room.bottom() - height()));
}

void CRowWindow::ShowInFront() {
    MoveToCorner();
    if (isMinimized()) showNormal();
    show();
    raise();
    activateWindow();
    Refresh();
}

std::string CRowWindow::FocusSymbol() const { return std::string(FeedSymbol(m_doc.RowSymbol(m_grid.FocusCell().row))); }

void CRowWindow::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    m_beat.start();
    Refresh();
}

void CRowWindow::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    m_beat.stop();
    if (!event->spontaneous()) Closed(); // Minimised, it is still open.
}

} // namespace vx
