// SPDX-License-Identifier: MIT
#pragma once

#include "grid/GridSelection.h"

#include <QAccessible>
#include <QString>
#include <QTimer>

namespace vx {

class CGridView;

/// Announces to assistive technology when the focus cell shows another text: the newest, and not more often than once
/// in kPauseMs, so that a busy price does not talk without end.
///
/// Shape   costs nothing while there is no assistive technology, or the keyboard is not in the grid
class CFocusSpeech {
public:
    static constexpr int kPauseMs = 2000;

    explicit CFocusSpeech(CGridView& grid);

    /// Another cell has the focus, and was announced as that.
    void Moved();
    /// Texts of cells may be others than before.
    void TextsChanged();

private:
    void Say();
    bool IsHeard() const;

    CGridView& m_grid;
    QTimer m_pause; ///< Runs after each announcement.
    QString m_said;
};

/// Makes every grid control known to assistive technology as a table of cells, each named by its row, its column and
/// its text ("IBM Last 123.45"). Calling it again has no effect.
void InstallGridAccessibility();

/// The row and the column of a cell as they are read to the user: "IBM Last".
QString SpokenPlace(const CGridView& grid, int row, int column);

// Announcements to assistive technology. Each costs nothing while there is none.

/// Another cell has the focus, or the grid got it.
void AnnounceFocusCell(CGridView& grid);
/// Other cells are selected. Of a range the cell is named that it was stretched or shrunk to.
void AnnounceSelection(CGridView& grid, const SGridSelection& before, const SGridSelection& now);
/// Something became of one cell.
void AnnounceCell(CGridView& grid, const SGridCell& cell, QAccessible::Event what);
/// The number of rows or columns is another.
void AnnounceShape(CGridView& grid);

} // namespace vx
