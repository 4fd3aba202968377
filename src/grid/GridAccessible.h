#pragma once

namespace vx {

/// Makes every grid control known to assistive technology as a table with its accessible name. Calling it again has no
/// effect.
///
/// Thread  GUI thread only
void InstallGridAccessibility();

} // namespace vx
