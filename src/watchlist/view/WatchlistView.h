// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/WatchlistFrame.h"
#include "watchlist/edit/SortCommands.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <vector>

namespace vx {

class CSettings;
class CWatchlistDoc;
class CWatchlistGrid;
struct SScale;
struct SSpecialColumns;

/// The view of a watchlist: hosts the grid, hands what the user does in it to the document, and gives the screen its
/// beat. However many updates arrive, the cells that they changed are repainted once every kRepaintMs.
///
/// Owns    the grid; not the document, which outlives it
/// Thread  GUI thread only
class CWatchlistView : public QWidget, public CWatchlistObserver {
    Q_OBJECT
public:
    static constexpr int kRepaintTimer = 1030;
    static constexpr int kRepaintMs = 250;
    static constexpr int kAutoSortTimer = 1027;

    /// Sets the document's sort record, trailing rows and locked columns to their initial values.
    CWatchlistView(CWatchlistDoc& doc, CSettings& settings, QWidget* parent);
    ~CWatchlistView() override;

    CWatchlistGrid& Grid() { return *m_grid; }
    /// The columns with a meaning of their own, as the catalogue has them.
    const SSpecialColumns& Special() const;

    /// Reads the settings of the grid's look again: lines, shading, ellipsis, reduced motion.
    void ApplyViewSettings();
    /// Draws the watchlist at a zoom and density, and has it remember them.
    void SetScale(const SScale& scale);
    /// Shows the document's sort record, and starts, restarts or stops auto sort by it.
    void ApplySortRecord();
    /// Selects rows that have just come, hidden ones shown again, and scrolls to see as many of them as fit.
    void ShowRows(int firstRow, int lastRow);
    /// What is selected, as the sort commands take it.
    SSortSelection SortSelection() const;

    /// The display update that the timer does.
    void OnRepaintTimer();
    /// The sort that the timer does, unless the order is held or the user has something in hand that rows should not
    /// move under.
    void OnAutoSortTimer();
    /// While the order is held, auto sort leaves the rows where they are; letting go sorts them at once. There is
    /// nothing to hold without auto sort: the hold ends with it, and with the list.
    void HoldOrder(bool hold);
    bool IsOrderHeld() const { return m_orderHeld; }

    void PostPaintMessage() override;
    void OnGridRebuilt() override;
    void OnRowChanged(int row) override;
    void OnRowsMoved(const std::vector<int>& newRowOf) override;
    void OnRowsChanged(int firstRow, int lastRow) override;
    void OnReset() override;
    void OnUpdatesPending() override { m_pending = true; }
    bool ShownRows(std::vector<int>& rows) const override;

Q_SIGNALS:
    /// The document is another by something else than a new value from the feed.
    void DocumentChanged();
    void OrderHeldChanged(bool held);

protected:
    /// The paint message, and the connect-status message (first parameter 1 or 0: values live or stale).
    void customEvent(QEvent* event) override;
    /// Escape takes the border away from what was copied.
    void keyPressEvent(QKeyEvent* event) override;

private:
    void OnCellEdited(int row, int column, const QByteArray& oldText, const QByteArray& newText);
    void OnHeaderSort(int column);
    bool IsBusy() const;
    void SetOrderHeld(bool held);

    CWatchlistDoc& m_doc;
    CSettings& m_settings;
    CWatchlistGrid* m_grid;
    QTimer m_repaint;
    QTimer m_autoSort{this}; ///< One-shot: each sort starts a full period.
    CAutoSort m_sorter;
    QEvent::Type m_paintMessage;
    QEvent::Type m_connectMessage;
    bool m_orderHeld = false;
    bool m_pending = false;
    bool m_inRepaint = false;
};

} // namespace vx
