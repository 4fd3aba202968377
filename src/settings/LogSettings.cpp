#include "settings/LogSettings.h"

#include "base/Log.h"
#include "base/Registry.h"
#include "base/RegistryPaths.h"
#include "base/UserFolders.h"
#include "settings/Settings.h"

#include <fmt/format.h>

namespace vx {

std::string ReadLogPath(CRegistry& registry) {
    const std::optional<SRegistryValue> stored = registry.Read(kStartupKey, kLogPathValue);
    if (stored && stored->kind == ERegistryKind::Text) return stored->text;
    const std::string path = UserStateFolder() + "/log";
    if (registry.IsReadable()) registry.WriteText(kStartupKey, kLogPathValue, path);
    return path;
}

void ApplyLogCategories(const CSettings& settings) {
    std::string unknown;
    SetLogCategories(ReadLogCategories(settings.ReadTextOrDefault(kLogCategories), &unknown));
    if (!unknown.empty())
        LogInformation(fmt::format("Settings: \"{}\" holds names that are no log category, they are ignored: {}",
                                   kLogCategories.name, unknown));
}

} // namespace vx
