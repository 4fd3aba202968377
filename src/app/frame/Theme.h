#pragma once

#include <string_view>

namespace vx {

enum class ETheme { System, Light, Dark };

/// "light" and "dark" by name; anything else is the system's.
ETheme ThemeByName(std::string_view name);

/// Gives the whole application the palette of a theme. System means dark when the platform's own window colour is
/// dark, else light.
///
/// Thread  GUI thread only
/// Returns whether the palette in use is a dark one
bool ApplyTheme(ETheme theme);

} // namespace vx
