// SPDX-License-Identifier: MIT
#include "watchlist/file/StateFiles.h"

#include "base/FileSystem.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

namespace vx {

std::string PathKey(const std::string& path) {
    std::string canonical;
    if (Disk().Canonical(path, canonical) == 0) return canonical;
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
}

std::string HashName(uint64_t hash) { return fmt::format("{:016x}", hash); }

std::string RecoveryFolder(const std::string& stateFolder) { return stateFolder + "/recovery"; }

std::string BackupsFolder(const std::string& stateFolder) { return stateFolder + "/generations"; }

std::string TitleOfPath(std::string_view path) {
    const size_t separator = path.find_last_of("/\\");
    if (separator != std::string_view::npos) path.remove_prefix(separator + 1);
    return std::string(path.substr(0, path.rfind('.')));
}

} // namespace vx
