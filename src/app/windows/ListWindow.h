// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QTimer>
#include <QTreeView>

#include <initializer_list>
#include <string>

class QLabel;
class QVBoxLayout;

namespace vx {

class CWatchlistDoc;
class CWatchlistGrid;

/// A flat list of rows with columns that says what to do while it is empty, and that keeps its place while rows arrive
/// above those the user looks at.
class CListView : public QTreeView {
    Q_OBJECT
public:
    /// name: object name; label: what assistive technology calls the list.
    CListView(const QString& name, const QString& label, QWidget* parent);

    /// Shown, as plain text, in place of rows while there are none.
    void SetEmptyText(const QString& text);
    const QString& EmptyText() const { return m_emptyText; }
    /// Widths in logical pixels; the last column takes what is left. Call it when the model is set.
    void SetColumnWidths(std::initializer_list<int> widths);

    /// How many rows are scrolled out at the top.
    int FirstShownRow() const;
    /// Rows have come above the others: a list that is scrolled shows the same rows as before, one at its top stays
    /// there.
    void StayBelow(int rowsOnTop);

Q_SIGNALS:
    /// Double click on a row.
    void RowDoubleClicked(const QModelIndex& index);
    /// Enter while something is selected, on the current row.
    void RowEntered(const QModelIndex& index);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString m_emptyText;
};

// What the windows around a list have in common.

/// Ends a window's layout with the state of its list, as plain text, and beside it buttons that accept or reject
/// the window. Enter presses none of them unless it has the focus.
QDialogButtonBox& AddBottomRow(QDialog& window, QVBoxLayout& layout, QLabel& state,
                               QDialogButtonBox::StandardButtons buttons);

/// Tab goes through these widgets in this order.
void TabThrough(std::initializer_list<QWidget*> widgets);

/// A window beside the grid that shows more of the focus row's symbol. It can stay open while the user works in the
/// grid; closed, it keeps its size and place until the program ends.
class CRowWindow : public QDialog {
    Q_OBJECT
public:
    /// Its content follows the feed and the focus row at this interval, and costs nothing while it is closed.
    static constexpr int kBeatMs = 250;

    /// corner: where in its parent window it is first shown, so that it hides little of the grid.
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
