#pragma once

#include <QAccessible>
#include <QString>

namespace vx {

class CGridCtrl;
struct SGridCell;
struct SGridSelection;

/// Makes every grid control known to assistive technology as a table of cells, each named by its row, its column and
/// its text ("IBM Last 123.45"). Calling it again has no effect.
///
/// Thread  GUI thread only
void InstallGridAccessibility();

/// The row and the column of a cell as they are read to the user: "IBM Last".
QString SpokenPlace(const CGridCtrl& grid, int row, int column);

// What assistive technology has to be told. Each costs nothing while there is none.

/// The focus stands on another cell, or has come to the grid.
void AnnounceFocusCell(CGridCtrl& grid);
/// Other cells are selected. Of a range the cell is named that it was stretched or shrunk to.
void AnnounceSelection(CGridCtrl& grid, const SGridSelection& before, const SGridSelection& now);
/// Something became of one cell.
void AnnounceCell(CGridCtrl& grid, const SGridCell& cell, QAccessible::Event what);
/// The number of rows or columns is another.
void AnnounceShape(CGridCtrl& grid);

} // namespace vx
