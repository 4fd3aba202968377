// SPDX-License-Identifier: MIT
#pragma once

#include "grid/GridSelection.h"

#include <QBasicTimer>
#include <QPoint>

#include <cstdint>

class QRect;

namespace vx {

class CGridSelector;
class CGridView;

/// One drag over a grid: a selection that is stretched, a column border, columns or rows that are moved, and data that
/// comes from elsewhere. Beyond an edge it scrolls the grid.
///
/// Units   places in logical pixels of the viewport
class CGridDrag {
public:
    CGridDrag(CGridView& grid, CGridSelector& selector) : m_grid(grid), m_selector(selector) {}

    /// Whether a button is down that selects, moves or resizes something.
    bool IsOn() const { return m_kind != EKind::None; }
    bool IsResizing() const { return m_kind == EKind::ResizeColumn; }
    /// Whether columns or rows have left the place where they were taken.
    bool IsFar() const { return m_far; }

    /// The left button went down over a cell or header. extend: with Shift.
    void Press(const QPoint& place, const SGridCell& at, bool extend);
    /// The left button went down on the right border of a column's header.
    void StartResize(const QPoint& place, int column);
    /// The mouse moved.
    void To(const QPoint& place);
    /// The button was released.
    void Drop();
    /// Gives the drag up; a column gets the width back that it had.
    void Cancel();
    void End();

    /// Data from elsewhere is over the grid.
    void Over(const QPoint& place);
    SGridCell NearestCell(const QPoint& place) const;
    /// Takes the grid's timer event; false for another timer.
    bool OnTimer(int timerId);

private:
    enum class EKind : uint8_t { None, SelectCells, SelectRows, SelectColumns, ResizeColumn, MoveRows, MoveColumns };

    void Start(EKind kind, const SGridCell& at, bool extend);
    void StretchTo(const QPoint& place);
    void MoveMarkTo(const QPoint& place);
    void ScrollTowards(const QPoint& place, const QRect& calm, bool rows, bool columns);
    bool MovesColumns(const SGridRange& range, int before) const;
    bool MovesRows(const SGridRange& range, int before) const;

    CGridView& m_grid;
    CGridSelector& m_selector;
    EKind m_kind = EKind::None;
    bool m_far = false;  // a row or column under a pressed button has begun to move
    SGridCell m_pressed; // where the drag began
    QPoint m_pressedAt;
    QPoint m_at; // where the mouse was last
    int m_widthBefore = 0;
    QBasicTimer m_timer;
};

} // namespace vx
