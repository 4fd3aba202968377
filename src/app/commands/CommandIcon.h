// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace vx {

/// A picture of the program's resources, drawn in the text colour of the palette of the moment: what is black in it
/// takes the colour. A command that can be checked may have another picture, "<name>-off", for when it is not.
///
/// Errors  an empty icon for a name without a picture
/// Thread  GUI thread only
QIcon CommandIcon(const char* name);

} // namespace vx
