#include "watchlist/file/StateFiles.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

namespace vx {

std::string PathKey(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    if (error) return path;
    const std::filesystem::path canonical = std::filesystem::weakly_canonical(absolute, error);
    return error ? absolute.lexically_normal().string() : canonical.string();
}

std::string HashName(uint64_t hash) { return fmt::format("{:016x}", hash); }

std::string RecoveryFolder(const std::string& stateFolder) { return stateFolder + "/recovery"; }

std::string GenerationsFolder(const std::string& stateFolder) { return stateFolder + "/generations"; }

std::string TitleOfPath(std::string_view path) {
    const size_t separator = path.find_last_of("/\\");
    if (separator != std::string_view::npos) path.remove_prefix(separator + 1);
    return std::string(path.substr(0, path.rfind('.')));
}

} // namespace vx
