#include "app/FramePlacement.h"

#include "settings/Settings.h"

#include <algorithm>
#include <cstdint>

namespace vx {

namespace {

// How much of the window's top must be on a screen for the user to take hold of it.
constexpr int kGraspPx = 48;

bool CanBeGrasped(const SPlacement& p, const SScreenArea& screen) {
    const int64_t right = int64_t{p.left} + p.width;
    const int64_t overlap =
        std::min<int64_t>(right, int64_t{screen.left} + screen.width) - std::max<int64_t>(p.left, screen.left);
    return overlap >= std::min(kGraspPx, p.width) && p.top >= screen.top &&
           int64_t{p.top} + kGraspPx <= int64_t{screen.top} + screen.height;
}

bool WriteIfChanged(CSettings& settings, const SIntegerSetting& setting, int value) {
    return settings.ReadInteger(setting) == value || settings.WriteInteger(setting, value);
}

bool WriteIfChanged(CSettings& settings, const SBooleanSetting& setting, bool value) {
    return settings.ReadBoolean(setting) == value || settings.WriteBoolean(setting, value);
}

} // namespace

SPlacement ReadStoredPlacement(const CSettings& settings) {
    SPlacement out;
    out.left = settings.ReadInteger(kRectLeft);
    out.top = settings.ReadInteger(kRectTop);
    out.width = settings.ReadInteger(kRectWidth);
    out.height = settings.ReadInteger(kRectHeight);
    out.maximised = settings.ReadBoolean(kMaximized);
    out.alwaysOnTop = settings.ReadBoolean(kAlwaysOnTop);
    return out;
}

void WriteStoredPlacement(CSettings& settings, const SPlacement& placement) {
    // A store that takes one value not in time takes none of them, and the window is closing.
    WriteIfChanged(settings, kRectLeft, placement.left) && WriteIfChanged(settings, kRectTop, placement.top) &&
        WriteIfChanged(settings, kRectWidth, placement.width) &&
        WriteIfChanged(settings, kRectHeight, placement.height) &&
        WriteIfChanged(settings, kMaximized, placement.maximised) &&
        WriteIfChanged(settings, kAlwaysOnTop, placement.alwaysOnTop);
}

SPlacement WithCommandLineEdges(SPlacement placement, const CNorvCommandLineInfo& commandLine) {
    const auto span = [](int64_t from, int64_t to) {
        return static_cast<int>(std::clamp<int64_t>(to - from, 0, 32767));
    };
    if (commandLine.left) placement.left = *commandLine.left;
    if (commandLine.top) placement.top = *commandLine.top;
    if (commandLine.right) placement.width = span(placement.left, *commandLine.right);
    if (commandLine.bottom) placement.height = span(placement.top, *commandLine.bottom);
    if (commandLine.show == CNorvCommandLineInfo::EShow::Maximised) placement.maximised = true;
    if (commandLine.show == CNorvCommandLineInfo::EShow::Minimised) placement.maximised = false;
    return placement;
}

SPlacement BroughtInside(SPlacement placement, const std::vector<SScreenArea>& screens) {
    if (screens.empty()) return placement;
    int64_t right = screens.front().left, bottom = screens.front().top;
    int left = screens.front().left, top = screens.front().top;
    for (const SScreenArea& screen : screens) {
        left = std::min(left, screen.left), top = std::min(top, screen.top);
        right = std::max(right, int64_t{screen.left} + screen.width);
        bottom = std::max(bottom, int64_t{screen.top} + screen.height);
    }
    placement.width = static_cast<int>(std::min<int64_t>(placement.width, right - left));
    placement.height = static_cast<int>(std::min<int64_t>(placement.height, bottom - top));
    for (const SScreenArea& screen : screens)
        if (CanBeGrasped(placement, screen)) return placement;
    const SScreenArea& home = screens.front();
    placement.width = std::min(placement.width, home.width);
    placement.height = std::min(placement.height, home.height);
    placement.left = std::clamp(placement.left, home.left, home.left + home.width - placement.width);
    placement.top = std::clamp(placement.top, home.top, home.top + home.height - placement.height);
    return placement;
}

} // namespace vx
