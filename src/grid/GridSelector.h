// SPDX-License-Identifier: MIT
#pragma once

#include "grid/GridSelection.h"

#include <vector>

namespace vx {

class CFocusSpeech;
class CGridView;

/// Moves the focus cell and the selected range of a grid, keeps them on shown cells, and announces and signals what
/// changed.
class CGridSelector {
public:
    CGridSelector(CGridView& grid, CFocusSpeech& speech) : m_grid(grid), m_speech(speech) {}

    const SGridSelection& State() const { return m_state; }
    SGridRange Range() const { return m_state.Range(); }

    /// Takes a selection, clamped to the grid.
    void Update(const SGridSelection& next);
    /// The grid's layout is another: what was hidden or cut off is no longer selected.
    void KeepInside();
    /// The selection after a move of rows; newRowOf as CGridCtrl::MoveRows takes it. A row that was not selected never
    /// becomes so.
    SGridSelection WithItsRows(const std::vector<int>& newRowOf) const;

    /// As CGridCtrl::SetFocusCell.
    void FocusOn(int row, int column);
    /// Moves the focus there, or stretches the range to there, and scrolls it into sight.
    void MoveTo(SGridCell cell, bool extend);
    /// One cell on or back, from row to row; false at the end.
    bool StepInRow(int step);
    /// Selects what was clicked on for a menu, unless it is selected already.
    void SelectUnder(const SGridCell& at);
    void SelectRow(int row);
    void SelectColumn(int column);
    int RowsPerPage() const;

    /// Tells assistive technology where the focus is.
    void Announce();

private:
    SGridSelection Clamped(SGridSelection selection) const;

    CGridView& m_grid;
    CFocusSpeech& m_speech;
    SGridSelection m_state;
};

} // namespace vx
