#pragma once

#include <optional>
#include <string_view>

namespace vx {

class CSettings;

enum class ETheme { System, Light, Dark };

/// Reads "system", "light" or "dark", without regard to case; nothing for any other text.
std::optional<ETheme> ThemeFromText(std::string_view text);
std::string_view ThemeText(ETheme theme);

/// The stored theme; an unknown word reads as System.
ETheme ReadTheme(const CSettings& settings);

} // namespace vx
