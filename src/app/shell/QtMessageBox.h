#pragma once

class QWidget;

namespace vx {

/// Shows the program's message boxes as windows: plain text whatever the text holds, one at a time in the order asked.
///
/// Owns    nothing; call it once after the application object exists, with the window the boxes belong to (may be null
///         until there is one)
/// Thread  GUI thread only
void InstallQtMessageBoxes(QWidget* parent);

} // namespace vx
