// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>

class QContextMenuEvent;
class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace vx {

class CCellEdit;
class CGridDrag;
class CGridSelector;
class CGridView;

/// What the keys, the mouse and the wheel do in a grid while no editor has the keyboard.
class CGridInput {
public:
    CGridInput(CGridView& grid, CGridSelector& selector, CGridDrag& drag, CCellEdit& edit)
        : m_grid(grid), m_selector(selector), m_drag(drag), m_edit(edit) {}

    // The grid's events; keys and turns of the wheel that mean nothing here are ignored, for the window to take them.
    void KeyPress(QKeyEvent& event);
    void MousePress(const QMouseEvent& event);
    void MouseMove(const QMouseEvent& event);
    void MouseRelease(const QMouseEvent& event);
    void DoubleClick(const QMouseEvent& event);
    void Menu(QContextMenuEvent& event);
    void Wheel(QWheelEvent& event);

private:
    bool MoveByKey(const QKeyEvent& event);
    bool SelectByKey(const QKeyEvent& event);
    bool EditByKey(const QKeyEvent& event);
    void RequestMenu();
    int BorderAt(const QPoint& place) const;
    void UpdateCursor(const QPoint& place);
    void TurnZoom(QWheelEvent& event);

    CGridView& m_grid;
    CGridSelector& m_selector;
    CGridDrag& m_drag;
    CCellEdit& m_edit;
    QPoint m_wheelRest; // eighths of a degree not yet scrolled
    int m_zoomRest = 0; // not yet zoomed
};

} // namespace vx
