#include "watchlist/document/WatchlistFolder.h"

#include "settings/Settings.h"

#include <filesystem>
#include <string>
#include <system_error>

namespace vx {

void EnterWatchlistFolder(const CSettings& settings) {
    const std::string folder = settings.ReadTextOrDefault(kMyWatchlists);
    std::error_code error;
    if (!folder.empty()) std::filesystem::current_path(folder, error);
}

} // namespace vx
