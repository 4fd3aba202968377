#pragma once

#include "watchlist/WatchlistFrame.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>

namespace vx {

class CSettings;
class CWatchlistDoc;
class CWatchlistGrid;

/// The view of a watchlist: hosts the grid and gives the screen its beat. However many updates arrive, the cells that
/// they changed are repainted once every kRepaintMs.
///
/// Owns    the grid; not the document, which outlives it
/// Thread  GUI thread only
class CWatchlistView : public QWidget, public CWatchlistObserver {
    Q_OBJECT
public:
    static constexpr int kRepaintTimer = 1030;
    static constexpr int kRepaintMs = 250;

    CWatchlistView(CWatchlistDoc& doc, CSettings& settings, QWidget* parent);
    ~CWatchlistView() override;

    CWatchlistGrid& Grid() { return *m_grid; }

    /// Reads the settings of the grid's look again: lines, shading, ellipsis, reduced motion.
    void ApplyViewSettings();
    /// The display update that the timer does.
    void OnRepaintTimer();

    void PostPaintMessage() override;
    void OnGridRebuilt() override;
    void OnRowChanged(int row) override;
    void OnUpdatesPending() override { m_pending = true; }

protected:
    /// The paint message, and the connect-status message (first parameter 1 or 0: values live or stale).
    void customEvent(QEvent* event) override;

private:
    CWatchlistDoc& m_doc;
    CSettings& m_settings;
    CWatchlistGrid* m_grid;
    QTimer m_repaint;
    QEvent::Type m_paintMessage;
    QEvent::Type m_connectMessage;
    bool m_pending = false;
    bool m_inRepaint = false;
};

} // namespace vx
