#include "watchlist/WatchlistView.h"

#include "data/MessageNames.h"
#include "settings/Settings.h"
#include "watchlist/RegisteredMessage.h"
#include "watchlist/WatchlistDoc.h"
#include "watchlist/WatchlistGrid.h"

#include <QCoreApplication>
#include <QVBoxLayout>

#include <utility>

namespace vx {

CWatchlistView::CWatchlistView(CWatchlistDoc& doc, CSettings& settings, QWidget* parent)
    : QWidget(parent), m_doc(doc), m_settings(settings), m_grid(new CWatchlistGrid(doc, this)),
      m_paintMessage(RegisterMessage(kPaintMessageName)), m_connectMessage(RegisterMessage(kConnectStatusMessageName)) {
    setObjectName(QStringLiteral("watchlistView"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_grid);
    setFocusProxy(m_grid);

    if (!m_settings.ReadBoolean(kShowEllipsis)) m_settings.WriteBoolean(kShowEllipsis, true);
    ApplyViewSettings();
    m_grid->SetFocusCell(1, 1);
    m_repaint.setProperty("timerId", kRepaintTimer);
    connect(&m_repaint, &QTimer::timeout, this, &CWatchlistView::OnRepaintTimer);
    m_repaint.start(kRepaintMs);
    m_doc.SetObserver(this);
}

CWatchlistView::~CWatchlistView() {
    m_repaint.stop();
    m_doc.SetObserver(nullptr);
}

void CWatchlistView::ApplyViewSettings() {
    m_grid->ApplyViewSettings(m_settings.ReadBoolean(kShowGridLines), m_settings.ReadBoolean(kShowShading),
                              m_settings.ReadBoolean(kShowEllipsis), m_settings.ReadBoolean(kReducedMotion));
}

void CWatchlistView::OnRepaintTimer() {
    if (!std::exchange(m_pending, false)) return;
    m_inRepaint = true;
    m_doc.RepaintChangedRows();
    m_inRepaint = false;
    m_grid->FlushChanges();
}

void CWatchlistView::PostPaintMessage() {
    QCoreApplication::postEvent(this, new CRegisteredMessage(m_paintMessage, 0, 0));
}

void CWatchlistView::OnGridRebuilt() { m_grid->Rebuild(); }

void CWatchlistView::OnRowChanged(int row) {
    m_grid->MarkChangedCells(row);
    if (!m_inRepaint) m_grid->FlushChanges();
}

void CWatchlistView::customEvent(QEvent* event) {
    if (event->type() == m_paintMessage)
        m_doc.OnPaintMessage();
    else if (event->type() == m_connectMessage)
        m_grid->SetStale(static_cast<CRegisteredMessage*>(event)->First() == 0);
}

} // namespace vx
