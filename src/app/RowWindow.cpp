#include "app/RowWindow.h"

#include "data/SymbolHash.h"
#include "watchlist/WatchlistDoc.h"
#include "watchlist/WatchlistGrid.h"

#include <QHideEvent>
#include <QShowEvent>

namespace vx {

CRowWindow::CRowWindow(CWatchlistDoc& doc, CWatchlistGrid& grid, QWidget* parent)
    : QDialog(parent), m_doc(doc), m_grid(grid) {
    setSizeGripEnabled(true);
    m_beat.setInterval(kBeatMs);
    connect(&m_beat, &QTimer::timeout, this, [this] { Refresh(); });
    connect(&grid, &CGridCtrl::FocusCellChanged, this, [this] {
        if (isVisible()) Refresh();
    });
}

void CRowWindow::ShowInFront() {
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
