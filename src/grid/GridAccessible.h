#pragma once

namespace vx {

class CGridCtrl;

/// Makes every grid control known to assistive technology as a table with its accessible name. Calling it again has no
/// effect.
///
/// Thread  GUI thread only
void InstallGridAccessibility();

/// Tells assistive technology that the focus stands on another cell; costs nothing while there is none.
void AnnounceFocusCell(CGridCtrl& grid);

} // namespace vx
