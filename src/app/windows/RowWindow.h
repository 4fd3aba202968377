#pragma once

#include <QDialog>
#include <QTimer>

#include <string>

namespace vx {

class CWatchlistDoc;
class CWatchlistGrid;

/// A window beside the board that shows more of the focus row's symbol. It can stay open while the user works on the
/// board; closed, it keeps its size and place until the program ends.
///
/// Owns    nothing of document and grid, which outlive it
/// Thread  GUI thread only
class CRowWindow : public QDialog {
    Q_OBJECT
public:
    /// What it shows follows the feed and the focus row at this beat, and costs nothing while it is closed.
    static constexpr int kBeatMs = 250;

    /// corner: where in its parent window it is first shown, so that it hides little of the board.
    CRowWindow(CWatchlistDoc& doc, CWatchlistGrid& grid, Qt::Corner corner, QWidget* parent);

    void ShowInFront();
    /// Shows what there is now.
    virtual void Refresh() = 0;

protected:
    CWatchlistDoc& Document() const { return m_doc; }
    CWatchlistGrid& Grid() const { return m_grid; }
    /// The feed symbol of the focus row, for a row of a region that of its base; empty for a row without a symbol.
    std::string FocusSymbol() const;
    /// The user closed the window.
    virtual void Closed() {}

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void MoveToCorner();

    CWatchlistDoc& m_doc;
    CWatchlistGrid& m_grid;
    Qt::Corner m_corner;
    bool m_placed = false;
    QTimer m_beat;
};

} // namespace vx
