#include "settings/Theme.h"

#include "base/Text.h"
#include "settings/Settings.h"

#include <array>

namespace vx {

namespace {

/// In the order of ETheme.
constexpr std::array<std::string_view, 3> kThemes{"system", "light", "dark"};

} // namespace

std::optional<ETheme> ThemeFromText(std::string_view text) {
    for (size_t i = 0; i < kThemes.size(); ++i)
        if (CompareNoCase(kThemes[i], text) == 0) return static_cast<ETheme>(i);
    return std::nullopt;
}

std::string_view ThemeText(ETheme theme) { return kThemes[static_cast<size_t>(theme)]; }

ETheme ReadTheme(const CSettings& settings) {
    return ThemeFromText(settings.ReadText(kTheme)).value_or(ETheme::System);
}

} // namespace vx
